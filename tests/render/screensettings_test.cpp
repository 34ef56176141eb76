#include "tests/support/testhost.h"

#include <printman/render/screensettings.h>
#include <printman/toolkit/legacyweight.h>

#include <QFont>
#include <gtest/gtest.h>

using namespace printman;

namespace {

class ScreenSettings : public testing::Test {
protected:
    ScreenSettings() { testhost::reset(); }
    ~ScreenSettings() override { testhost::reset(); }
};

} // namespace

TEST_F(ScreenSettings, withoutAFaceNameThereIsNoFont) {
    testhost::set("SCR_POINTSIZE", "12");
    EXPECT_FALSE(read_screen_font());
    testhost::set("SCR_FACENAME", "");
    EXPECT_FALSE(read_screen_font());
    EXPECT_EQ(testhost::calls().last(),
              QStringLiteral("GetEnv(SCR_FACENAME, dlwmenu.ini, screenfont)"));
}

TEST_F(ScreenSettings, theFontHasTheFaceSizeWeightAndSlantOfTheSettings) {
    testhost::set("SCR_FACENAME", "Liberation Mono");
    testhost::set("SCR_POINTSIZE", "13");
    testhost::set("SCR_WEIGHT", "75");
    testhost::set("SCR_ITALIC", "yes");
    const auto font = read_screen_font();
    ASSERT_TRUE(font);
    EXPECT_EQ(font->family(), QStringLiteral("Liberation Mono"));
    EXPECT_EQ(font->pointSize(), 13);
    EXPECT_EQ(legacy_weight(*font), 75);
    EXPECT_EQ(font->weight(), QFont::Bold);
    EXPECT_TRUE(font->italic());
    EXPECT_EQ(testhost::calls(),
              (QStringList{QStringLiteral("GetEnv(SCR_FACENAME, dlwmenu.ini, screenfont)"),
                           QStringLiteral("GetEnv(SCR_POINTSIZE, dlwmenu.ini, screenfont)"),
                           QStringLiteral("GetEnv(SCR_WEIGHT, dlwmenu.ini, screenfont)"),
                           QStringLiteral("GetEnv(SCR_ITALIC, dlwmenu.ini, screenfont)")}));
}

TEST_F(ScreenSettings, whatIsMissingIsThatOfADefaultFont) {
    testhost::set("SCR_FACENAME", "Liberation Mono");
    const auto font = read_screen_font();
    ASSERT_TRUE(font);
    EXPECT_EQ(font->pointSize(), QFont().pointSize());
    EXPECT_EQ(font->weight(), QFont().weight());
    EXPECT_FALSE(font->italic());
}

TEST_F(ScreenSettings, italicNeedsALeadingY) {
    testhost::set("SCR_FACENAME", "Liberation Mono");
    for (const char* text : {"yes", "Yes", "y", "Y", "YES"}) {
        testhost::set("SCR_ITALIC", text);
        EXPECT_TRUE(read_screen_font()->italic()) << text;
    }
    for (const char* text : {"1", "true", "no", " yes", ""}) {
        testhost::set("SCR_ITALIC", text);
        EXPECT_FALSE(read_screen_font()->italic()) << text;
    }
}

TEST_F(ScreenSettings, numbersThatAreNoneOrAbsurdDoNoHarm) {
    testhost::set("SCR_FACENAME", "Liberation Mono");
    for (const char* text : {"x", "0", "-3", ""}) {
        testhost::set("SCR_POINTSIZE", text);
        EXPECT_EQ(read_screen_font()->pointSize(), QFont().pointSize()) << text;
    }
    testhost::set("SCR_POINTSIZE", "99999999999999999999");
    EXPECT_EQ(read_screen_font()->pointSize(), 1000);
    testhost::set("SCR_POINTSIZE", "12pt");
    EXPECT_EQ(read_screen_font()->pointSize(), 12);
    for (const char* text : {"-9999999999999", "4711", "abc"}) {
        testhost::set("SCR_WEIGHT", text);
        const int weight = legacy_weight(*read_screen_font());
        EXPECT_GE(weight, 0) << text;
        EXPECT_LE(weight, 99) << text;
    }
}

TEST_F(ScreenSettings, colorsAreThoseOfTheSettings) {
    testhost::set("KRV_COLOR_SBG", "1,2,3");
    testhost::set("KRV_COLOR_DBG", "40,50,60");
    const ScreenColors colors = read_screen_colors();
    EXPECT_EQ(colors.page, QColor(1, 2, 3));
    EXPECT_EQ(colors.text, QColor(40, 50, 60));
    EXPECT_EQ(testhost::calls(), (QStringList{QStringLiteral("GetRGB(KRV_COLOR_SBG)"),
                                              QStringLiteral("GetRGB(KRV_COLOR_DBG)")}));
}

TEST_F(ScreenSettings, colorsOutOfRangeAreCut) {
    testhost::set("KRV_COLOR_SBG", "-1,256,99999");
    EXPECT_EQ(read_screen_colors().page, QColor(0, 255, 255));
}

TEST_F(ScreenSettings, changeInAFontWhatTheySay) {
    testhost::set("SCR_FACENAME", "Liberation Mono");
    QFont font(QStringLiteral("Liberation Serif"), 17);
    font.setBold(true);
    font.setItalic(true);
    font.setStyleName(QStringLiteral("Bold Italic"));
    read_screen_font_settings()->apply(font);
    EXPECT_EQ(font.styleName(), QString());
    EXPECT_EQ(font.family(), QStringLiteral("Liberation Mono"));
    EXPECT_EQ(font.pointSize(), 17);
    EXPECT_TRUE(font.bold());
    EXPECT_FALSE(font.italic());
}

TEST_F(ScreenSettings, keepTheWeightThatWasReadAsItIs) {
    testhost::set("SCR_FACENAME", "Liberation Mono");
    EXPECT_FALSE(read_screen_font_settings()->weight);
    testhost::set("SCR_WEIGHT", "30");
    EXPECT_EQ(read_screen_font_settings()->weight, 30);
    EXPECT_EQ(read_screen_font()->weight(), QFont::Light);
}
