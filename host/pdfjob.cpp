#include "host/pdfjob.h"

#include "host/jobwatch.h"
#include "host/pendingfile.h"
#include "host/report.h"
#include "host/settings.h"
#include "host/tool.h"

#include <printman/core/printman.h>
#include <printman/toolkit/pagesizes.h>
#include <printman/toolkit/psprinter.h>

#include <QDir>
#include <QFileInfo>
#include <QFontMetrics>
#include <QPainter>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cmath>

namespace host {

namespace {

constexpr double margin_units = 600; // to the inch

Outcome printer_failure(const PsPrinter& printer) {
    QByteArray why = QFile::encodeName(printer.errorString());
    if (why.isEmpty())
        why = "the pages cannot be painted";
    return Outcome::failure("cannot write the PostScript: " + why);
}

/// The size of a page's grid in the font of a device.
QSize grid_size(const CPrintMan& manager, const QFont& font, QPaintDevice& device) {
    const QFontMetrics metrics(font, &device);
    return {manager.get_columns() * metrics.maxWidth(), manager.get_lines() * metrics.height()};
}

/// Sets the sheet up: wrong usage when the margins leave no room on it.
Outcome prepare(PsPrinter& printer, const CPrintMan& manager, const PageSetup& setup) {
    const QPageSize paper = page_size_of(setup.paper);
    const QPageLayout::Orientation orientation =
        setup.orientation.value_or(orientation_of(grid_size(manager, setup.font, printer)));
    printer.setPageSize(paper);
    printer.setPageOrientation(orientation);
    if (!setup.margins)
        return Outcome::success();
    QSizeF inches = paper.size(QPageSize::Inch);
    if (orientation == QPageLayout::Landscape)
        inches.transpose();
    if (!leave_room(*setup.margins, inches))
        return Outcome::wrong_usage("the margins leave no room on the page");
    const auto units = [](double inch) {
        return static_cast<unsigned>(std::lround(inch * margin_units));
    };
    printer.setMargins(units(setup.margins->top), units(setup.margins->left),
                       units(setup.margins->bottom), units(setup.margins->right));
    return Outcome::success();
}

Outcome paint_pages(QPainter& painter, PsPrinter& printer, CPrintMan& manager,
                    const QByteArray& report, JobWatch& watch) {
    const int total = manager.get_page_count();
    for (int page = 1; page <= total; ++page) {
        if (manager.get_rpt_page(page == 1 ? 1 : 2) != 1)
            return Outcome::failure(report + ": page " + QByteArray::number(page) +
                                    " cannot be read");
        if (page > 1 && !printer.newPage())
            return printer_failure(printer);
        manager.print_page(&painter);
        if (!watch.pages_done(page, total))
            return Outcome::failure("interrupted");
    }
    return Outcome::success();
}

Outcome paint_report(CPrintMan& manager, const QByteArray& report, const PageSetup& setup,
                     const QString& file, JobWatch& watch) {
    PsPrinter printer;
    Outcome prepared = prepare(printer, manager, setup);
    if (!prepared.ok())
        return prepared;
    printer.setOutputFileName(file);
    printer.setDocName(setup.title.isEmpty()
                           ? QFileInfo(QFile::decodeName(report)).completeBaseName()
                           : setup.title);
    printer.setCreator(QStringLiteral("printman " PRINTMAN_VERSION));
    QPainter painter;
    if (!painter.begin(&printer))
        return printer_failure(printer);
    painter.setFont(setup.font);
    const QSize grid = grid_size(manager, setup.font, printer);
    const bool fits = grid.width() <= printer.width() && grid.height() <= printer.height();
    manager.set_logical_unit(&painter, setup.exact_size && fits ? 1 : 0, 0, 0);
    Outcome painted = paint_pages(painter, printer, manager, report, watch);
    if (!painted.ok())
        printer.abort();
    const bool ended = painter.end();
    if (painted.ok() && (!ended || printer.printerState() == QPrinter::Error))
        return printer_failure(printer);
    return painted;
}

/// Copies a whole PDF file.
Outcome take_over(const QString& pdf, PendingFile& out) {
    QFile file(pdf);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
        return Outcome::failure("ps2pdf made no PDF");
    constexpr qint64 tail = 1024;
    const bool starts = file.peek(5) == "%PDF-";
    file.seek(std::max<qint64>(0, file.size() - tail));
    if (!starts || !file.read(tail).contains("%%EOF"))
        return Outcome::failure("ps2pdf made a file that is no whole PDF");
    file.seek(0);
    while (!file.atEnd()) {
        const QByteArray piece = file.read(1 << 18);
        if (piece.isEmpty())
            return Outcome::failure("cannot read the PDF back: " +
                                    QFile::encodeName(file.errorString()));
        if (!out.write(piece))
            return Outcome::failure(out.error());
    }
    return Outcome::success();
}

QString scratch_template() {
    const QByteArray directory =
        host_settings().value("dlwmenu.ini", "env", "TMPDIR").value_or(QByteArray());
    return (directory.isEmpty() ? QDir::tempPath() : QFile::decodeName(directory)) +
           QStringLiteral("/printman-XXXXXX");
}

} // namespace

Outcome make_pdf(const QByteArray& report, const QByteArray& out, const PageSetup& setup,
                 JobWatch& watch) {
    const QString ps2pdf = QStandardPaths::findExecutable(QStringLiteral("ps2pdf"));
    if (ps2pdf.isEmpty())
        return Outcome::failure("ps2pdf is not installed; the Debian package ghostscript has it");
    CPrintMan manager;
    Outcome opened = open_report(manager, report);
    if (!opened.ok())
        return opened;
    PendingFile pending;
    if (!pending.open(out))
        return Outcome::failure(pending.error());
    const QTemporaryDir scratch(scratch_template());
    if (!scratch.isValid())
        return Outcome::failure("cannot make a scratch directory: " +
                                QFile::encodeName(scratch.errorString()));

    // The tool gets names that mean nothing to it: a '%' in a directory's name would.
    const QString ps = QStringLiteral("report.ps");
    const QString pdf = QStringLiteral("report.pdf");
    Outcome painted = paint_report(manager, report, setup, scratch.filePath(ps), watch);
    if (!painted.ok())
        return painted;
    Outcome converted =
        run_tool(ps2pdf, {ps, pdf}, scratch.path(), [&watch] { return watch.tool_works(); });
    if (!converted.ok())
        return converted;
    Outcome taken = take_over(scratch.filePath(pdf), pending);
    if (!taken.ok())
        return taken;
    if (!watch.tool_works())
        return Outcome::failure("interrupted");
    return pending.commit() ? Outcome::success() : Outcome::failure(pending.error());
}

} // namespace host
