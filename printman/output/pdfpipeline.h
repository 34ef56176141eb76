#pragma once

#include <printman/output/pdfsteps.h>
#include <printman/output/watermark.h>
#include <printman/system/fixednames.h>

#include <QString>

#include <functional>

class PsPrinter;

namespace printman {

/// Turns painted PostScript into the PDF of a job, with form and watermark. Each operation answers
/// with an empty text, or with what failed first, in one line that was also told on standard error.
/// Scratch is removed in either case.
class PdfPipeline {
public:
    /// @param printer paints the watermark, and names the queue
    /// @param names   the right to the fixed names; an operation that uses them takes it, unless it
    ///                is held, and lets it go
    /// @param mark    null for no watermark
    /// @param form    a PDF that is laid behind the report; empty for none
    /// @param goes_on asked while a tool works: false ends the operation; may be empty
    PdfPipeline(PsPrinter& printer, FixedNames& names, const Watermark* mark, const QString& form,
                std::function<bool()> goes_on)
        : printer_(printer), names_(names), mark_(mark), form_(form), goes_on_(std::move(goes_on)) {
    }

    /// Takes the fixed names for such an operation and sees that nothing of someone else's stands
    /// at those that it uses, before anything is painted for it.
    ///
    /// @return empty, or why they cannot be used; not told on standard error
    QString claim(PdfPurpose purpose);

    /// Makes a PDF of "/tmp/korvo.ps", in a new file in the current directory.
    ///
    /// @param result receives the file's name once there are steps to run; there is no such file
    ///               when one failed
    QString create(QString& result);

    /// Makes a PDF of "/tmp/korvo.ps" and prints it.
    QString print();

    /// Puts the PDF of the PostScript file @p ps in its place. On failure the file is as it was.
    QString serve(const QString& ps);

    /// Makes the PDF file @p pdf of "/tmp/korvo.ps", which stays; no form and no watermark. On
    /// failure an earlier file is as it was.
    QString convert(const QString& pdf);

    /// Makes the watermark's PDF.
    QString make_watermark();

private:
    WatermarkPlace place() const;
    QString paint_watermark();
    QString take(const QStringList& files);
    QStringList watermark_files() const;
    QString told_without_ps(const QString& why);
    QString run(PdfPurpose purpose, const PdfNames& files, const QStringList& fresh);

    PsPrinter& printer_;
    FixedNames& names_;
    const Watermark* mark_;
    QString form_;
    std::function<bool()> goes_on_;
};

} // namespace printman
