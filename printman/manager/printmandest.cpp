#include <printman/dialogs/printdestdlg.h>
#include <printman/dialogs/printerfields.h>
#include <printman/manager/printmanprivate.h>
#include <printman/toolkit/widgets.h>

#include <QPointer>

#include <cstring>

// The facade's functions for where a report goes.

using namespace printman;

namespace {

/// Closes @p dialog, and those that it has opened, when its manager goes.
void close_without_manager(PrintDestDlg& dialog) {
    dialog.printman = nullptr;
    for (QDialog* opened : dialog.findChildren<QDialog*>())
        opened->reject();
    dialog.reject();
}

} // namespace

void CPrintMan::set_print_dest(const PrintDest& dest) {
    std::memcpy(&d->dest, &dest, sizeof d->dest);
}

PrintDest* CPrintMan::get_print_dest() {
    return &d->dest;
}

int CPrintMan::show_print_dest(const PrintDest&) {
    return 0;
}

int CPrintMan::show_print_dest() {
    if (!can_show_widgets())
        return 0;
    PrintDestDlg dialog(nullptr, nullptr, true);
    dialog.printman = this;
    dialog.set_print_dest(d->dest);
    char id[128] = {};
    if (get_prt_id(id, sizeof id) != 0)
        dialog.local_printer_id = latin1_text(id);
    const QPointer<CPrintMan> self = this;
    connect(this, &QObject::destroyed, &dialog, [&dialog] { close_without_manager(dialog); });
    if (dialog.exec() != QDialog::Accepted || !self)
        return 0;
    set_print_dest(dialog.dest);
    if (dialog.dest.dest == to_screen)
        d->screen.set_font(dialog.screen_font);
    return 1;
}
