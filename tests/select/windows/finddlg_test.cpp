#include "tests/support/desktop.h"
#include "tests/support/dialogs.h"

#include <printman/select/finddlg.h>

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

using testsupport::DialogAnswers;
namespace input = testsupport::input;

TEST(FindDialogOnScreen, isLedFromTheKeyboard) {
    findDlg dialog;
    dialog.set_search_history({QStringLiteral("Total amount")});
    dialog.set_search_text(QStringLiteral("old"));
    const DialogAnswers answers{[&dialog](QDialog& shown) {
        ASSERT_TRUE(input::activate(shown));
        input::type(QStringLiteral("Tot"));
        EXPECT_EQ(dialog.cbFind->currentText(), QStringLiteral("Tot"));
        input::key(QStringLiteral("Tab"));
        input::key(QStringLiteral("space"));
        EXPECT_TRUE(dialog.opUp->isChecked());
        input::key(QStringLiteral("Down"));
        EXPECT_TRUE(dialog.opDown->isChecked());
        input::key(QStringLiteral("Tab"));
        input::key(QStringLiteral("space"));
        EXPECT_TRUE(dialog.chkCase->isChecked());
        input::key(QStringLiteral("alt+f"));
        input::type(QStringLiteral("al"));
        input::key(QStringLiteral("Return"));
    }};
    EXPECT_EQ(dialog.exec(), 0);
    EXPECT_EQ(dialog.search_text, QStringLiteral("al"));
    EXPECT_EQ(dialog.get_direction(), 4);
}

TEST(FindDialogOnScreen, isLedWithTheMouse) {
    findDlg dialog;
    const DialogAnswers answers{[&dialog](QDialog& shown) {
        ASSERT_TRUE(input::activate(shown));
        input::type(QStringLiteral("x"));
        input::click(*dialog.opUp);
        input::click(*dialog.chkWhole);
        input::click(*dialog.btnMarkAll);
    }};
    EXPECT_EQ(dialog.exec(), 1);
    EXPECT_EQ(dialog.get_direction(), 3);
    EXPECT_TRUE(dialog.is_whole_word());
    EXPECT_FALSE(dialog.is_case_sensitive());
}

TEST(FindDialogOnScreen, escapeCancels) {
    findDlg dialog;
    dialog.set_search_text(QStringLiteral("x"));
    const DialogAnswers answers{[](QDialog& shown) {
        ASSERT_TRUE(input::activate(shown));
        input::key(QStringLiteral("Escape"));
    }};
    EXPECT_EQ(dialog.exec(), 2);
}
