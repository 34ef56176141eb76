#include "tests/support/dialogs.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>

namespace testsupport {

namespace {

constexpr int poll_milliseconds = 10;
constexpr int patience_milliseconds = 10000;

void click(QDialog& dialog, QDialogButtonBox::StandardButton which) {
    auto* box = dialog.findChild<QDialogButtonBox*>();
    QPushButton* button = box ? box->button(which) : nullptr;
    ASSERT_NE(button, nullptr) << dialog.metaObject()->className() << " has no such button";
    button->click();
}

} // namespace

DialogAnswers::DialogAnswers(std::initializer_list<Answer> answers) : answers_(answers) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(poll_milliseconds);
}

DialogAnswers::~DialogAnswers() {
    EXPECT_EQ(answers_.size() + waiting_, 0U)
        << "expected dialogs that did not open, or closed at once";
}

DialogAnswers& DialogAnswers::then(Answer answer) {
    answers_.push_back(std::move(answer));
    return *this;
}

void DialogAnswers::ok(QDialog& dialog) {
    click(dialog, QDialogButtonBox::Ok);
}

void DialogAnswers::cancel(QDialog& dialog) {
    click(dialog, QDialogButtonBox::Cancel);
}

void DialogAnswers::look() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible())
        return;
    if (std::ranges::find(answered_, dialog) != answered_.end()) {
        if (since_answer_.elapsed() > patience_milliseconds) {
            ADD_FAILURE() << dialog->metaObject()->className() << " does not close";
            dialog->reject();
        }
        return;
    }
    answered_.emplace_back(dialog);
    since_answer_.start();
    if (answers_.empty()) {
        ADD_FAILURE() << "unexpected: " << dialog->metaObject()->className() << " \""
                      << dialog->windowTitle().toStdString() << '"';
        dialog->reject();
        return;
    }
    // Not within this timer's event: the answer may open another dialog, which is to be seen too.
    ++waiting_;
    QTimer::singleShot(0, dialog, [this, dialog, answer = std::move(answers_.front())] {
        --waiting_;
        answer(*dialog);
    });
    answers_.pop_front();
}

} // namespace testsupport
