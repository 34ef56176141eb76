#include <printman/output/chosenpdf.h>
#include <printman/output/jobfont.h>
#include <printman/output/jobmessages.h>
#include <printman/output/reportjob.h>
#include <printman/output/scratchset.h>
#include <printman/output/singlejob.h>
#include <printman/output/steprunner.h>
#include <printman/printer/paths.h>
#include <printman/report/reportfailure.h>
#include <printman/system/filebackup.h>
#include <printman/system/scratchname.h>
#include <printman/toolkit/psprinter.h>
#include <printman/toolkit/widgets.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPainter>

namespace printman {

namespace {

/// The text file of a job that the user waits for.
QString local_text_file() {
    return QDir::currentPath() + QStringLiteral("/pgeneric.out");
}

} // namespace

/// Whether a job can begin now.
Result ReportJob::check_ready(bool generic) const {
    const QPrinter::PrinterState state = tools_.printer.printerState();
    if (state == QPrinter::Active || state == QPrinter::Aborted)
        return Result::failure(QStringLiteral("the printer has not ended another job"));
    // Plain text is made of the report file, whether it was indexed or not.
    const ReportBuffer& report = tools_.source.report;
    const bool has_pages = report.geometry().known() && report.page_count() > 0;
    return generic || has_pages ? Result() : no_pages();
}

/// Whether it has been ended while a dialog was open.
bool ReportJob::is_over(const DialogParent& parent) const {
    return tools_.control.is_canceled() || parent.is_gone();
}

void ReportJob::start_control() {
    tools_.control.start(0, tools_.source.report.page_count());
}

void ReportJob::set_output(const QString& file, bool is_scratch) {
    if (is_scratch)
        tools_.printer.setScratchFileName(file);
    else
        tools_.printer.setOutputFileName(file);
    tools_.output = file;
}

Result ReportJob::start(const PainterSetup& setup, std::unique_ptr<QPainter>& painter) {
    PsPrinter& printer = tools_.printer;
    const bool to_scratch = !setup.file && tools_.pdf_mode;
    Result ready = check_ready(true);
    if (ready.ok() && to_scratch)
        ready = tools_.pipeline.claim(PdfPurpose::print);
    if (ready.ok()) {
        set_output(to_scratch   ? QString::fromUtf16(tmp_ps)
                   : setup.file ? *setup.file
                                : QString(),
                   to_scratch);
        if (setup.devmode)
            set_job(printer, setup.printer, *setup.devmode);
        else
            printer.setPrinterName(setup.printer);
        if (setup.margins)
            set_sheet_margins(printer, *setup.margins);
        painter = std::make_unique<QPainter>();
        if (painter->begin(&printer))
            return {};
        painter.reset();
        ready = printer_failure(printer);
    }
    if (to_scratch)
        tools_.names.release();
    return ready;
}

/// Paints the report as text or as pages; the painter stays open.
Result ReportJob::paint(QPainter& painter, QPagedPaintDevice& device, const Pages& pages) {
    if (tools_.control.is_canceled())
        return Result::canceled();
    ReportPainter report(tools_.source, device, painter, tools_.control);
    report.is_aborted = [this] { return tools_.printer.printerState() == QPrinter::Aborted; };
    if (pages.with_events)
        report.before_page = [] { QCoreApplication::processEvents(); };
    return pages.generic ? paint_text(report, pages)
                         : report.paint_pages(pages.font, tools_.units, pages.printed);
}

/// Makes an empty file for the report's text.
///
/// @param lock taken where the name is the same for all jobs in the current directory
Result ReportJob::make_text_file(const Pages& pages, FileLock& lock, QString& name) {
    if (QDir::currentPath().isEmpty())
        return Result::failure(QStringLiteral("the current directory is no longer there"));
    if (pages.text_file.isEmpty()) {
        ScratchSet made;
        Result created = made.create({{"gen", "out", 0600}}, tools_.control);
        name = created.ok() ? made.name(0) : QString();
        return created;
    }
    name = pages.text_file;
    Result locked = lock.take_current_directory(tools_.control);
    return locked.ok() ? create_scratch_file(QFile::encodeName(name)) : locked;
}

/// Makes the report's text file, prints it as often as wanted and removes it.
Result ReportJob::paint_text(ReportPainter& report, const Pages& pages) {
    FileLock lock;
    QString name;
    Result made = make_text_file(pages, lock, name);
    if (!made.ok())
        return made;
    Result painted = tools_.save_text(pages.parent, name);
    const ReportBuffer& source = tools_.source.report;
    const int lines = source.geometry().lines;
    report.text_pages = pages.printed.pages_of(source.page_count());
    for (int copy = 0; copy < pages.printed.copies && painted.ok(); ++copy)
        painted = report.paint_text(QFile::encodeName(name).constData(), lines);
    remove_own(name);
    return painted;
}

/// Paints on the printer and ends its job, which is dropped unless all was painted.
Result ReportJob::paint_on_printer(QPainter& painter, const Pages& pages) {
    PsPrinter& printer = tools_.printer;
    Result painted = paint(painter, printer, pages);
    const bool has_failed = printer.printerState() == QPrinter::Error;
    if (!painted.ok())
        printer.abort();
    const bool is_ended = painter.end() && printer.printerState() != QPrinter::Error;
    return has_failed || (painted.ok() && !is_ended) ? printer_failure(printer) : painted;
}

Result ReportJob::print(QWidget* parent, const char* printer_id, PrintedCopies printed,
                        bool must_ask) {
    const SingleJob turn;
    if (!turn.check().ok())
        return turn.check();
    start_control();
    if (must_ask || !printer_id || !*printer_id)
        return print_as_chosen(parent, printed);
    const auto record = find_printer(get_prtbin_path(), printer_id);
    return record ? print_by_record(parent, *record, printed)
                  : printer_not_found(utf8_or_latin1(printer_id));
}

Result ReportJob::print_by_record(QWidget* parent, const PrinterRecord& record,
                                  PrintedCopies printed) {
    const bool generic = is_generic(record.name);
    Result ready = check_ready(generic);
    if (!ready.ok())
        return ready;
    const SharedScratchUse in_use(tools_.names);
    const PageMargins margins = tools_.units.margins = usable_margins(record.margins);
    std::unique_ptr<QPainter> painter;
    Result started = start({.printer = record.name,
                            .devmode = generic ? nullptr : &record.devmode,
                            .file = nullptr,
                            .margins = tools_.pdf_mode ? &margins : nullptr},
                           painter);
    if (!started.ok())
        return started;
    const bool to_pdf = tools_.pdf_mode;
    QCoreApplication::processEvents();
    Result painted = paint_on_printer(*painter, {.generic = generic,
                                                 .font = report_font(record.font),
                                                 .printed = printed,
                                                 .with_events = true,
                                                 .parent = parent,
                                                 .text_file = local_text_file()});
    return painted.ok() && to_pdf ? tools_.pipeline.print() : painted;
}

Result ReportJob::print_as_chosen(QWidget* parent, PrintedCopies printed) {
    Result ready = can_show_widgets() ? check_ready(true) : no_one_to_ask();
    if (!ready.ok())
        return ready;
    PsPrinter& printer = tools_.printer;
    forget_output(printer, tools_.output);
    const DialogParent window(parent);
    if (!printer.setup(parent) || is_over(window))
        return Result::declined();
    Pages pages;
    pages.printed = {printer.copyCount(), printed.collate};
    pages.with_events = true;
    pages.parent = parent;
    // The queue of an earlier job is none that prints into a file.
    pages.generic = printer.outputFileName().isEmpty() && is_generic(printer.printerName());
    pages.text_file = local_text_file();
    // Copies are made by printing the pages again.
    printer.setCopyCount(1);
    if (!pages.generic) {
        const std::optional<QFont> font = choose_report_font(parent);
        if (!font || is_over(window))
            return Result::declined();
        pages.font = *font;
    }
    ready = check_ready(pages.generic);
    if (!ready.ok())
        return ready;
    return printer.isPdfChosen() ? print_to_pdf(pages) : print_to_chosen(pages);
}

Result ReportJob::print_to_chosen(const Pages& pages) {
    QPainter painter;
    if (!painter.begin(&tools_.printer))
        return printer_failure(tools_.printer);
    QCoreApplication::processEvents();
    return paint_on_printer(painter, pages);
}

/// Prints into the file that the user chose to become a PDF.
Result ReportJob::print_to_pdf(const Pages& pages) {
    return make_chosen_pdf(tools_.printer,
                           [this, &pages](QPainter& painter, QPagedPaintDevice& device) {
                               QCoreApplication::processEvents();
                               return paint(painter, device, pages);
                           });
}

Result ReportJob::serve(const char* printer_id, PrintedCopies printed, const QString& output_file,
                        const QString& setup_file) {
    const auto record = find_printer(setup_file, printer_id);
    Result served = record ? serve_record(*record, printed, output_file)
                           : printer_not_found(utf8_or_latin1(printer_id));
    remove_setup_file(setup_file);
    return served;
}

Result ReportJob::serve_record(const PrinterRecord& record, PrintedCopies printed,
                               const QString& output_file) {
    const bool generic = is_generic(record.name);
    Result ready = check_ready(generic);
    if (!ready.ok())
        return ready;
    if (output_file.isEmpty())
        return Result::failure(QStringLiteral("there is no output file"));
    start_control();
    // The PDF takes the place of the PostScript in the host's file, and both that of an earlier
    // one.
    const bool to_pdf = tools_.pdf_mode;
    FileBackup earlier(to_pdf ? output_file : QString());
    if (!earlier.result().ok())
        return earlier.result();
    const PageMargins margins = tools_.units.margins = usable_margins(record.margins);
    std::unique_ptr<QPainter> painter;
    Result started = start({.printer = record.name,
                            .devmode = generic ? nullptr : &record.devmode,
                            .file = &output_file,
                            .margins = to_pdf ? &margins : nullptr},
                           painter);
    if (!started.ok())
        return started;
    Pages pages;
    pages.generic = generic;
    pages.font = report_font(record.font);
    pages.printed = printed;
    Result done = paint_on_printer(*painter, pages);
    if (done.ok() && to_pdf)
        done = tools_.pipeline.serve(output_file);
    if (done.ok())
        earlier.drop();
    return done;
}

} // namespace printman
