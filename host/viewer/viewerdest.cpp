// Where the window's report goes: the library's dialog asks, and the report goes there.

#include "host/jobs/queuejob.h"
#include "host/jobs/report.h"
#include "host/printers/destination.h"
#include "host/settings/settings.h"
#include "host/viewer/reportview.h"
#include "host/viewer/screenfont.h"
#include "host/viewer/texts.h"
#include "host/viewer/viewerwindow.h"

#include <printman/printman.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QStatusBar>

namespace host {

namespace {

enum Destination { to_screen = 1, to_printer = 2, to_file = 3 };

constexpr int message_time = 10000; // milliseconds

/// Tells the manager which workstation this is, and asks it for that one's printer.
QByteArray station_printer(CPrintMan& manager) {
    const QByteArray key = station_key(host_settings());
    qstrncpy(manager.prt_key, key.constData(), sizeof manager.prt_key);
    char id[sizeof WinPrtSetup::printer_id] = {};
    return manager.get_prt_id(id, sizeof id) > 0 ? QByteArray(id) : QByteArray();
}

PrintSetup setup_of(const PrintDest& record) {
    PrintSetup setup;
    setup.printer = printer_of(record);
    setup.copies = record.copies;
    setup.collate = record.collate != 0;
    setup.no_page_map = record.no_page_fmt != 0;
    return setup;
}

bool show_dialog(CPrintMan& manager) {
    // The dialog shows the font that the settings name.
    const OfferedFont offered(ReportView::usual_font());
    return manager.show_print_dest() == 1;
}

} // namespace

bool ViewerWindow::offer_printers(const HostPrinters& printers) {
    for (const QByteArray& fault : printers.faults) {
        if (!told_faults_.contains(fault))
            tell(tr("The server's printers cannot be offered."), Outcome::failure(fault));
    }
    told_faults_ = printers.faults;
    // A manager takes its printers once.
    return view_->offer_printers(printers) ||
           (open_or_tell(view_->path(), view_->page()) && view_->offer_printers(printers));
}

void ViewerWindow::ask_destination() {
    const HostPrinters printers = HostPrinters::read(host_settings());
    if (busy_ || !offer_printers(printers))
        return;
    CPrintMan& manager = view_->manager();
    manager.set_print_dest(read_destination(host_settings(), station_printer(manager)));
    const QPointer<ViewerWindow> self = this;
    const bool is_accepted = show_dialog(manager);
    // The window may have gone meanwhile; the manager has not when it was accepted.
    if (!self)
        return;
    if (is_accepted) {
        const PrintDest record = *manager.get_print_dest();
        keep_destination(host_settings(), record);
        send_to(record, printers);
    }
    view_->take_keyboard();
    tell_unstored();
}

void ViewerWindow::send_to(const PrintDest& record, const HostPrinters& printers) {
    switch (record.dest) {
    case to_screen:
        return show_in_font();
    case to_printer:
        return print_to(record, printers);
    case to_file:
        return save_to(path_of(record));
    }
}

void ViewerWindow::show_in_font() {
    Outcome shown;
    const QFont font = view_->take_font(shown);
    if (shown.ok() && !settings_mean(font, ReportView::usual_font()) && !keep_font(font))
        unstored_font_ = true;
    note(tr("The page cannot be shown."), shown);
}

void ViewerWindow::print_to(const PrintDest& record, const HostPrinters& printers) {
    const PrintSetup setup = setup_of(record);
    if (record.server_print) {
        const auto printer = find_server_printer(printers, setup.printer);
        if (!printer)
            return tell(tr("The report was not printed."),
                        Outcome::failure(setup.printer.isEmpty()
                                             ? "No printer was chosen"
                                             : "There is no server printer '" + setup.printer +
                                                   "' in " + host_settings().directory()));
        print_by([this, printer, setup](JobWatch& watch, bool&) {
            return print_on_queue(view_->path(), *printer, setup, watch);
        });
    } else if (setup.printer.isEmpty() || record.sel_prt_font) {
        print_by([this, setup](JobWatch& watch, bool& chosen) {
            return print_as_chosen(view_->path(), this, watch, chosen, setup.no_page_map);
        });
    } else {
        print_by([this, setup](JobWatch& watch, bool&) {
            return host::print_report(view_->path(), setup, watch);
        });
    }
}

void ViewerWindow::save_to(const QByteArray& out) {
    const Outcome named = out.isEmpty()
                              ? Outcome::failure("No file was named to save the report as")
                              : check_output(view_->path(), out);
    if (!named.ok())
        return tell(tr("Nothing was written."), named);
    if (!may_replace(out))
        return statusBar()->showMessage(tr("Cancelled"), message_time);
    if (out.toLower().endsWith(".pdf"))
        export_pdf(out);
    else
        save_report(out);
}

bool ViewerWindow::may_replace(const QByteArray& out) {
    const QFileInfo file(QFile::decodeName(out));
    if (!file.isFile())
        return true;
    QMessageBox box(QMessageBox::Question, QCoreApplication::applicationName(),
                    tr("%1 already exists.\nDo you want to replace it?").arg(file.filePath()),
                    QMessageBox::Yes | QMessageBox::No, this);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void ViewerWindow::tell_unstored() {
    if (told_unstored_ || (!unstored_font_ && !host_settings().has_unstored()))
        return;
    told_unstored_ = true;
    const QString before = statusBar()->currentMessage();
    const QString text = tr("What was chosen cannot be stored in %1")
                             .arg(short_name(host_settings().path_of("dlwmenu.ini")));
    statusBar()->showMessage(before.isEmpty() ? text : before + QStringLiteral(". ") + text,
                             message_time);
}

} // namespace host
