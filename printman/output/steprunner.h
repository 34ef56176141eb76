#pragma once

#include <printman/output/pdfsteps.h>

#include <QStringList>

#include <functional>

namespace printman {

/// Runs the steps of a PDF job. What fails is told once, on standard error, and the job goes on as
/// far as its steps have something to work on; but nothing older or broken is taken for what a step
/// was to make, nothing is written through a link that someone left at a scratch name, and after an
/// interrupt, or where another user's file stands in the way, only the removing is done.
class StepRunner {
public:
    /// Paints the watermark's page and makes its PDF: empty, or what failed and has been told.
    using MakeWatermark = std::function<QString()>;

    /// @param make_watermark for the step of that name; may be empty where there is none
    /// @param fresh          files that were made anew, and empty, for this job
    /// @param goes_on        asked while a tool works: false stops it, and all but the removing is
    ///                       left out; may be empty
    explicit StepRunner(MakeWatermark make_watermark = {}, QStringList fresh = {},
                        std::function<bool()> goes_on = {});

    /// @return empty when every step was done, else the first failure in one line
    QString run(const std::vector<PdfStep>& steps);

private:
    void do_step(const PdfStep& step);
    void run_tool(const PdfStep& step);
    void rename(const PdfStep& step);
    void move(const PdfStep& step);
    bool prepare(const QString& name);
    void note(const QString& why);
    void tell(const QString& why);

    MakeWatermark make_watermark_;
    QStringList fresh_;
    std::function<bool()> goes_on_;
    QString failure_;
    bool stopped_ = false;
};

/// Whether a tool has made the file @p name: it has bytes, and a PDF has its end, too.
bool is_made(const QString& name);

/// Removes a file of this user, or a link. Anything else stays.
void remove_own(const QString& name);

/// Gives @p from the name @p to. Links at @p to are followed; a file there is replaced in one step
/// and keeps its permissions, and stays as it was on failure. Copies where the two are on different
/// file systems.
///
/// @return empty, or why it failed
QString move_file(const QString& from, const QString& to);

} // namespace printman
