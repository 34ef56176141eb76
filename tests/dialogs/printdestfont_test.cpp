#include "tests/dialogs/destfixture.h"

#include <printman/toolkit/legacyweight.h>

#include <QLineEdit>

using testsupport::text;

namespace {

class PrintDestFont : public PrintDestFixture {
protected:
    PrintDestFont() {
        testhost::set("SCR_FACENAME", "Courier");
        testhost::set("SCR_POINTSIZE", "10");
    }

    /// What the Font field tells on opening.
    std::string shown() {
        PrintDestDlg dialog;
        open(dialog, record(1, true));
        return dialog.txtFont->text().toStdString();
    }
};

} // namespace

TEST_F(PrintDestFont, isThatOfTheSettings) {
    testhost::set("SCR_WEIGHT", "75");
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    EXPECT_EQ(dialog.txtFont->text(), text("Courier, Bold regular, size 10"));
    EXPECT_EQ(dialog.screen_font.family(), text("Courier"));
    EXPECT_EQ(dialog.screen_font.weight(), QFont::Bold);
    testhost::set("SCR_ITALIC", "Yes");
    EXPECT_EQ(shown(), "Courier, Bold italic, size 10");
    testhost::set("SCR_ITALIC", "1");
    EXPECT_EQ(shown(), "Courier, Bold regular, size 10");
}

TEST_F(PrintDestFont, itsWeightIsNamedByTheNumberThatWasRead) {
    const std::pair<const char*, const char*> words[] = {
        {"25", "Light"},   {"50", "Normal"},   {"63", "DemiBold"}, {"75", "Bold"},
        {"87", "Black"},   {"30", "Normal"},   {"40", "Normal"},   {"60", "Normal"},
        {"80", "Normal"},  {"99", "Normal"},   {"0", "Normal"},    {"", "Normal"},
        {"-25", "Normal"}, {"4711", "Normal"}, {"x", "Normal"}};
    for (const auto& [number, word] : words) {
        testhost::set("SCR_WEIGHT", number);
        EXPECT_EQ(shown(), "Courier, " + std::string(word) + " regular, size 10") << number;
    }
}

TEST_F(PrintDestFont, ofAnotherFontTheWeightIsItsOwn) {
    testhost::set("SCR_WEIGHT", "30");
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    dialog.screen_font = QFont(text("Courier"), 12);
    printman::set_legacy_weight(dialog.screen_font, 25);
    EXPECT_EQ(dialog.get_screenfont_string(), text("Courier, Light regular, size 12"));
    printman::set_legacy_weight(dialog.screen_font, 40);
    EXPECT_EQ(dialog.get_screenfont_string(), text("Courier, Normal regular, size 12"));
}

TEST_F(PrintDestFont, withoutAFaceNameTheFontStays) {
    for (const char* family : std::initializer_list<const char*>{"", nullptr}) {
        testhost::reset();
        testhost::set("SCR_POINTSIZE", "33");
        testhost::set("SCR_ITALIC", "yes");
        if (family)
            testhost::set("SCR_FACENAME", family);
        PrintDestDlg dialog;
        dialog.screen_font = QFont(text("Liberation Mono"), 12);
        dialog.load_screenfont();
        EXPECT_EQ(dialog.screen_font, QFont(text("Liberation Mono"), 12));
    }
}

TEST_F(PrintDestFont, whatNoSettingSaysStays) {
    testhost::set("SCR_POINTSIZE", "");
    PrintDestDlg dialog;
    dialog.screen_font = QFont(text("Liberation Mono"), 21, QFont::Bold, true);
    dialog.load_screenfont();
    EXPECT_EQ(dialog.get_screenfont_string(), text("Courier, Bold regular, size 21"));
}

TEST_F(PrintDestFont, isReadAgainWhenItIsShownAgain) {
    testhost::set("SCR_WEIGHT", "30");
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    dialog.hide();
    testhost::reset();
    testhost::set("SCR_FACENAME", "Liberation Mono");
    dialog.show();
    EXPECT_EQ(dialog.txtFont->text(), text("Liberation Mono, Normal regular, size 10"));
}

TEST_F(PrintDestFont, ofALongTextTheBeginningIsSeen) {
    testhost::set("SCR_FACENAME", "A family whose name takes more room than the field has to give");
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    EXPECT_EQ(dialog.txtFont->cursorPosition(), 0);
}
