#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QPrintDialog;
class QPrinter;

namespace host {

/// Follows the library's print dialog while the object exists.
class PrintDialogWatcher : public QObject {
public:
    /// @param accepted called when the user accepts the dialog, before the library is told; false
    ///                 turns that into a cancelled dialog
    /// @param chosen   called then with the printer that has the user's choices
    PrintDialogWatcher(std::function<bool()> accepted, std::function<void(const QPrinter&)> chosen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(QPrintDialog& dialog);

    std::function<bool()> accepted_;
    std::function<void(const QPrinter&)> chosen_;
    QPointer<QPrintDialog> dialog_;
    bool is_accepted_ = false;
};

} // namespace host
