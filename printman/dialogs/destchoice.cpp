#include <printman/dialogs/destchoice.h>
#include <printman/dialogs/desttexts.h>
#include <printman/dialogs/printdestdlg.h>
#include <printman/dialogs/selprinterdlg.h>
#include <printman/dialogs/selunixprinterdlg.h>
#include <printman/toolkit/modaldialog.h>

#include <QFile>
#include <QFileDialog>

namespace printman {

namespace {

template <typename Chooser>
std::optional<QString> chosen_printer(ModalDialog<Chooser>& chooser) {
    return chooser.run() ? std::optional(chooser->printer_id) : std::nullopt;
}

} // namespace

QValidator::State DestPathValidator::validate(QString& text, int& /*cursor*/) const {
    return QFile::encodeName(text).size() <= max_dest_path ? Acceptable : Invalid;
}

std::optional<QString> choose_printer(QWidget* parent, CPrintMan* printman, bool on_server) {
    ModalDialog<SelPrinterDlg> chooser(parent, nullptr, true);
    chooser->printman = printman;
    chooser->server_printers = on_server;
    return chosen_printer(chooser);
}

std::optional<QString> choose_unix_printer(QWidget* parent, CPrintMan* printman) {
    ModalDialog<SelUnixPrinterDlg> chooser(parent, nullptr, true);
    chooser->printman = printman;
    return chosen_printer(chooser);
}

std::optional<QString> choose_dest_file(QWidget* parent) {
    ModalDialog<QFileDialog> chooser(parent, PrintDestDlg::tr("File Save"));
    chooser->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite);
    chooser->setAcceptMode(QFileDialog::AcceptSave);
    chooser->setFileMode(QFileDialog::AnyFile);
    const QString text_filter = PrintDestDlg::tr("Text (*.txt)");
    chooser->setNameFilters({text_filter, PrintDestDlg::tr("PDF (*.pdf)")});
    chooser->selectNameFilter(text_filter);
    if (!chooser.run())
        return {};
    return save_path(chooser->selectedFiles().value(0), chooser->selectedNameFilter());
}

} // namespace printman
