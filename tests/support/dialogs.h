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
/// dialog that nobody expects fails the test, and so does one that does not close after its answer;
/// both are cancelled, so that no test hangs. Answers that were not given fail the test, too.
class DialogAnswers {
public:
    using Answer = std::function<void(QDialog&)>;

    DialogAnswers(std::initializer_list<Answer> answers = {});
    ~DialogAnswers();
    DialogAnswers(const DialogAnswers&) = delete;
    DialogAnswers& operator=(const DialogAnswers&) = delete;

    /// What to do with the next dialog that opens.
    DialogAnswers& then(Answer answer);

    /// The same, with a dialog that must be of that class.
    template <typename Dialog>
    DialogAnswers& then_in(std::function<void(Dialog&)> answer) {
        return then([answer = std::move(answer)](QDialog& dialog) {
            auto* const shown = qobject_cast<Dialog*>(&dialog);
            shown ? answer(*shown) : refuse(dialog);
        });
    }

    /// From now on dialogs of that class are someone else's.
    template <typename Dialog>
    DialogAnswers& leave() {
        left_.push_back([](QDialog* dialog) { return qobject_cast<Dialog*>(dialog) != nullptr; });
        return *this;
    }

    /// Whether every answer so far has been given.
    bool all_given() const { return answers_.empty() && waiting_ == 0; }

    /// Clicks a dialog's OK or Cancel button.
    static void ok(QDialog& dialog);
    static void cancel(QDialog& dialog);

private:
    void look();
    static void refuse(QDialog& dialog);
    bool is_left(QDialog* dialog) const;

    QTimer timer_;
    QElapsedTimer since_answer_;
    std::deque<Answer> answers_;
    int waiting_ = 0; ///< answers that are about to be given
    std::vector<QPointer<QWidget>> answered_;
    std::vector<std::function<bool(QDialog*)>> left_;
};

} // namespace testsupport
