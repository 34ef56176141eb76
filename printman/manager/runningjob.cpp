#include <printman/dialogs/openerror.h>
#include <printman/manager/runningjob.h>
#include <printman/output/singlejob.h>

#include <QCoreApplication>
#include <QFile>

using namespace printman;

CPrintMan::Private::RunningJob::RunningJob(CPrintMan& manager)
    : d_(manager.d), manager_(&manager), pdf_mode_(manager.pdf_mode), text_once_(manager.text_once),
      form_file_(manager.form_file), document_title_(manager.document_title) {
    ++d_->jobs;
}

CPrintMan::Private::RunningJob::~RunningJob() {
    --d_->jobs;
}

void CPrintMan::Private::RunningJob::start_control() {
    if (d_->jobs == 1)
        d_->control->start(0, d_->report.page_count());
}

PdfPipeline CPrintMan::Private::RunningJob::pipeline() const {
    return {*d_->printer, d_->shared_scratch, d_->has_watermark ? &d_->watermark : nullptr,
            form_file_, *d_->control};
}

/// Says what the printer's next document is called and who made it.
void CPrintMan::Private::RunningJob::name_document() const {
    if (d_->is_printing())
        return;
    d_->printer->setDocName(document_title_);
    d_->printer->setCreator(
        (QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion())
            .trimmed());
}

ReportJob CPrintMan::Private::RunningJob::report_job() {
    name_document();
    d_->printer->setJobControl(d_->control);
    return ReportJob(
        {.printer = *d_->printer,
         .source = d_->loaded_report(),
         .units = d_->units,
         .names = d_->shared_scratch,
         .pipeline = pipeline(),
         .control = *d_->control,
         .pdf_mode = pdf_mode_,
         .output = d_->job_output,
         // This outlives the job.
         .save_text = [d = d_.get(), once = text_once_](QWidget* parent, const QString& file) {
             const QByteArray name = QFile::encodeName(file);
             const QPointer<QWidget> window = parent;
             Result saved = once ? d->write_report(name.constData())
                                 : d->save_report(parent, name.constData());
             if (window && !once && !saved.ok() && !saved.is_canceled())
                 show_open_error(window, name.constData());
             return saved;
         }});
}

int CPrintMan::Private::RunningJob::run_pipeline(
    const std::function<Result(PdfPipeline& pipeline)>& operation) {
    const SingleJob turn;
    Result ready = turn.check();
    if (ready.ok())
        ready = d_->check_printer();
    if (!ready.ok())
        return d_->note(ready);
    const int pages = d_->report.page_count();
    d_->control->start(pages, pages);
    d_->printer->setJobControl(d_->control);
    PdfPipeline steps = pipeline();
    return d_->note(operation(steps));
}
