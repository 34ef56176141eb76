#pragma once

#include <printman/result.h>

#include <QString>

class PsPrinter;
class QWidget;

namespace printman {

// What print jobs tell the user.

/// Why @p printer has not printed.
Result printer_failure(const PsPrinter& printer);

/// That the setup file has no printer of that id.
Result printer_not_found(const QString& printer_id);

/// That the program cannot show the dialogs in which the user is to choose.
Result no_one_to_ask();

/// Shows a message and waits until it is closed, or goes with @p parent.
void show_message(QWidget* parent, const QString& text);

} // namespace printman
