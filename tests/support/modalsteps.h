#pragma once

#include <QApplication>
#include <QDialog>
#include <QList>
#include <QPointer>
#include <QTimer>
#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace testsupport {

/// What a user does with the modal dialogs that come up, one after the other: each step is handed
/// its dialog once it is shown. A dialog that comes without a step is a failure and is closed.
class ModalSteps {
public:
    using Step = std::function<void(QDialog&)>;

    ModalSteps(std::initializer_list<Step> steps) : steps_(steps) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
        timer_.setSingleShot(true);
        timer_.start(interval_milliseconds);
    }
    ~ModalSteps() { EXPECT_TRUE(steps_.empty()) << steps_.size() << " dialogs did not come up"; }
    ModalSteps(const ModalSteps&) = delete;
    ModalSteps& operator=(const ModalSteps&) = delete;

private:
    static constexpr int interval_milliseconds = 5;

    void look() {
        // Anew, so that it also comes while a step waits for a dialog of its own.
        timer_.start(interval_milliseconds);
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || handled_.contains(dialog) || !dialog->isVisible())
            return;
        handled_ << dialog;
        if (steps_.empty()) {
            ADD_FAILURE() << "unexpected: " << dialog->windowTitle().toStdString();
            dialog->done(QDialog::Rejected);
            return;
        }
        const Step step = steps_.front();
        steps_.pop_front();
        step(*dialog);
    }

    std::deque<Step> steps_;
    QList<QPointer<QDialog>> handled_;
    QTimer timer_;
};

} // namespace testsupport
