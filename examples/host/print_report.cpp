// Prints a report into a PostScript file. It needs no display.
#include <printman/pagerequest.h>
#include <printman/printman.h>
#include <printman/toolkit/psprinter.h>

#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>

#include <cstdio>

namespace {

constexpr int max_portrait_columns = 80;

/// Prints every page of @p report into the file @p output.
///
/// @return the error message; empty when all is printed
QString print(CPrintMan& report, const QString& output) {
    PsPrinter printer; // A4, portrait, unless set otherwise
    printer.setOutputFileName(output);
    if (report.get_columns() > max_portrait_columns)
        printer.setPageOrientation(QPageLayout::Landscape);
    QPainter painter;
    if (!painter.begin(&printer))
        return printer.errorString();

    // Makes the columns and lines of a page, in this font, fit the sheet.
    painter.setFont(QFont(QStringLiteral("Courier New"), 12));
    report.set_logical_unit(&painter, 0, 0, 0);
    for (int page = 1; page <= report.get_page_count(); ++page) {
        if (page > 1 && !printer.newPage())
            return printer.errorString();
        if (report.get_rpt_page(page == 1 ? printman::page_first : printman::page_next) != 1) {
            printer.abort(); // an earlier output file stays as it was
            return QStringLiteral("page %1 cannot be read").arg(page);
        }
        report.print_page(&painter);
    }
    return painter.end() ? QString() : printer.errorString();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: print_report REPORT OUTPUT.ps\n", stderr);
        return 2;
    }

    CPrintMan report;
    if (report.init_printman(argv[1]) != 0 || report.get_page_count() == 0) {
        std::fprintf(stderr, "print_report: %s is missing or not a report\n", argv[1]);
        return 1;
    }
    const QString error = print(report, QFile::decodeName(argv[2]));
    if (!error.isEmpty()) {
        std::fprintf(stderr, "print_report: %s\n", qPrintable(error));
        return 1;
    }
    std::printf("%d pages printed\n", report.get_page_count());
    return 0;
}
