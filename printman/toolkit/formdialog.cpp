#include <printman/toolkit/formdialog.h>

#include <QEvent>

namespace printman {

FormDialog::FormDialog(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags)
    : QDialog(parent, flags) {
    setObjectName(QString::fromUtf8(name));
    setModal(modal);
}

FormDialog::~FormDialog() = default;

void FormDialog::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        languageChange();
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fit_to_font();
}

void FormDialog::fit_to_font() {}

void FormDialog::fix_size() {
    // Smaller than any layout: its minimum size then is the only possible one.
    constexpr int smallest = 10;
    setMaximumSize(smallest, smallest);
}

} // namespace printman
