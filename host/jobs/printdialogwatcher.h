#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QPrintDialog;
class QPrinter;

namespace host {

/// Hears, while it lives, what the user accepts in a print dialog of the library's, before the
/// library does.
class PrintChoice : public QObject {
public:
    /// @param accepted called when the user accepts; false makes it a cancelled dialog
    /// @param chosen   called then with what the user has chosen
    PrintChoice(std::function<bool()> accepted, std::function<void(const QPrinter&)> chosen);

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
