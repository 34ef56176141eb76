#include "host/viewer/reportdestination.h"

#include "host/files/inputfile.h"
#include "host/jobs/queuejob.h"
#include "host/jobs/reportfont.h"
#include "host/printers/destination.h"
#include "host/settings/settings.h"
#include "host/viewer/messages.h"
#include "host/viewer/reportjobs.h"
#include "host/viewer/reportview.h"
#include "host/viewer/screenfontsettings.h"
#include "host/viewer/unstoredsettings.h"

#include <printman/printman.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>

namespace host {

namespace {

/// Sets the key of this workstation in the manager: the id of the workstation's printer.
QByteArray station_printer(CPrintMan& manager) {
    const QByteArray key = station_key(host_settings());
    qstrncpy(manager.prt_key, key.constData(), sizeof manager.prt_key);
    char id[sizeof WinPrtSetup::printer_id] = {};
    return manager.get_prt_id(id, sizeof id) > 0 ? QByteArray(id) : QByteArray();
}

PrintSetup setup_of(const PrintDest& record) {
    return {.printer = printer_of(record),
            .copies = record.copies,
            .collate = record.collate != 0,
            .no_page_map = record.no_page_fmt != 0};
}

bool show_dialog(CPrintMan& manager) {
    // The dialog shows the font that the settings name.
    const OfferedFont offered(screen_font());
    return manager.show_print_dest() == 1;
}

} // namespace

bool ReportDestination::offer_printers(const HostPrinters& printers) {
    for (const QByteArray& error : printers.errors) {
        if (!reported_errors_.contains(error))
            parts_.messages.report(tr("The server's printers cannot be offered."),
                                   Outcome::failure(error));
    }
    reported_errors_ = printers.errors;
    // A manager takes its printers once.
    return view_->offer_printers(printers) || (parts_.reload() && view_->offer_printers(printers));
}

void ReportDestination::ask() {
    const HostPrinters printers = HostPrinters::read(host_settings());
    if (parts_.jobs.is_busy() || !offer_printers(printers))
        return;
    CPrintMan& manager = view_->manager();
    manager.set_print_dest(read_destination(host_settings(), station_printer(manager)));
    const QPointer<ReportDestination> self = this;
    const bool is_accepted = show_dialog(manager);
    // The window may have been destroyed while the dialog was open.
    if (!self)
        return;
    if (is_accepted) {
        const PrintDest record = *manager.get_print_dest();
        keep_destination(host_settings(), record);
        send_to(record, printers);
    }
    view_->take_keyboard();
    parts_.unstored.report_once();
}

void ReportDestination::send_to(const PrintDest& record, const HostPrinters& printers) {
    switch (record.dest) {
    case printman::to_screen:
        return show_in_font();
    case printman::to_printer:
        return record.server_print ? print_on_server(record, printers) : print_to(record);
    case printman::to_file:
        return save_to(path_of(record));
    }
}

void ReportDestination::show_in_font() {
    Outcome shown;
    const QFont font = view_->take_font(shown);
    if (shown.ok() && !settings_mean(font, screen_font()) && !keep_font(font))
        parts_.unstored.add();
    emit view_changed();
    parts_.messages.report(tr("The page cannot be shown."), shown);
}

void ReportDestination::print_on_server(const PrintDest& record, const HostPrinters& printers) {
    const PrintSetup setup = setup_of(record);
    const auto printer = find_server_printer(printers, setup.printer);
    if (!printer)
        return parts_.messages.report(tr("The report was not printed."),
                                      Outcome::failure(setup.printer.isEmpty()
                                                           ? "No printer was chosen"
                                                           : "There is no server printer '" +
                                                                 setup.printer + "' in " +
                                                                 host_settings().directory()));
    parts_.jobs.print_report([this, printer, setup](JobWatch& watch, bool&) {
        return print_on_queue(view_->path(), *printer, setup, watch);
    });
}

void ReportDestination::print_to(const PrintDest& record) {
    const PrintSetup setup = setup_of(record);
    const bool asks = setup.printer.isEmpty() || record.sel_prt_font;
    parts_.jobs.print_report([this, setup, asks](JobWatch& watch, bool& accepted) {
        return asks ? print_as_chosen(view_->path(), &parts_.window, watch, accepted,
                                      setup.no_page_map)
                    : print_report(view_->path(), setup, watch);
    });
}

void ReportDestination::save_to(const QByteArray& out) {
    const Outcome named = out.isEmpty()
                              ? Outcome::failure("No file was named to save the report as")
                              : check_output(view_->path(), out);
    if (!named.ok())
        return parts_.messages.report(tr("Nothing was written."), named);
    if (!may_replace(out))
        return parts_.messages.show(tr("Cancelled"));
    if (out.toLower().endsWith(".pdf"))
        parts_.jobs.export_pdf(out);
    else
        parts_.jobs.save_report(out);
}

bool ReportDestination::may_replace(const QByteArray& out) {
    const QFileInfo file(QFile::decodeName(out));
    if (!file.isFile())
        return true;
    QMessageBox box(QMessageBox::Question, QCoreApplication::applicationName(),
                    tr("%1 already exists.\nDo you want to replace it?").arg(file.filePath()),
                    QMessageBox::Yes | QMessageBox::No, &parts_.window);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

} // namespace host
