#pragma once

#include <printman/printer/textfield.h>

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QString>

// What the dialogs that show a printer have in common.

namespace printman {

/// The text in a fixed field of a printer's record.
template <size_t N>
QString text_of(const char (&field)[N]) {
    return QString::fromLatin1(field_text(field));
}

/// Shows a text from its beginning, where it is wider than the field.
inline void show_text(QLineEdit* field, const QString& text) {
    field->setText(text);
    field->setCursorPosition(0);
}

inline void show_number(QLineEdit* field, int number) {
    show_text(field, QString::number(number));
}

/// Shows what was picked from its beginning.
inline void show_beginning(QComboBox* box) {
    box->lineEdit()->setCursorPosition(0);
}

/// Has the layout give the field room for @p sample and the field's frame, in the field's font.
inline void make_room(QLineEdit* field, const QString& sample) {
    field->setMinimumWidth(field->fontMetrics().horizontalAdvance(sample + QStringLiteral("mm")));
}

/// Whether the widget's texts are as wide as before no more.
inline bool is_of_font(const QEvent& event) {
    return event.type() == QEvent::FontChange || event.type() == QEvent::StyleChange;
}

} // namespace printman
