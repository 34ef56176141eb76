#include "host/viewer/progressdialog.h"

#include "host/viewer/texts.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace host {

ProgressDialog::ProgressDialog(QWidget* parent, const QString& activity)
    : QDialog(parent), activity_(activity), text_(new QLabel(activity)), bar_(new QProgressBar) {
    setWindowTitle(QCoreApplication::applicationName());
    setWindowModality(Qt::WindowModal);
    text_->setTextFormat(Qt::PlainText);
    bar_->setMinimumWidth(fontMetrics().horizontalAdvance(u'0') * 44);
    bar_->setTextVisible(false);
    bar_->setRange(0, 0);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    cancel_ = buttons->button(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::rejected, this, &ProgressDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(text_);
    layout->addWidget(bar_);
    layout->addWidget(buttons);
}

void ProgressDialog::show_pages(int done, int total) {
    text_->setText(activity_);
    bar_->setRange(0, total);
    bar_->setValue(done);
    bar_->setFormat(page_text(done, total));
    bar_->setTextVisible(true);
}

void ProgressDialog::show_busy() {
    show_busy(activity_);
}

void ProgressDialog::show_waiting() {
    show_busy(tr("%1: waiting for another print job").arg(activity_));
}

void ProgressDialog::show_busy(const QString& text) {
    text_->setText(text);
    bar_->setRange(0, 0);
    bar_->setTextVisible(false);
}

void ProgressDialog::reject() {
    canceled_ = true;
    cancel_->setEnabled(false);
}

} // namespace host
