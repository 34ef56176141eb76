#include <printman/manager/printmanprivate.h>
#include <printman/output/jobfont.h>
#include <printman/output/jobprinter.h>
#include <printman/output/jobturn.h>
#include <printman/printer/paths.h>
#include <printman/system/commandrun.h>

#include <QCoreApplication>
#include <QFile>
#include <QFont>
#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <iterator>

// The door's part for printing the whole report.

using namespace printman;

namespace {

constexpr qsizetype watermark_text_size = 80;
constexpr qsizetype watermark_family_size = 52;
constexpr int server_modes[] = {0, 5}; // in which the printer comes from the setup file

/// Keeps what a job works with: in its dialogs and in the events that it lets be handled the host
/// may end the manager.
template <typename Private>
class JobHold {
public:
    explicit JobHold(const std::shared_ptr<Private>& d) : d_(d) { ++d_->jobs; }
    ~JobHold() { --d_->jobs; }
    JobHold(const JobHold&) = delete;
    JobHold& operator=(const JobHold&) = delete;

    Private* operator->() const { return d_.get(); }

private:
    std::shared_ptr<Private> d_;
};

PrintedCopies printed(int copies, int collate) {
    return {copies, collate != 0};
}

} // namespace

bool CPrintMan::Private::has_printer() {
    if (!printer)
        job_error = tr("there is no printer yet");
    return printer != nullptr;
}

/// What is asked while a job waits, with so many of the report's pages done.
std::function<bool()> CPrintMan::Private::goes_on(int pages_done) {
    if (!progress)
        return {};
    return [this, pages_done, pages = report.page_count()] {
        if (!canceled && progress && !progress(pages_done, pages))
            canceled = true;
        return !canceled;
    };
}

PdfPipeline CPrintMan::Private::pipeline(const CPrintMan& door) {
    return {*printer, tmp_names, has_watermark ? &watermark : nullptr, door.form_file,
            goes_on(report.page_count())};
}

/// Runs an operation of the pipeline that the host asks for by itself.
int CPrintMan::Private::run_pipeline(const CPrintMan& door,
                                     const std::function<QString(PdfPipeline&)>& operation) {
    const JobTurn turn;
    if (!turn.is_first())
        return note(busy_printing());
    if (!has_printer())
        return 0;
    canceled = false;
    PdfPipeline steps = pipeline(door);
    printer->setGoesOn(goes_on(report.page_count()));
    return note(operation(steps));
}

bool CPrintMan::Private::is_printing() const {
    const QPrinter::PrinterState state = printer->printerState();
    return state == QPrinter::Active || state == QPrinter::Aborted;
}

/// Says what the printer's next document is called and who made it.
void CPrintMan::Private::name_document(const CPrintMan& door) {
    if (is_printing())
        return;
    printer->setDocName(door.document_title);
    printer->setCreator(
        (QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion())
            .trimmed());
}

ReportJob CPrintMan::Private::print_job(CPrintMan& door) {
    name_document(door);
    printer->setGoesOn(goes_on(report.page_count()));
    return ReportJob({.printer = *printer,
                      .source = loaded_report(),
                      .units = units,
                      .names = tmp_names,
                      .pipeline = pipeline(door),
                      .progress = progress,
                      .goes_on = goes_on(0),
                      .pdf_mode = door.pdf_mode,
                      .output = job_output,
                      .is_canceled = canceled,
                      // Asked only while nothing has ended the job.
                      .save_text = [this, &door](QWidget* parent, const QString& file) {
                          const QByteArray name = QFile::encodeName(file);
                          if (door.text_once)
                              door.write_rpt_text(name.constData());
                          else
                              door.save_rpt_file(parent, name.constData());
                          return job_error;
                      }});
}

int CPrintMan::Private::note(const QString& error) {
    job_error = one_line(error);
    return error.isEmpty();
}

int CPrintMan::Private::note(const JobEnd& end) {
    note(end.error);
    return end.is_done;
}

QPainter* CPrintMan::Private::start(CPrintMan& door, const PainterSetup& setup) {
    if (!has_printer())
        return nullptr;
    if (!is_printing())
        canceled = false;
    QString why;
    auto painter = print_job(door).start(setup, why);
    note(why);
    return painter.release();
}

QPainter* CPrintMan::create_printer(const char* name, const DLWDEVMODE& devmode) {
    return d->start(*this, {.printer = utf8_or_latin1(name), .devmode = &devmode});
}

