#include <printman/output/chosenpdf.h>
#include <printman/output/jobfont.h>
#include <printman/output/jobturn.h>
#include <printman/output/reportjob.h>
#include <printman/output/steprunner.h>
#include <printman/printer/paths.h>
#include <printman/system/commandrun.h>
#include <printman/system/filebackup.h>
#include <printman/system/fixednames.h>
#include <printman/system/scratchname.h>
#include <printman/toolkit/psprinter.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPainter>

namespace printman {

namespace {

QString name_of(const char16_t* name) {
    return QString::fromUtf16(name);
}

JobEnd ended(const QString& error) {
    return {error.isEmpty(), error};
}

JobEnd cancelled() {
    return {};
}

QString not_found(const QString& printer_id) {
    return QStringLiteral("Can not find report printer '%1'").arg(printer_id);
}

QString or_unknown(const QString& why) {
    return why.isEmpty() ? QStringLiteral("the report cannot be printed") : why;
}

bool can_ask() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

QString no_one_to_ask() {
    return QStringLiteral("there is no display to ask the user on");
}

void show_message(QWidget* parent, const QString& text) {
    // It goes with its parent.
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Information, QStringLiteral("Talvine Thinclient Message"),
                        text, QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box;
}

bool is_same_file(const QString& a, const QString& b) {
    const QString canonical = QFileInfo(a).canonicalFilePath();
    return a == b || (!canonical.isEmpty() && canonical == QFileInfo(b).canonicalFilePath());
}

} // namespace

/// Why no job can begin now; else empty.
QString ReportJob::refusal(bool generic) const {
    const QPrinter::PrinterState state = tools_.printer.printerState();
    if (state == QPrinter::Active || state == QPrinter::Aborted)
        return QStringLiteral("the printer has not ended another job");
    // Plain text is made of the report file, whether it was indexed or not.
    const ReportBuffer& report = tools_.source.report;
    return generic || (report.geometry().known() && report.page_count() > 0)
               ? QString()
               : QStringLiteral("the report has no pages");
}

/// Whether it has been ended while a dialog was open.
bool ReportJob::is_over(const DialogParent& parent) const {
    return tools_.is_canceled || parent.is_gone();
}

std::unique_ptr<QPainter> ReportJob::start(const PainterSetup& setup, QString& why) {
    PsPrinter& printer = tools_.printer;
    why = refusal(true);
    const bool to_scratch = !setup.file && tools_.pdf_mode;
    if (why.isEmpty() && to_scratch)
        why = tools_.pipeline.claim(PdfPurpose::print);
    if (!why.isEmpty()) {
        if (to_scratch)
            tools_.names.release();
        return nullptr;
    }
    set_output(to_scratch ? name_of(tmp_ps) : setup.file ? *setup.file : QString(), to_scratch);
    if (setup.devmode)
        set_job(printer, setup.printer, *setup.devmode);
    else
        printer.setPrinterName(setup.printer);
    if (setup.margins)
        set_sheet_margins(printer, *setup.margins);
    auto painter = std::make_unique<QPainter>();
    if (painter->begin(&printer))
        return painter;
    why = or_unknown(printer.errorString());
    if (to_scratch)
        tools_.names.release();
    return nullptr;
}

/// Paints the report as text or as pages; the painter stays open.
QString ReportJob::paint(QPainter& painter, QPagedPaintDevice& device, const Pages& pages) {
    if (tools_.is_canceled)
        return canceled();
    ReportPainter report(tools_.source, device, painter);
    report.is_aborted = [this] {
        return tools_.is_canceled || tools_.printer.printerState() == QPrinter::Aborted;
    };
    if (pages.with_events)
        report.before_page = [] { QCoreApplication::processEvents(); };
    report.progress = tools_.progress;
    QString why = pages.generic ? paint_text(report, pages)
                                : report.paint_pages(pages.font, tools_.units, pages.printed);
    tools_.is_canceled = tools_.is_canceled || report.is_stopped;
    return why;
}

/// Makes the report's text file, prints it as often as wanted and removes it.
QString ReportJob::paint_text(ReportPainter& report, const Pages& pages) {
    if (QDir::currentPath().isEmpty())
        return QStringLiteral("the current directory is no longer there");
    // The name is the same for all jobs in this directory.
    FileLock lock;
    QString why = lock.take_current_directory(FileLock::usual_patience, tools_.goes_on);
    if (!why.isEmpty())
        return why;
    const QByteArray name = QFile::encodeName(pages.text_file);
    const int fd = create_scratch_file(name, why);
    if (fd < 0)
        return why;
    ::close(fd);
    why = tools_.save_text(pages.parent, pages.text_file);
    const ReportBuffer& source = tools_.source.report;
    const int lines = source.geometry().lines;
    report.text_pages = pages.printed.pages_of(source.page_count());
    for (int copy = 0; copy < pages.printed.copies && why.isEmpty(); ++copy)
        why = report.paint_text(name.constData(), lines);
    remove_own(pages.text_file);
    return why;
}

/// Paints on the printer and ends its job, which is dropped unless all was painted.
QString ReportJob::paint_on_printer(QPainter& painter, const Pages& pages) {
    PsPrinter& printer = tools_.printer;
    QString why = paint(painter, printer, pages);
    const bool has_failed = printer.printerState() == QPrinter::Error;
    if (!why.isEmpty())
        printer.abort();
    const bool is_ended = painter.end() && printer.printerState() != QPrinter::Error;
    if (has_failed || (why.isEmpty() && !is_ended))
        why = or_unknown(printer.errorString());
    return why;
}

JobEnd ReportJob::print(QWidget* parent, const char* printer_id, PrintedCopies printed,
                        bool must_ask) {
    const JobTurn turn;
    if (!turn.is_first())
        return ended(busy_printing());
    tools_.is_canceled = false;
    if (must_ask || !printer_id || !*printer_id)
        return print_as_chosen(parent, printed);
    const auto record = find_printer(get_prtbin_path(), printer_id);
    return record ? print_by_record(parent, *record, printed)
                  : ended(not_found(utf8_or_latin1(printer_id)));
}

JobEnd ReportJob::print_by_record(QWidget* parent, const PrinterRecord& record,
                                  PrintedCopies printed) {
    const bool generic = is_generic(record.name);
    QString why = refusal(generic);
    if (!why.isEmpty())
        return ended(why);
    const FixedNamesUse in_use(tools_.names);
    const PageMargins margins = tools_.units.margins = usable_margins(record.margins);
    const auto painter = start({.printer = record.name,
                                .devmode = generic ? nullptr : &record.devmode,
                                .file = nullptr,
                                .margins = tools_.pdf_mode ? &margins : nullptr},
                               why);
    if (!painter)
        return ended(why);
    const bool to_pdf = tools_.pdf_mode;
    QCoreApplication::processEvents();
    why = paint_on_printer(*painter,
                           {.generic = generic,
                            .font = report_font(record.font),
                            .printed = printed,
                            .with_events = true,
                            .parent = parent,
                            .text_file = QDir::currentPath() + QStringLiteral("/pgeneric.out")});
    if (why.isEmpty() && to_pdf)
        why = tools_.pipeline.print();
    return ended(why);
}

void ReportJob::set_output(const QString& file, bool is_scratch) {
    if (is_scratch)
        tools_.printer.setScratchFileName(file);
    else
        tools_.printer.setOutputFileName(file);
    tools_.output = file;
}

JobEnd ReportJob::print_as_chosen(QWidget* parent, PrintedCopies printed) {
    const QString why = can_ask() ? refusal(true) : no_one_to_ask();
    if (!why.isEmpty())
        return ended(why);
    PsPrinter& printer = tools_.printer;
    forget_output(printer, tools_.output);
    const DialogParent window(parent);
    if (!printer.setup(parent) || is_over(window))
        return cancelled();
    Pages pages;
    pages.printed = {printer.copyCount(), printed.collate};
    pages.with_events = true;
    pages.parent = parent;
    // The queue of an earlier job is none that prints into a file.
    pages.generic = printer.outputFileName().isEmpty() && is_generic(printer.printerName());
    pages.text_file = QDir::currentPath() + QStringLiteral("/pgeneric.out");
    // Copies are made by printing the pages again.
    printer.setCopyCount(1);
    if (!pages.generic) {
        const std::optional<QFont> font = choose_report_font(parent);
        if (!font || is_over(window))
            return cancelled();
        pages.font = *font;
    }
    const QString refused = refusal(pages.generic);
    return ended(!refused.isEmpty()      ? refused
                 : printer.isPdfChosen() ? print_to_pdf(pages)
                                         : print_to_chosen(pages));
}

QString ReportJob::print_to_chosen(const Pages& pages) {
    QPainter painter;
    if (!painter.begin(&tools_.printer))
        return or_unknown(tools_.printer.errorString());
    QCoreApplication::processEvents();
    return paint_on_printer(painter, pages);
}

/// Prints into the file that the user chose to become a PDF.
QString ReportJob::print_to_pdf(const Pages& pages) {
    return make_chosen_pdf(tools_.printer,
                           [this, &pages](QPainter& painter, QPagedPaintDevice& device) {
                               QCoreApplication::processEvents();
                               return paint(painter, device, pages);
                           });
}

JobEnd ReportJob::serve(const char* printer_id, PrintedCopies printed, const QString& output_file,
                        const QString& setup_file) {
    tools_.is_canceled = false;
    const auto record = find_printer(setup_file, printer_id);
    const QString why = record ? serve_record(*record, printed, output_file)
                               : not_found(utf8_or_latin1(printer_id));
    remove_setup_file(setup_file);
    return ended(why);
}

QString ReportJob::serve_record(const PrinterRecord& record, PrintedCopies printed,
                                const QString& output_file) {
    const bool generic = is_generic(record.name);
    QString why = refusal(generic);
    if (why.isEmpty() && output_file.isEmpty())
        why = QStringLiteral("there is no output file");
    if (!why.isEmpty())
        return why;
    // The PDF takes the place of the PostScript in the host's file, and both that of an earlier
    // one.
    const bool to_pdf = tools_.pdf_mode;
    FileBackup earlier(to_pdf ? output_file : QString());
    if (!earlier.error().isEmpty())
        return earlier.error();
    const PageMargins margins = tools_.units.margins = usable_margins(record.margins);
    const auto painter = start({.printer = record.name,
                                .devmode = generic ? nullptr : &record.devmode,
                                .file = &output_file,
                                .margins = to_pdf ? &margins : nullptr},
                               why);
    if (!painter)
        return why;
    Pages pages;
    pages.generic = generic;
    pages.font = report_font(record.font);
    pages.printed = printed;
    pages.text_file =
        get_tmpfile(QDir::currentPath(), QStringLiteral("gen"), QStringLiteral("out"));
    why = paint_on_printer(*painter, pages);
    if (why.isEmpty() && to_pdf)
        why = tools_.pipeline.serve(output_file);
    if (why.isEmpty())
        earlier.drop();
    return why;
}

/// Paints all pages, at the font's own size, to the fixed PostScript name; the sheet is set up.
QString ReportJob::paint_to_file(const QFont& font) {
    QString why = tools_.pipeline.claim(PdfPurpose::create);
    if (!why.isEmpty())
        return why;
    PsPrinter& printer = tools_.printer;
    set_output(name_of(tmp_ps), true);
    QPainter painter;
    if (!painter.begin(&printer))
        return or_unknown(printer.errorString());
    tools_.units.no_page_map = true;
    Pages pages;
    pages.font = font;
    return paint_on_printer(painter, pages);
}

JobEnd ReportJob::save_pdf(QWidget* parent, const QString& file) {
    const JobTurn turn;
    QString why = turn.is_first() ? refusal(false) : busy_printing();
    if (turn.is_first())
        tools_.is_canceled = false;
    if (why.isEmpty() && file.isEmpty())
        why = QStringLiteral("the path of the PDF is too long");
    if (why.isEmpty() && !can_ask())
        why = no_one_to_ask();
    if (!why.isEmpty())
        return ended(why);
    tools_.printer.setCopyCount(1);
    tools_.printer.setPageOrientation(QPageLayout::Portrait);
    const DialogParent window(parent);
    const std::optional<QFont> font = choose_report_font(parent);
    if (!font || is_over(window))
        return cancelled();
    const FixedNamesUse in_use(tools_.names);
    why = paint_to_file(*font);
    return ended(why.isEmpty() ? tools_.pipeline.convert(file) : why);
}

JobEnd ReportJob::make_pdf(QWidget* parent, const QString& printer_id, const QString& setup_file,
                           QString& result) {
    const JobTurn turn;
    QString why = turn.is_first() ? refusal(false) : busy_printing();
    if (turn.is_first())
        tools_.is_canceled = false;
    PsPrinter& printer = tools_.printer;
    if (why.isEmpty()) {
        printer.setCopyCount(1);
        printer.setPageOrientation(QPageLayout::Portrait);
    }
    const DialogParent window(parent);
    std::optional<PrinterRecord> record;
    if (!printer_id.isEmpty() && !setup_file.isEmpty()) {
        record = find_printer(setup_file, printer_id.toUtf8().constData());
        if (!record)
            record = find_printer(setup_file, printer_id.toLatin1().constData());
        if (!record && why.isEmpty() && can_ask())
            show_message(parent, not_found(printer_id));
        else if (!record && why.isEmpty())
            why = not_found(printer_id);
        if (!is_same_file(setup_file, get_prtbin_path()))
            remove_setup_file(setup_file);
        if (is_over(window))
            return cancelled();
    }
    if (why.isEmpty() && !record && !can_ask())
        why = no_one_to_ask();
    if (!why.isEmpty())
        return ended(why);
    QFont font;
    if (record) {
        set_sheet(printer, record->devmode.orientation, record->devmode.paper_size);
        tools_.units.margins = usable_margins(record->margins);
        font = report_font(record->font);
    } else {
        const std::optional<QFont> chosen = choose_report_font(parent);
        if (!chosen || is_over(window))
            return cancelled();
        font = *chosen;
    }
    set_sheet_margins(printer, tools_.units.margins);
    const FixedNamesUse in_use(tools_.names);
    why = paint_to_file(font);
    return ended(why.isEmpty() ? tools_.pipeline.create(result) : why);
}

} // namespace printman
