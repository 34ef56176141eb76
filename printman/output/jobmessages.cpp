#include <printman/output/jobmessages.h>
#include <printman/toolkit/modaldialog.h>
#include <printman/toolkit/psprinter.h>

#include <QMessageBox>

namespace printman {

Result printer_failure(const PsPrinter& printer) {
    Result job = printer.lastJob();
    return job.ok() ? Result::failure(QStringLiteral("nothing could be printed")) : job;
}

Result printer_not_found(const QString& printer_id) {
    return Result::failure(QStringLiteral("Can not find report printer '%1'").arg(printer_id));
}

Result no_one_to_ask() {
    return Result::failure(QStringLiteral("there is no display to ask the user on"));
}

void show_message(QWidget* parent, const QString& text) {
    ModalDialog<QMessageBox> box(QMessageBox::Information,
                                 QStringLiteral("Talvine Thinclient Message"), text,
                                 QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box.run();
}

} // namespace printman
