#include "host/printers/paper.h"

#include <QLocale>
#include <gtest/gtest.h>

TEST(Paper, isFoundByName) {
    EXPECT_EQ(host::paper_number("A4"), 0);
    EXPECT_EQ(host::paper_number("b5"), 1);
    EXPECT_EQ(host::paper_number("LETTER"), 2);
    EXPECT_EQ(host::paper_number("comm10e"), 25);
    EXPECT_EQ(host::paper_number("Tabloid"), 29);
    EXPECT_EQ(host::paper_number("A44"), std::nullopt);
    EXPECT_EQ(host::paper_number(""), std::nullopt);
}

TEST(Paper, namesAreListed) {
    const QByteArray names = host::paper_names();
    EXPECT_TRUE(names.startsWith("A4, B5, Letter, "));
    EXPECT_EQ(names.count(','), 29);
}

TEST(Paper, isTheUsualOneOfACountry) {
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("en_US.UTF-8"))), 2);
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("fr_CA"))), 2);
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("es_MX"))), 2);
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("en_GB"))), 0);
    EXPECT_EQ(host::usual_paper(QLocale(QStringLiteral("de_DE"))), 0);
    EXPECT_EQ(host::usual_paper(QLocale::c()), 0);
}

TEST(Paper, marginsLeaveRoom) {
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
