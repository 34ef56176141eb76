#include <printman/manager/runningjob.h>
#include <printman/printer/paths.h>

#include <QFile>

// The facade's functions for PDF files and watermarks.

using namespace printman;

namespace {

constexpr qsizetype watermark_text_size = 80;
constexpr qsizetype watermark_family_size = 52;

} // namespace

int CPrintMan::create_pdffile() {
    Private::RunningJob job(*this);
    QString result = result_pdf_file;
    const int done =
        job.run_pipeline([&result](PdfPipeline& steps) { return steps.create(result); });
    if (job.manager())
        result_pdf_file = result;
    return done;
}

int CPrintMan::print_pdf_file() {
    return Private::RunningJob(*this).run_pipeline(
        [](PdfPipeline& steps) { return steps.print(); });
}

int CPrintMan::print_serverpdf_file() {
    return Private::RunningJob(*this).run_pipeline(
        [ps = d->server_ps](PdfPipeline& steps) { return steps.serve(ps); });
}

int CPrintMan::save_rpt_pdffile(QWidget* parent) {
    Private::RunningJob job(*this);
    const Result ready = job->check_printer();
    return job->note(ready.ok()
                         ? job.report_job().save_pdf(parent, QFile::decodeName(get_pdffile_name()))
                         : ready);
}

int CPrintMan::print_rpt_pdffile(QWidget* parent) {
    Private::RunningJob job(*this);
    const Result ready = job->check_printer();
    if (!ready.ok())
        return job->note(ready);
    QString result = result_pdf_file;
    const Result made = job.report_job().make_pdf(parent, QString(report_printer_id),
                                                  QString(report_setup_file), result);
    if (job.manager())
        result_pdf_file = result;
    return job->note(made);
}

void CPrintMan::set_watermark_info(const char* text, const char* family, int point_size, int angle,
                                   const QColor& color, int x, int y, int in_front) {
    d->watermark = {.text = utf8_or_latin1_field(text, watermark_text_size),
                    .family = utf8_or_latin1_field(family, watermark_family_size),
                    .point_size = point_size,
                    .angle = angle,
                    .colour = color,
                    .x = x,
                    .y = y,
                    .in_front = in_front != 0};
    d->has_watermark = true;
}

int CPrintMan::generate_watermark() {
    return Private::RunningJob(*this).run_pipeline(
        [](PdfPipeline& steps) { return steps.make_watermark(); });
}