QPainter* CPrintMan::create_printer(const char* name, const DLWDEVMODE& devmode,
                                    const QString& file) {
    return d->start(*this, {.printer = utf8_or_latin1(name), .devmode = &devmode, .file = &file});
}

QPainter* CPrintMan::create_generic_printer(const char* name) {
    return d->start(*this, {.printer = utf8_or_latin1(name)});
}

QPainter* CPrintMan::create_generic_printer(const char* name, const QString& file) {
    return d->start(*this, {.printer = utf8_or_latin1(name), .file = &file});
}

QFont* CPrintMan::create_font(const FontInfo& info) {
    return std::make_unique<QFont>(report_font(info)).release();
}

bool CPrintMan::next_page() {
    return d->printer && d->printer->newPage();
}

int CPrintMan::print_generic_rpt(QWidget* /*parent*/, QPainter* painter, const char* file) {
    if (!painter || !d->has_printer())
        return 0;
    ReportPainter report(d->loaded_report(), *d->printer, *painter);
    return d->note(report.paint_text(file, d->report.geometry().lines));
}

int CPrintMan::print_rpt_page(QWidget* parent, const char* printer_id, int copies, int collate,
                              int mode, int no_page_map) {
    const JobHold job(d);
    job->units.no_page_map = no_page_map != 0;
    const bool must_ask = !printer_id || !*printer_id ||
                          std::ranges::find(server_modes, mode) == std::end(server_modes);
    if (must_ask)
        pdf_mode = false;
    if (!job->has_printer())
        return 0;
    return job->note(
        job->print_job(*this).print(parent, printer_id, printed(copies, collate), must_ask));
}

int CPrintMan::print_serverrpt_page(const char* printer_id, int copies, int collate,
                                    int no_page_map, const QString& output_file,
                                    const QString& setup_file, const QString& /*unused*/,
                                    const QString& /*unused*/) {
    const JobHold job(d);
    job->server_ps = output_file;
    job->units.no_page_map = no_page_map != 0;
    if (!printer_id || !*printer_id)
        return job->note(tr("there is no printer id"));
    if (job->has_printer())
        return job->note(job->print_job(*this).serve(printer_id, printed(copies, collate),
                                                     output_file, setup_file));
    remove_setup_file(setup_file);
    return 0;
}

int CPrintMan::create_pdffile() {
    const JobHold job(d);
    const QPointer<CPrintMan> self = this;
    QString result = result_pdf_file;
    const int done =
        job->run_pipeline(*this, [&result](PdfPipeline& steps) { return steps.create(result); });
    if (self)
        result_pdf_file = result;
    return done;
}

int CPrintMan::print_pdf_file() {
    const JobHold job(d);
    return job->run_pipeline(*this, [](PdfPipeline& steps) { return steps.print(); });
}

int CPrintMan::print_serverpdf_file() {
    const JobHold job(d);
    return job->run_pipeline(
        *this, [&job](PdfPipeline& steps) { return steps.serve(QString(job->server_ps)); });
}

int CPrintMan::save_rpt_pdffile(QWidget* parent) {
    const JobHold job(d);
    return job->has_printer() &&
           job->note(job->print_job(*this).save_pdf(parent, QFile::decodeName(get_pdffile_name())));
}

int CPrintMan::print_rpt_pdffile(QWidget* parent) {
    const JobHold job(d);
    if (!job->has_printer())
        return 0;
    const QPointer<CPrintMan> self = this;
    QString result = result_pdf_file;
    const JobEnd end = job->print_job(*this).make_pdf(parent, QString(report_printer_id),
                                                      QString(report_setup_file), result);
    if (self)
        result_pdf_file = result;
    return job->note(end);
}

void CPrintMan::set_watermark_info(const char* text, const char* family, int point_size, int angle,
                                   const QColor& colour, int x, int y, int in_front) {
    d->watermark = {.text = utf8_or_latin1_field(text, watermark_text_size),
                    .family = utf8_or_latin1_field(family, watermark_family_size),
                    .point_size = point_size,
                    .angle = angle,
                    .colour = colour,
                    .x = x,
                    .y = y,
                    .in_front = in_front != 0};
    d->has_watermark = true;
}

int CPrintMan::generate_watermark() {
    const JobHold job(d);
    return job->run_pipeline(*this, [](PdfPipeline& steps) { return steps.make_watermark(); });
}
