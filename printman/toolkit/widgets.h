#pragma once

#include <QApplication>
#include <QComboBox>

namespace printman {

/// Whether the program has an application that can show widgets.
inline bool can_show_widgets() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

/// Leaves an editable box without a choice: an empty list chooses the first entries that it gets.
///
/// @param text what stands in the box's field
inline void choose_none(QComboBox* box, const QString& text = {}) {
    box->setCurrentIndex(-1);
    box->setEditText(text);
}

} // namespace printman
