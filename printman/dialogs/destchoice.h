#pragma once

#include <printman/printdest.h>

#include <QString>
#include <QValidator>

#include <optional>

class CPrintMan;
class QWidget;

// The dialogs that the print destination dialog opens, and what it accepts from them.

namespace printman {

/// The longest path that fits the record of a destination, in bytes.
inline constexpr int max_dest_path = sizeof PrintDest::path - 1;

/// Refuses a path of more than max_dest_path bytes, of which a character may take several.
class DestPathValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& text, int& cursor) const override;
};

/// Lets the user choose a printer from the host's list or from the setup file.
///
/// @param printman  has the host's list; may be null
/// @param on_server offers the host's list instead of the setup file
/// @return the printer's id; none when the dialog is canceled or destroyed with @p parent
std::optional<QString> choose_printer(QWidget* parent, CPrintMan* printman, bool on_server);

/// The same for a local printer of the system.
std::optional<QString> choose_unix_printer(QWidget* parent, CPrintMan* printman);

/// Lets the user choose the file to save in, with the extension of the filter chosen.
///
/// @return its path; none when the dialog is canceled or destroyed with @p parent
std::optional<QString> choose_dest_file(QWidget* parent);

} // namespace printman
