#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>
#include <initializer_list>
#include <vector>

namespace testsupport {

/// Does what a user does with the modal dialogs that open while it lives, in their order: each
/// answer is handed its dialog once it is shown, and may itself wait until another one is closed. A
/// dialog that nobody expects fails the test, and so does one that does not close within some
/// seconds after its answer; both are canceled, so that no test hangs. Answers that were not given
/// fail the test, too.
class DialogAnswers {
public:
    using Answer = std::function<void(QDialog&)>;

    DialogAnswers(std::initializer_list<Answer> answers = {});
    ~DialogAnswers();
    DialogAnswers(const DialogAnswers&) = delete;
    DialogAnswers& operator=(const DialogAnswers&) = delete;

    /// What to do with the next dialog that opens.
    DialogAnswers& then(Answer answer);

    /// Clicks a dialog's OK or Cancel button.
    static void ok(QDialog& dialog);
    static void cancel(QDialog& dialog);

private:
    void look();

    QTimer timer_;
    QElapsedTimer since_answer_;
    std::deque<Answer> answers_;
    int waiting_ = 0; ///< answers that are about to be given
    std::vector<QPointer<QWidget>> answered_;
};

} // namespace testsupport
