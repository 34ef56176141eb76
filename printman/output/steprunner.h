#pragma once

#include <printman/output/pdfsteps.h>
#include <printman/progress.h>
#include <printman/result.h>

#include <QStringList>

#include <functional>

namespace printman {

/// Runs the steps of a PDF job. What fails is reported once, on standard error, and the job goes on
/// as far as its steps have something to work on; but nothing older or broken is taken for what a
/// step was to make, nothing is written through a link that someone left at a scratch name, and
/// after an interrupt, or where another user's file stands in the way, only the removing is done.
class StepRunner {
public:
    /// Paints the watermark's page and makes its PDF; a failure has been reported.
    using MakeWatermark = std::function<Result()>;

    /// @param control        asked while a tool works; when it says to stop, the tool is killed and
    ///                       all but the removing is left out
    /// @param make_watermark for the step of that name; may be empty where there is none
    /// @param fresh          files that were made anew, and empty, for this job
    explicit StepRunner(JobControl& control, MakeWatermark make_watermark = {},
                        QStringList fresh = {});

    /// @return the first failure
    Result run(const std::vector<PdfStep>& steps);

private:
    void do_step(const PdfStep& step);
    void run_tool(const PdfStep& step);
    void rename(const PdfStep& step);
    void move(const PdfStep& step);
    bool prepare(const QString& name);
    void note(const Result& step);
    void report(const Result& step);

    JobControl& control_;
    MakeWatermark make_watermark_;
    QStringList fresh_;
    Result result_; ///< the first failure
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
/// On failure @p from stays.
Result move_file(const QString& from, const QString& to);

} // namespace printman
