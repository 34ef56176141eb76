// What the window does with its report beside showing it.

#include "host/cli/command.h"
#include "host/jobs/clipboardjob.h"
#include "host/jobs/pdfjob.h"
#include "host/jobs/printjob.h"
#include "host/jobs/report.h"
#include "host/jobs/textjob.h"
#include "host/viewer/helpwindow.h"
#include "host/viewer/reportview.h"
#include "host/viewer/texts.h"
#include "host/viewer/viewerwindow.h"
#include "host/viewer/windowwatch.h"

#include <printman/printman.h>

#include <QFileDialog>
#include <QFileInfo>
#include <QStatusBar>

namespace host {

namespace {

constexpr int message_time = 5000; // milliseconds

} // namespace

void ViewerWindow::ask_open() {
    const QString here =
        view_ ? QFileInfo(QFile::decodeName(view_->absolute_path())).path() : QString();
    const QString name = QFileDialog::getOpenFileName(this, tr("Open Report"), here,
                                                      tr("Reports (*.rpt);;All files (*)"));
    if (!name.isEmpty())
        open_or_tell(QFile::encodeName(name));
}

QByteArray ViewerWindow::ask_name(const QString& title, const QString& addition,
                                  const QString& suffix, const QString& kind) {
    const QFileInfo report(QFile::decodeName(view_->absolute_path()));
    QFileDialog dialog(this, title, save_directory_.isEmpty() ? report.path() : save_directory_,
                       kind + QStringLiteral(";;") + tr("All files (*)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(report.completeBaseName() + addition + u'.' + suffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString name = dialog.selectedFiles().constFirst();
    save_directory_ = QFileInfo(name).path();
    QByteArray bytes = QFile::encodeName(name);
    if (QFile::decodeName(bytes) != name) {
        tell(tr("Nothing was written."),
             Outcome::failure("The name is not valid in the locale's encoding"));
        return {};
    }
    return bytes;
}

bool ViewerWindow::is_current(const QString& what) {
    if (view_->is_unchanged())
        return true;
    Outcome readable = check_input(view_->path());
    tell(what, readable.ok()
                   ? Outcome::failure(view_->path() + ": The file has changed since it was opened. "
                                                      "Reload it (F5) and try again.")
                   : readable);
    return false;
}

void ViewerWindow::run_job(const QString& label, const QString& what,
                           const std::function<Outcome(JobWatch&)>& job, const QString& done) {
    if (busy_ || !is_current(what))
        return;
    busy_ = true;
    Outcome outcome;
    bool stopped = false;
    {
        WindowWatch watch(this, label);
        outcome = job(watch);
        stopped = watch.stopped();
    }
    busy_ = false;
    if (outcome.ok())
        statusBar()->showMessage(done, message_time);
    else if (stopped)
        statusBar()->showMessage(tr("Cancelled"), message_time);
    else
        tell(what, outcome);
}

void ViewerWindow::save_page(const QByteArray& out) {
    if (out.isEmpty())
        return;
    Outcome names = check_output(view_->path(), out);
    if (!names.ok())
        return tell(tr("Nothing was written."), names);
    // The library tells what goes wrong.
    CPrintMan& manager = view_->manager();
    manager.save_cur_page(this, out.constData());
    if (manager.last_job_ok())
        statusBar()->showMessage(tr("Saved as %1").arg(short_name(out)), message_time);
}

void ViewerWindow::save_report(const QByteArray& out) {
    if (out.isEmpty())
        return;
    run_job(
        tr("Saving %1").arg(short_name(out)), tr("The report was not saved."),
        [this, out](JobWatch& watch) {
            Outcome names = check_output(view_->path(), out);
            return names.ok() ? make_text(view_->path(), out, watch) : names;
        },
        tr("Saved as %1").arg(short_name(out)));
}

void ViewerWindow::export_pdf(const QByteArray& out) {
    if (out.isEmpty())
        return;
    run_job(
        tr("Making %1").arg(short_name(out)), tr("The PDF was not made."),
        [this, out](JobWatch& watch) {
            PdfSetup setup;
            Outcome ready = check_output(view_->path(), out);
            if (ready.ok())
                ready = PdfSetup::read(Arguments(), setup);
            return ready.ok() ? make_pdf(view_->path(), out, setup, watch) : ready;
        },
        tr("Saved as %1").arg(short_name(out)));
}

void ViewerWindow::copy_report() {
    run_job(
        tr("Copying the report"), tr("The report was not copied whole."),
        [this](JobWatch& watch) { return copy_report_text(view_->path(), watch); },
        tr("The whole report is on the clipboard"));
}

void ViewerWindow::print_page() {
    CPrintMan& manager = view_->manager();
    manager.print_cur_page(this);
    if (!manager.last_job_ok())
        tell(tr("The page was not printed."),
             Outcome::failure(QFile::encodeName(manager.last_job_error())));
    view_->take_keyboard();
}

void ViewerWindow::print_report() {
    print_by([this](JobWatch& watch, bool& chosen) {
        return print_as_chosen(view_->path(), this, watch, chosen);
    });
}

void ViewerWindow::print_by(const std::function<Outcome(JobWatch&, bool& chosen)>& print) {
    bool chosen = true;
    run_job(
        tr("Printing the report"), tr("The report was not printed."),
        [&print, &chosen](JobWatch& watch) { return print(watch, chosen); },
        tr("The report is printed"));
    if (!chosen)
        statusBar()->clearMessage();
    view_->take_keyboard();
}

void ViewerWindow::change_colours() {
    if (view_->manager().select_screencolor() == 1)
        view_->refresh();
    tell_unstored();
}

void ViewerWindow::show_help() {
    if (!help_) {
        help_ = new HelpWindow(this, key_texts(actions_));
        help_->setAttribute(Qt::WA_DeleteOnClose);
    }
    help_->show();
    help_->raise();
    help_->activateWindow();
}

} // namespace host
