#include <printman/output/chosenpdf.h>
#include <printman/system/outputfile.h>
#include <printman/toolkit/psprinter.h>

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

namespace printman {

Result
make_chosen_pdf(const PsPrinter& printer,
                const std::function<Result(QPainter& painter, QPagedPaintDevice& device)>& paint) {
    const QString name = printer.outputFileName();
    const auto write_failure = [&name](const QString& reason) {
        return Result::file_failure(name, reason.isEmpty() ? QStringLiteral("cannot be written")
                                                           : reason);
    };
    OutputFile out;
    const Result opened = out.open(name);
    if (!opened.ok())
        return write_failure(opened.error());
    QPdfWriter pdf(out.device());
    pdf.setResolution(printer.resolution());
    pdf.setPageLayout(printer.pageLayout());
    pdf.setTitle(printer.docName());
    pdf.setCreator(printer.creator());
    QPainter painter;
    if (!painter.begin(&pdf))
        return write_failure(out.device()->errorString());
    Result painted = paint(painter, pdf);
    const bool is_ended = painter.end();
    if (!painted.ok())
        return painted;
    if (!is_ended)
        return write_failure(out.device()->errorString());
    const Result written = out.commit();
    return written.ok() ? written : write_failure(written.error());
}

} // namespace printman
