#pragma once

#include <printman/printer/textfield.h>

#include <QComboBox>
#include <QLineEdit>
#include <QString>

// What the dialogs that show printers share.

namespace printman {

/// The Latin-1 text in a fixed field of a record.
template <size_t N>
QString latin1_text(const char (&field)[N]) {
    return QString::fromLatin1(field_text(field));
}

/// Sets a field's text and shows its beginning, where it is wider than the field.
inline void show_text(QLineEdit* field, const QString& text) {
    field->setText(text);
    field->setCursorPosition(0);
}

inline void show_number(QLineEdit* field, int number) {
    show_text(field, QString::number(number));
}

/// Shows the beginning of the text that was picked.
inline void show_beginning(QComboBox* box) {
    box->lineEdit()->setCursorPosition(0);
}

/// Makes the field at least as wide as @p sample and its frame, in the field's font.
inline void make_room(QLineEdit* field, const QString& sample) {
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(sample + QStringLiteral("mm")));
}

} // namespace printman
