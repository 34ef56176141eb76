#include <printman/output/jobfont.h>
#include <printman/output/jobmessages.h>
#include <printman/output/reportjob.h>
#include <printman/output/singlejob.h>
#include <printman/printer/paths.h>
#include <printman/toolkit/psprinter.h>
#include <printman/toolkit/widgets.h>

#include <QFileInfo>
#include <QPainter>

// Jobs of the whole report that make a PDF.

namespace printman {

namespace {

bool is_same_file(const QString& a, const QString& b) {
    const QString canonical = QFileInfo(a).canonicalFilePath();
    return a == b || (!canonical.isEmpty() && canonical == QFileInfo(b).canonicalFilePath());
}

/// The record in the setup file, which is then removed unless it is the standard one. Ids beyond
/// ASCII are looked for in both of the encodings that hosts use.
std::optional<PrinterRecord> take_record(const QString& setup_file, const QString& printer_id) {
    auto record = find_printer(setup_file, printer_id.toUtf8().constData());
    if (!record)
        record = find_printer(setup_file, printer_id.toLatin1().constData());
    if (!is_same_file(setup_file, get_prtbin_path()))
        remove_setup_file(setup_file);
    return record;
}

} // namespace

/// Paints all pages, at the font's own size, to the fixed PostScript name; the sheet is set up.
Result ReportJob::paint_to_file(const QFont& font) {
    Result claimed = tools_.pipeline.claim(PdfPurpose::create);
    if (!claimed.ok())
        return claimed;
    PsPrinter& printer = tools_.printer;
    set_output(QString::fromUtf16(tmp_ps), true);
    QPainter painter;
    if (!painter.begin(&printer))
        return printer_failure(printer);
    tools_.units.no_page_map = true;
    Pages pages;
    pages.font = font;
    return paint_on_printer(painter, pages);
}

/// Begins a job that makes a PDF of all pages on the printer's upright sheet.
void ReportJob::begin_pdf() {
    start_control();
    tools_.printer.setCopyCount(1);
    tools_.printer.setPageOrientation(QPageLayout::Portrait);
}

Result ReportJob::save_pdf(QWidget* parent, const QString& file) {
    const SingleJob turn;
    if (!turn.check().ok())
        return turn.check();
    Result ready = check_ready(false);
    if (!ready.ok())
        return ready;
    if (file.isEmpty())
        return Result::failure(QStringLiteral("the path of the PDF is too long"));
    if (!can_show_widgets())
        return no_one_to_ask();
    begin_pdf();
    const DialogParent window(parent);
    const std::optional<QFont> font = choose_report_font(parent);
    if (!font || is_over(window))
        return Result::declined();
    const SharedScratchUse in_use(tools_.names);
    Result painted = paint_to_file(*font);
    return painted.ok() ? tools_.pipeline.convert(file) : painted;
}

Result ReportJob::make_pdf(QWidget* parent, const QString& printer_id, const QString& setup_file,
                           QString& result) {
    const bool is_named = !printer_id.isEmpty() && !setup_file.isEmpty();
    std::optional<PrinterRecord> record;
    if (is_named)
        record = take_record(setup_file, printer_id);
    const SingleJob turn;
    if (!turn.check().ok())
        return turn.check();
    Result ready = check_ready(false);
    if (!ready.ok())
        return ready;
    begin_pdf();
    if (!record && !can_show_widgets())
        return is_named ? printer_not_found(printer_id) : no_one_to_ask();
    const DialogParent window(parent);
    if (!record && is_named)
        show_message(parent, printer_not_found(printer_id).error());
    if (is_over(window))
        return Result::declined();
    PsPrinter& printer = tools_.printer;
    QFont font;
    if (record) {
        set_sheet(printer, record->devmode.orientation, record->devmode.paper_size);
        tools_.units.margins = usable_margins(record->margins);
        font = report_font(record->font);
    } else {
        const std::optional<QFont> chosen = choose_report_font(parent);
        if (!chosen || is_over(window))
            return Result::declined();
        font = *chosen;
    }
    set_sheet_margins(printer, tools_.units.margins);
    const SharedScratchUse in_use(tools_.names);
    Result painted = paint_to_file(font);
    return painted.ok() ? tools_.pipeline.create(result) : painted;
}

} // namespace printman
