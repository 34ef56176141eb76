#include "host/viewer/reportjobs.h"

#include "host/files/inputfile.h"
#include "host/files/paths.h"
#include "host/jobs/clipboardjob.h"
#include "host/jobs/pdfjob.h"
#include "host/jobs/printjob.h"
#include "host/jobs/textjob.h"
#include "host/viewer/messages.h"
#include "host/viewer/reportview.h"
#include "host/viewer/texts.h"
#include "host/viewer/windowwatch.h"

#include <printman/printman.h>

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMainWindow>

namespace host {

QByteArray ReportJobs::ask_name(const QString& title, const QString& addition,
                                const QString& suffix, const QString& filter) {
    const QFileInfo report(QFile::decodeName(view_->absolute_path()));
    QFileDialog dialog(&window_, title, save_directory_.isEmpty() ? report.path() : save_directory_,
                       filter + QStringLiteral(";;") + tr("All files (*)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(report.completeBaseName() + addition + u'.' + suffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString name = dialog.selectedFiles().constFirst();
    save_directory_ = QFileInfo(name).path();
    QByteArray bytes = QFile::encodeName(name);
    if (QFile::decodeName(bytes) != name) {
        messages_.report(tr("Nothing was written."), Outcome::failure(not_text));
        return {};
    }
    return bytes;
}

void ReportJobs::ask_save_page() {
    save_page(ask_name(tr("Save Page as Text"), tr(" page %1").arg(view_->page()),
                       QStringLiteral("txt"), tr("Text files (*.txt)")));
}

void ReportJobs::ask_save_report() {
    save_report(ask_name(tr("Save Report as Text"), QString(), QStringLiteral("txt"),
                         tr("Text files (*.txt)")));
}

void ReportJobs::ask_export_pdf() {
    export_pdf(
        ask_name(tr("Export PDF"), QString(), QStringLiteral("pdf"), tr("PDF files (*.pdf)")));
}

bool ReportJobs::is_unchanged(const QString& failure) {
    if (view_->is_unchanged())
        return true;
    Outcome readable = check_input(view_->path());
    messages_.report(failure, readable.ok()
                                  ? Outcome::failure(view_->path() +
                                                     ": The file has changed since it was opened. "
                                                     "Reload it (F5) and try again.")
                                  : readable);
    return false;
}

void ReportJobs::run(const Job& job) {
    if (is_busy_ || !is_unchanged(job.failure))
        return;
    is_busy_ = true;
    Outcome outcome;
    bool stopped = false;
    {
        WindowWatch watch(&window_, job.activity);
        outcome = job.run(watch);
        stopped = watch.stopped();
    }
    is_busy_ = false;
    if (outcome.ok())
        messages_.show(job.success);
    else if (stopped)
        messages_.show(tr("Cancelled"));
    else
        messages_.report(job.failure, outcome);
}

void ReportJobs::save_page(const QByteArray& out) {
    if (out.isEmpty())
        return;
    Outcome names = check_output(view_->path(), out);
    if (!names.ok())
        return messages_.report(tr("Nothing was written."), names);
    // The library itself reports errors.
    CPrintMan& manager = view_->manager();
    manager.save_cur_page(&window_, out.constData());
    if (manager.last_job_ok())
        messages_.show(tr("Saved as %1").arg(short_name(out)));
}

void ReportJobs::save_report(const QByteArray& out) {
    if (out.isEmpty())
        return;
    run({.activity = tr("Saving %1").arg(short_name(out)),
         .failure = tr("The report was not saved."),
         .success = tr("Saved as %1").arg(short_name(out)),
         .run = [this, out](JobWatch& watch) {
             Outcome names = check_output(view_->path(), out);
             return names.ok() ? make_text(view_->path(), out, watch) : names;
         }});
}

void ReportJobs::export_pdf(const QByteArray& out) {
    if (out.isEmpty())
        return;
    run({.activity = tr("Making %1").arg(short_name(out)),
         .failure = tr("The PDF was not made."),
         .success = tr("Saved as %1").arg(short_name(out)),
         .run = [this, out](JobWatch& watch) {
             Outcome names = check_output(view_->path(), out);
             return names.ok() ? make_pdf(view_->path(), out, PdfSetup(), watch) : names;
         }});
}

void ReportJobs::copy_report() {
    run({.activity = tr("Copying the report"),
         .failure = tr("The report was not copied completely."),
         .success = tr("The whole report is on the clipboard"),
         .run = [this](JobWatch& watch) { return copy_report_text(view_->path(), watch); }});
}

void ReportJobs::print_page() {
    CPrintMan& manager = view_->manager();
    manager.print_cur_page(&window_);
    if (!manager.last_job_ok())
        messages_.report(tr("The page was not printed."),
                         Outcome::failure(QFile::encodeName(manager.last_job_error())));
    view_->take_keyboard();
}

void ReportJobs::print_report() {
    print_report([this](JobWatch& watch, bool& accepted) {
        return print_as_chosen(view_->path(), &window_, watch, accepted);
    });
}

void ReportJobs::print_report(const Print& print) {
    bool accepted = true;
    run({.activity = tr("Printing the report"),
         .failure = tr("The report was not printed."),
         .success = tr("The report is printed"),
         .run = [&print, &accepted](JobWatch& watch) { return print(watch, accepted); }});
    if (!accepted)
        messages_.clear();
    view_->take_keyboard();
}

} // namespace host
