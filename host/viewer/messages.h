#pragma once

#include "host/files/outcome.h"

#include <QString>

class QMainWindow;

namespace host {

/// What a viewer's window says to the user: errors in a message box, anything else in its status
/// bar.
class Messages {
public:
    /// @param window outlives the messages
    explicit Messages(QMainWindow& window) : window_(window) {}

    /// Shows an error in a message box; does nothing for a success.
    ///
    /// @param effect what the error means for the user, a sentence: "The report was not saved."
    void report(const QString& effect, const Outcome& outcome);

    /// Shows a short text in the status bar for a few seconds.
    void show(const QString& text);

    /// Adds a sentence to what the status bar shows, and shows both for longer.
    void add(const QString& text);

    /// Clears the status bar.
    void clear();

private:
    QMainWindow& window_;
};

} // namespace host
