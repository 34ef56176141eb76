#include "host/jobs/printjob.h"

#include "host/files/paths.h"
#include "host/files/pendingfile.h"
#include "host/jobs/jobdirectory.h"
#include "host/jobs/joberror.h"
#include "host/jobs/jobreport.h"
#include "host/jobs/printdialogwatcher.h"
#include "host/jobs/stderrcapture.h"
#include "host/jobs/textfont.h"
#include "host/printers/setupfile.h"
#include "host/settings/settings.h"

#include <printman/printer/paths.h>
#include <printman/printman.h>
#include <printman/toolkit/psprinter.h>

#include <QFile>

#include <optional>

namespace host {

namespace {

// Modes of CPrintMan::print_rpt_page().
constexpr int by_setup_file = 0;
constexpr int as_chosen = 1;

/// Opens the report in the manager that is to print it.
Outcome prepare(CPrintMan& manager, const JobReport& input, const QByteArray& report,
                JobWatch& watch) {
    manager.document_title = title_of(report);
    manager.text_once = true;
    watch_job(manager, watch);
    return input.open(manager);
}

int page_map_argument(std::optional<bool> no_page_map) {
    return no_page_map.value_or(host_settings().no_page_map()) ? 1 : 0;
}

} // namespace

Outcome print_report(const QByteArray& report, const PrintSetup& setup, JobWatch& watch) {
    const JobReport input(report);
    CPrintMan manager;
    Outcome ready = prepare(manager, input, report, watch);
    if (ready.ok())
        ready = check_setup_file_for(setup.printer);
    if (!ready.ok())
        return ready;
    JobDirectory directory;
    ready = directory.enter();
    if (!ready.ok())
        return ready;
    PsPrinter sheet;
    const ScopedDefaultFont font(text_font(manager.get_columns(), manager.get_lines(), sheet));
    const StderrCapture capture;
    manager.print_rpt_page(nullptr, setup.printer.constData(), setup.copies, setup.collate,
                           by_setup_file, page_map_argument(setup.no_page_map));
    return job_outcome(manager.last_job(), capture.text());
}

Outcome serve_report(const QByteArray& report, const QByteArray& out, const PrintSetup& setup,
                     JobWatch& watch) {
    const JobReport input(report);
    CPrintMan manager;
    Outcome ready = prepare(manager, input, report, watch);
    if (ready.ok() && setup.setup_file.isEmpty())
        ready = check_setup_file_for(setup.printer);
    if (!ready.ok())
        return ready;
    PendingFile pending;
    ready = pending.open(absolute_path(out), out);
    if (!ready.ok())
        return ready;
    JobDirectory directory;
    ready = directory.enter();
    if (!ready.ok())
        return ready;
    // The library removes the setup file of a server job.
    const QString printers = setup.setup_file.isEmpty() ? get_prtbin_path() : setup.setup_file;
    const QString copy = directory.file(QStringLiteral("setup.bin"));
    QFile original(printers);
    if (!original.copy(copy))
        return Outcome::failure(
            QFile::encodeName(printers + QStringLiteral(": ") + original.errorString()));
    const QString result = directory.file(QStringLiteral("report.ps"));
    PsPrinter sheet;
    const ScopedDefaultFont font(text_font(manager.get_columns(), manager.get_lines(), sheet));
    const StderrCapture capture;
    manager.print_serverrpt_page(setup.printer.constData(), setup.copies, setup.collate,
                                 page_map_argument(setup.no_page_map), result, copy, QString(),
                                 QString());
    Outcome printed = job_outcome(manager.last_job(), capture.text());
    if (printed.ok())
        printed = pending.append_file(result);
    return printed.ok() ? pending.commit() : printed;
}

Outcome print_as_chosen(const QByteArray& report, QWidget* parent, JobWatch& watch, bool& accepted,
                        std::optional<bool> no_page_map) {
    const JobReport input(report);
    CPrintMan manager;
    Outcome ready = prepare(manager, input, report, watch);
    if (!ready.ok())
        return ready;
    // The dialog suggests and checks names relative to the user's directory, and makes them
    // absolute; only then does the job go to its own directory.
    JobDirectory directory;
    std::optional<ScopedDefaultFont> font;
    const auto enter_directory = [&] {
        ready = directory.enter();
        return ready.ok();
    };
    const PrintDialogWatcher watcher(enter_directory, [&](const QPrinter& printer) {
        if (!prints_text(printer.printerName()))
            return;
        PsPrinter sheet;
        sheet.setPageSize(printer.pageLayout().pageSize());
        sheet.setPageOrientation(printer.pageLayout().orientation());
        font.emplace(text_font(manager.get_columns(), manager.get_lines(), sheet));
    });
    const StderrCapture capture;
    manager.print_rpt_page(parent, nullptr, 1, 1, as_chosen, page_map_argument(no_page_map));
    const bool is_declined = manager.last_job_ok() && manager.last_job().is_canceled();
    accepted = !is_declined || !ready.ok();
    if (!ready.ok())
        return ready;
    return is_declined ? Outcome::success() : job_outcome(manager.last_job(), capture.text());
}

} // namespace host
