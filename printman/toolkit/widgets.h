#pragma once

#include <QApplication>
#include <QComboBox>

namespace printman {

/// Whether the program has an application that can show widgets.
inline bool can_show_widgets() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

/// Clears the choice of an editable combo box, which chooses the first entry that is added to it.
///
/// @param text the text of the box's field afterwards
inline void choose_none(QComboBox* box, const QString& text = {}) {
    box->setCurrentIndex(-1);
    box->setEditText(text);
}

} // namespace printman
