#include "host/cli/command.h"
#include "host/cli/pdfoptions.h"
#include "host/settings/numbers.h"

#include <QLocale>
#include <gtest/gtest.h>

namespace {

host::Outcome read(const QHash<QByteArray, QByteArray>& options, host::PageSetup& setup) {
    return host::read_page_options(host::Arguments({}, options), setup);
}

} // namespace

TEST(PageSetup, NumbersAreWholeTexts) {
    EXPECT_EQ(host::parse_whole("12", 1, 20), 12);
    EXPECT_EQ(host::parse_whole("21", 1, 20), std::nullopt);
    EXPECT_EQ(host::parse_whole("0", 1, 20), std::nullopt);
    EXPECT_EQ(host::parse_whole("", 1, 20), std::nullopt);
    EXPECT_EQ(host::parse_whole("5x", 1, 20), std::nullopt);
    EXPECT_EQ(host::parse_whole("99999999999", 1, 20), std::nullopt);
    EXPECT_EQ(host::parse_fraction("7.5", 1, 20), 7.5);
    EXPECT_EQ(host::parse_fraction("nan", 1, 20), std::nullopt);
    EXPECT_EQ(host::parse_fraction("inf", 1, 20), std::nullopt);
    EXPECT_EQ(host::parse_fraction("1e999", 1, 20), std::nullopt);
    EXPECT_EQ(host::parse_fraction("-1", 0, 20), std::nullopt);
}

TEST(PageSetup, PapersAreFoundByName) {
    EXPECT_EQ(host::paper_number("A4"), 0);
    EXPECT_EQ(host::paper_number("b5"), 1);
    EXPECT_EQ(host::paper_number("LETTER"), 2);
    EXPECT_EQ(host::paper_number("comm10e"), 25);
    EXPECT_EQ(host::paper_number("Tabloid"), 29);
    EXPECT_EQ(host::paper_number("A44"), std::nullopt);
    EXPECT_EQ(host::paper_number(""), std::nullopt);
}

TEST(PageSetup, UsualPaperIsTheCountrys) {
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("en_US.UTF-8"))), 2);
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("fr_CA"))), 2);
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("es_MX"))), 2);
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("en_GB"))), 0);
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("de_DE"))), 0);
    EXPECT_EQ(host::usual_paper(QLocale::c()), 0);
}

TEST(PageSetup, Margins) {
    EXPECT_EQ(host::parse_margins(".5,1,0,2"),
              (host::PageMargins{.top = 0.5, .left = 0, .bottom = 1, .right = 2}));
    for (const char* wrong :
         {"", "1", "1,1,1", "1,1,1,1,1", "1,1,1,x", "1,1,,1", "-1,1,1,1", "nan,1,1,1", "101,1,1,1"})
        EXPECT_EQ(host::parse_margins(wrong), std::nullopt) << wrong;
    const host::PageMargins inch{.top = 1, .left = 1, .bottom = 1, .right = 1};
    EXPECT_TRUE(host::leave_room(inch, {2.5, 2.5}));
    EXPECT_FALSE(host::leave_room(inch, {2.4, 9}));
    EXPECT_FALSE(host::leave_room(inch, {9, 2.4}));
}

TEST(PageSetup, OrientationFollowsTheGrid) {
    EXPECT_EQ(host::orientation_of({10, 9}), QPageLayout::Landscape);
    EXPECT_EQ(host::orientation_of({9, 9}), QPageLayout::Portrait);
    EXPECT_EQ(host::orientation_of({8, 9}), QPageLayout::Portrait);
}

TEST(PageSetup, DefaultsAndOptions) {
    host::PageSetup setup;
    ASSERT_TRUE(read({}, setup).ok());
    EXPECT_EQ(setup.font.family(), QStringLiteral("Courier New"));
    EXPECT_EQ(setup.font.pointSizeF(), 12);
    EXPECT_FALSE(setup.exact_size);
    EXPECT_EQ(setup.orientation, std::nullopt);
    EXPECT_EQ(setup.margins, std::nullopt);
    ASSERT_TRUE(
        read({{"size", "7.5"}, {"portrait", ""}, {"paper", "a3"}, {"title", "\xc3\xa4"}}, setup)
            .ok());
    EXPECT_EQ(setup.font.pointSizeF(), 7.5);
    EXPECT_TRUE(setup.exact_size);
    EXPECT_EQ(setup.orientation, QPageLayout::Portrait);
    EXPECT_EQ(setup.paper, 8);
    EXPECT_EQ(setup.title, QString(QChar(0xe4)));
}

TEST(PageSetup, WhatMakesNoSenseIsWrongUsage) {
    for (const QHash<QByteArray, QByteArray>& options :
         {QHash<QByteArray, QByteArray>{{"size", "0"}},
          {{"size", "1001"}},
          {{"size", "-3"}},
          {{"size", "ten"}},
          {{"paper", "A11"}},
          {{"paper", ""}},
          {{"margins", "1,1"}},
          {{"font", " "}},
          {{"landscape", ""}, {"portrait", ""}}}) {
        host::PageSetup setup;
        EXPECT_EQ(read(options, setup).status, host::Outcome::usage);
    }
}
