#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// What a test asks of a dialog and does to it.

inline std::vector<std::string> entries(const QComboBox* box) {
    std::vector<std::string> texts;
    texts.reserve(static_cast<size_t>(box->count()));
    for (int i = 0; i < box->count(); ++i)
        texts.push_back(box->itemText(i).toStdString());
    return texts;
}

/// Opens the list of a shown box with the keyboard and takes an entry.
inline void pick(QComboBox* box, int index) {
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    QAbstractItemView* const list = box->view();
    ASSERT_TRUE(list->isVisible());
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < index; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    ASSERT_FALSE(list->isVisible());
}

/// The names of the widgets that Tab visits from @p first on, until it is there again.
inline std::string tab_walk(QDialog& dialog, QWidget* first) {
    std::string names;
    first->setFocus();
    QWidget* widget = first;
    do {
        names += widget->objectName().toStdString() + ' ';
        QTest::keyClick(widget, Qt::Key_Tab);
        widget = dialog.focusWidget();
    } while (widget && widget != first && names.size() < 1000);
    names.pop_back();
    return names;
}

/// The texts of a dialog's fields, in the order of their names.
inline std::vector<std::string> texts_of(const QDialog& dialog,
                                         std::initializer_list<const char*> names) {
    std::vector<std::string> texts;
    texts.reserve(names.size());
    for (const char* name : names) {
        const auto* const field = dialog.findChild<QLineEdit*>(QString::fromLatin1(name));
        texts.push_back(field ? field->text().toStdString() : "no such field");
    }
    return texts;
}
