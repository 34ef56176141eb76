#pragma once

#include <printman/output/pdfsteps.h>
#include <printman/output/watermark.h>
#include <printman/system/sharedscratch.h>

#include <QString>

class PsPrinter;

namespace printman {

/// Turns painted PostScript into the PDF of a job, with form and watermark. Each operation answers
/// with its first failure, which was also reported on standard error. Scratch files are removed in
/// either case.
class PdfPipeline {
public:
    /// @param printer paints the watermark, and names the queue
    /// @param names   the right to the fixed names; an operation that uses them takes it, unless it
    ///                is held, and lets it go
    /// @param mark    null for no watermark
    /// @param form    a PDF that is laid behind the report; empty for none
    /// @param control asked while a tool works or another job is waited for
    PdfPipeline(PsPrinter& printer, SharedScratch& names, const Watermark* mark,
                const QString& form, JobControl& control)
        : printer_(printer), names_(names), mark_(mark), form_(form), control_(control) {}

    /// Takes the fixed names for such an operation and sees that nothing of someone else's stands
    /// at those that it uses, before anything is painted for it. A failure is not reported on
    /// standard error.
    Result claim(PdfPurpose purpose);

    /// Makes a PDF of "/tmp/korvo.ps", in a new file in the current directory.
    ///
    /// @param result receives the file's name once there are steps to run; there is no such file
    ///               when one failed
    Result create(QString& result);

    /// Makes a PDF of "/tmp/korvo.ps" and prints it.
    Result print();

    /// Puts the PDF of the PostScript file @p ps in its place. On failure the file is as it was.
    Result serve(const QString& ps);

    /// Makes the PDF file @p pdf of "/tmp/korvo.ps", which stays; no form and no watermark. On
    /// failure an earlier file is as it was.
    Result convert(const QString& pdf);

    /// Makes the watermark's PDF.
    Result make_watermark();

private:
    WatermarkPlace place() const;
    Result paint_watermark();
    Result take(const QStringList& files);
    QStringList watermark_files() const;
    Result reported_without_ps(const Result& failure);
    Result run(PdfPurpose purpose, const PdfNames& files, const QStringList& fresh);

    PsPrinter& printer_;
    SharedScratch& names_;
    const Watermark* mark_;
    QString form_;
    JobControl& control_;
};

} // namespace printman
