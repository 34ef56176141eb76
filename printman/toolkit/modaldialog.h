#pragma once

#include <QDialog>
#include <QPointer>

#include <utility>

namespace printman {

/// A dialog that is shown modally and deleted afterwards. While it is open, its parent may be
/// destroyed together with the dialog; then no dialog is held any more.
template <typename Dialog>
class ModalDialog {
public:
    template <typename... Arguments>
    explicit ModalDialog(Arguments&&... arguments)
        : dialog_(new Dialog(std::forward<Arguments>(arguments)...)) {}
    ~ModalDialog() { delete dialog_; }
    ModalDialog(const ModalDialog&) = delete;
    ModalDialog& operator=(const ModalDialog&) = delete;

    /// Shows the dialog until it is closed.
    ///
    /// @return whether it was accepted and is still there
    bool run() { return dialog_->exec() == QDialog::Accepted && dialog_; }

    /// Whether the dialog is still there.
    explicit operator bool() const { return dialog_; }

    Dialog* operator->() const { return dialog_; }
    Dialog& operator*() const { return *dialog_; }

private:
    QPointer<Dialog> dialog_;
};

} // namespace printman
