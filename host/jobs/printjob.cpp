#include "host/jobs/printjob.h"

#include "host/files/pendingfile.h"
#include "host/jobs/jobdirectory.h"
#include "host/jobs/joberror.h"
#include "host/jobs/jobreport.h"
#include "host/jobs/printdialogwatcher.h"
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

constexpr int by_setup_file = 0; // modes of a job
constexpr int as_chosen = 1;

/// Opens the report in a manager that is to print it.
Outcome prepare(CPrintMan& manager, const JobReport& input, const QByteArray& report,
                JobWatch& watch) {
    manager.document_title = title_of(report);
    manager.text_once = true;
    watch_job(manager, watch);
    return input.open(manager);
}

int no_page_map(std::optional<bool> wanted) {
    return wanted.value_or(host_settings().turns_page_map_off()) ? 1 : 0;
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
    WorkPlace place;
    ready = place.enter();
    if (!ready.ok())
        return ready;
    PsPrinter sheet;
    const FontMeanwhile font(text_font(manager.get_columns(), manager.get_lines(), sheet));
    const HeldErrors errors;
    const int done =
        manager.print_rpt_page(nullptr, setup.printer.constData(), setup.copies, setup.collate,
                               by_setup_file, no_page_map(setup.no_page_map));
    return job_outcome(manager, done == 1, errors,
                       directory_of(QFile::encodeName(place.file(QString()))));
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
    if (!pending.open(absolute_path(out), out))
        return Outcome::failure(pending.error());
    WorkPlace place;
    ready = place.enter();
    if (!ready.ok())
        return ready;
    // The library removes the setup file of a server job.
    const QString printers = setup.setup_file.isEmpty() ? get_prtbin_path() : setup.setup_file;
    const QString copy = place.file(QStringLiteral("setup.bin"));
    QFile original(printers);
    if (!original.copy(copy))
        return Outcome::failure(
            QFile::encodeName(printers + QStringLiteral(": ") + original.errorString()));
    const QString result = place.file(QStringLiteral("report.ps"));
    PsPrinter sheet;
    const FontMeanwhile font(text_font(manager.get_columns(), manager.get_lines(), sheet));
    const HeldErrors errors;
    const int done = manager.print_serverrpt_page(setup.printer.constData(), setup.copies,
                                                  setup.collate, no_page_map(setup.no_page_map),
                                                  result, copy, QString(), QString());
    Outcome printed = job_outcome(manager, done == 1, errors, QFile::encodeName(result));
    if (printed.ok())
        printed = pending.take_over(result);
    if (!printed.ok())
        return printed;
    return pending.commit() ? Outcome::success() : Outcome::failure(pending.error());
}

Outcome print_as_chosen(const QByteArray& report, QWidget* parent, JobWatch& watch, bool& chosen,
                        std::optional<bool> page_map) {
    const JobReport input(report);
    CPrintMan manager;
    Outcome ready = prepare(manager, input, report, watch);
    if (!ready.ok())
        return ready;
    // The dialog proposes and checks names from the directory of the user, and makes them absolute:
    // the job goes to its own when he has accepted.
    WorkPlace place;
    std::optional<FontMeanwhile> font;
    const auto accepted = [&] {
        ready = place.enter();
        return ready.ok();
    };
    const PrintChoice choice(accepted, [&](const QPrinter& printer) {
        if (!prints_text(printer.printerName()))
            return;
        PsPrinter sheet;
        sheet.setPageSize(printer.pageLayout().pageSize());
        sheet.setPageOrientation(printer.pageLayout().orientation());
        font.emplace(text_font(manager.get_columns(), manager.get_lines(), sheet));
    });
    const HeldErrors errors;
    const int done =
        manager.print_rpt_page(parent, nullptr, 1, 1, as_chosen, no_page_map(page_map));
    chosen = done == 1 || !manager.last_job_ok() || !ready.ok();
    return ready.ok() ? job_outcome(manager, done == 1 || !chosen, errors, {}) : ready;
}

} // namespace host
