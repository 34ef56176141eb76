#include <printman/dialogs/openerror.h>
#include <printman/toolkit/modaldialog.h>
#include <printman/toolkit/widgets.h>

#include <QFile>
#include <QMessageBox>

namespace printman {

void show_open_error(QWidget* parent, const char* path) {
    if (!can_show_widgets())
        return;
    const auto text = [](const char* words) {
        return QCoreApplication::translate("CPrintMan", words);
    };
    ModalDialog<QMessageBox> box(QMessageBox::Warning, text("File Open Error"),
                                 text("Can not open file: %1").arg(QFile::decodeName(path)),
                                 QMessageBox::NoButton, parent);
    box->setTextFormat(Qt::PlainText);
    box->addButton(text("Ok"), QMessageBox::AcceptRole);
    box.run();
}

} // namespace printman
