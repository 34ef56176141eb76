#include <printman/output/chosenpdf.h>
#include <printman/system/outputfile.h>
#include <printman/toolkit/psprinter.h>

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

namespace printman {

namespace {

QString or_unknown(const QString& why) {
    return why.isEmpty() ? QStringLiteral("the PDF cannot be written") : why;
}

} // namespace

QString
make_chosen_pdf(const PsPrinter& printer,
                const std::function<QString(QPainter& painter, QPagedPaintDevice& device)>& paint) {
    OutputFile out;
    if (!out.open(printer.outputFileName()))
        return out.error();
    QPdfWriter pdf(out.device());
    pdf.setResolution(printer.resolution());
    pdf.setPageLayout(printer.pageLayout());
    pdf.setTitle(printer.docName());
    pdf.setCreator(printer.creator());
    QPainter painter;
    if (!painter.begin(&pdf))
        return or_unknown(out.device()->errorString());
    QString why = paint(painter, pdf);
    const bool is_ended = painter.end();
    if (!why.isEmpty())
        return why;
    return is_ended && out.commit() ? QString() : or_unknown(out.error());
}

} // namespace printman
