#include <printman/manager/runningjob.h>
#include <printman/output/jobfont.h>
#include <printman/output/jobprinter.h>

#include <QFont>
#include <QPainter>

#include <algorithm>
#include <iterator>

// The facade's functions for printing the whole report.

using namespace printman;

namespace {

constexpr int server_modes[] = {0, 5}; // in which the printer comes from the setup file

PrintedCopies printed(int copies, int collate) {
    return {copies, collate != 0};
}

} // namespace

QPainter* CPrintMan::Private::start_painter(CPrintMan& manager, const PainterSetup& setup) {
    RunningJob job(manager);
    Result ready = check_printer();
    std::unique_ptr<QPainter> painter;
    if (ready.ok()) {
        if (!is_printing())
            job.start_control();
        ready = job.report_job().start(setup, painter);
    }
    note(ready);
    return painter.release();
}

QPainter* CPrintMan::create_printer(const char* name, const DLWDEVMODE& devmode) {
    return d->start_painter(*this, {.printer = utf8_or_latin1(name), .devmode = &devmode});
}

QPainter* CPrintMan::create_printer(const char* name, const DLWDEVMODE& devmode,
                                    const QString& file) {
    return d->start_painter(*this,
                            {.printer = utf8_or_latin1(name), .devmode = &devmode, .file = &file});
}

QPainter* CPrintMan::create_generic_printer(const char* name) {
    return d->start_painter(*this, {.printer = utf8_or_latin1(name)});
}

QPainter* CPrintMan::create_generic_printer(const char* name, const QString& file) {
    return d->start_painter(*this, {.printer = utf8_or_latin1(name), .file = &file});
}

QFont* CPrintMan::create_font(const FontInfo& info) {
    return std::make_unique<QFont>(report_font(info)).release();
}

bool CPrintMan::next_page() {
    return d->printer && d->printer->newPage();
}

int CPrintMan::print_generic_rpt(QWidget* /*parent*/, QPainter* painter, const char* file) {
    if (!painter)
        return 0;
    const Result ready = d->check_printer();
    if (!ready.ok())
        return d->note(ready);
    // Not the manager's own control: nothing here can be canceled.
    JobControl control;
    ReportPainter report(d->loaded_report(), *d->printer, *painter, control);
    return d->note(report.paint_text(file, d->report.geometry().lines));
}

int CPrintMan::print_rpt_page(QWidget* parent, const char* printer_id, int copies, int collate,
                              int mode, int no_page_map) {
    const bool must_ask = !printer_id || !*printer_id ||
                          std::ranges::find(server_modes, mode) == std::end(server_modes);
    if (must_ask)
        pdf_mode = false;
    Private::RunningJob job(*this);
    job->units.no_page_map = no_page_map != 0;
    const Result ready = job->check_printer();
    return job->note(
        ready.ok() ? job.report_job().print(parent, printer_id, printed(copies, collate), must_ask)
                   : ready);
}

int CPrintMan::print_serverrpt_page(const char* printer_id, int copies, int collate,
                                    int no_page_map, const QString& output_file,
                                    const QString& setup_file, const QString& /*unused*/,
                                    const QString& /*unused*/) {
    Private::RunningJob job(*this);
    job->server_ps = output_file;
    job->units.no_page_map = no_page_map != 0;
    if (!printer_id || !*printer_id)
        return job->note(Result::failure(tr("there is no printer id")));
    const Result ready = job->check_printer();
    if (ready.ok())
        return job->note(
            job.report_job().serve(printer_id, printed(copies, collate), output_file, setup_file));
    remove_setup_file(setup_file);
    return job->note(ready);
}
