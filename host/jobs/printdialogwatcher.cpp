#include "host/jobs/printdialogwatcher.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPrintDialog>
#include <QPrinter>

namespace host {

PrintDialogWatcher::PrintDialogWatcher(std::function<bool()> accepted,
                                       std::function<void(const QPrinter&)> chosen)
    : accepted_(std::move(accepted)), chosen_(std::move(chosen)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool PrintDialogWatcher::eventFilter(QObject* watched, QEvent* event) {
    auto* dialog = event->type() == QEvent::Show ? qobject_cast<QPrintDialog*>(watched) : nullptr;
    if (dialog && dialog != dialog_)
        watch(*dialog);
    return false;
}

void PrintDialogWatcher::watch(QPrintDialog& dialog) {
    dialog_ = &dialog;
    connect(&dialog, &QDialog::accepted, this, [this] {
        is_accepted_ = accepted_();
        if (!is_accepted_)
            dialog_->setResult(QDialog::Rejected);
    });
    // The printer has the choices only after the dialog has returned. It outlives the dialog, which
    // is destroyed before the library looks at them.
    connect(&dialog, &QObject::destroyed, this, [this, printer = dialog.printer()] {
        if (is_accepted_)
            chosen_(*printer);
    });
}

} // namespace host
