#include "tests/support/dialogs.h"

#include "tests/support/waiting.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <gtest/gtest.h>

#include <algorithm>

namespace testsupport {

namespace {

constexpr int poll_milliseconds = 10;

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
    EXPECT_TRUE(all_given()) << "expected dialogs that did not open, or closed at once";
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

void DialogAnswers::refuse(QDialog& dialog) {
    ADD_FAILURE() << "unexpected: " << dialog.metaObject()->className() << " \""
                  << dialog.windowTitle().toStdString() << '"';
    dialog.reject();
}

bool DialogAnswers::is_left(QDialog* dialog) const {
    return std::ranges::any_of(left_, [dialog](const auto& is_one) { return is_one(dialog); });
}

void DialogAnswers::look() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible() || is_left(dialog))
        return;
    if (std::ranges::find(answered_, dialog) != answered_.end()) {
        if (since_answer_.hasExpired(hung_after.count())) {
            ADD_FAILURE() << dialog->metaObject()->className() << " does not close";
            dialog->reject();
        }
        return;
    }
    answered_.emplace_back(dialog);
    since_answer_.start();
    if (answers_.empty()) {
        refuse(*dialog);
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
