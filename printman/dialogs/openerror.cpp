#include <printman/dialogs/openerror.h>

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QPointer>

namespace printman {

void show_open_error(QWidget* parent, const char* path) {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return;
    // It goes with its parent.
    const QPointer<QMessageBox> box = new QMessageBox(
        QMessageBox::Warning, QCoreApplication::translate("CPrintMan", "File Open Error"),
        QCoreApplication::translate("CPrintMan", "Can not open file: %1")
            .arg(QFile::decodeName(path)),
        QMessageBox::NoButton, parent);
    box->setTextFormat(Qt::PlainText);
    box->addButton(QCoreApplication::translate("CPrintMan", "Ok"), QMessageBox::AcceptRole);
    box->exec();
    delete box;
}

} // namespace printman
