#pragma once

#include <printman/postscript/pspage.h>
#include <printman/system/outputsink.h>
#include <printman/system/spoolfile.h>
#include <printman/toolkit/psprinter.h>
#include <printman/typeset/fontset.h>
#include <printman/typeset/pagedocument.h>

#include <QPageLayout>

#include <memory>

namespace printman {

/// The part of the sheet that is painted on, in device pixels: the page less its margins. Each
/// margin is rounded, so that margins given in pixels are exact.
QRect ps_paint_area(const QPageLayout& layout, int resolution);

/// The settings of a print job.
struct PsJobSetup {
    QString output_file;     ///< where the job goes; empty for the spooler
    bool is_scratch = false; ///< the output file has a fixed scratch name
    QString printer_name;    ///< the spooler's queue; empty for its default
    QString title;
    QString creator;
    int copies = 1;
    bool collate = true;
    int resolution = PsPrinter::dotsPerInch; ///< device pixels per inch

    /// Asked while waiting for the spooler.
    std::shared_ptr<JobControl> control = std::make_shared<JobControl>();
};

/// A print job: a PostScript document that is being written.
///
/// The fonts come before the first page, but which glyphs they need is known only after the last.
/// Until then the pages are spooled on disk, in the directory of the output file, so that memory
/// does not grow with their number and a full disk is noticed while they are painted.
class PsJob : public PageDocument {
public:
    /// Opens the output and the spool and starts the first page. Failures of the job, here and
    /// below, are in result().
    bool begin(const PsJobSetup& setup, const QPageLayout& layout);

    /// Ends the page and starts another; false if the job has failed.
    bool new_page(const QPageLayout& layout);

    /// Completes the document; false if the job has failed, now or before. Then nothing is left of
    /// it.
    bool end();

    /// Drops the job; nothing is left of it.
    void discard();

    bool fail(const QString& error) override { return succeeds(Result::failure(error)); }

    PsPage& page() override { return page_; }
    FontSet& fonts() override { return fonts_; }

    /// Moves the page's content to the spool once there is much of it.
    void settle() override;

    /// A failure once the job has failed.
    const Result& result() const { return result_; }

private:
    bool succeeds(const Result& step);
    void start_page(const QPageLayout& layout);
    void end_page();
    void spool();
    void write_head(PsStream& out) const;
    void write_setup(PsStream& out) const;
    bool copy_pages();

    PsJobSetup setup_;
    std::unique_ptr<OutputSink> sink_;
    SpoolFile spool_;
    FontSet fonts_;
    PsStream stream_;
    PsPage page_{stream_};
    QSize first_size_; ///< of the paper, in points
    QSize box_;        ///< of the largest page, in points
    int pages_ = 0;
    Result result_;
};

} // namespace printman
