#include "host/viewer/texts.h"
#include "host/viewer/viewerwindow.h"
#include "tests/host/program.h"

#include <QUrl>

using namespace host;

TEST(ViewerTexts, tellGeometryPageAndSelection) {
    EXPECT_EQ(geometry_text(132, 66, 120), QStringLiteral("132 x 66, 120 pages"));
    EXPECT_EQ(geometry_text(1, 1, 1), QStringLiteral("1 x 1, 1 page"));
    EXPECT_EQ(page_text(3, 120), QStringLiteral("3 of 120"));
    EXPECT_EQ(selection_text(0, 0), QString());
    EXPECT_EQ(selection_text(1, 1), QStringLiteral("1 piece, 1 character"));
    EXPECT_EQ(selection_text(3, 42), QStringLiteral("3 pieces, 42 characters"));
}

TEST(ViewerTexts, aPageNumberIsReadWithWhatStandsBehindIt) {
    for (const char* typed :
         {"17", " 17 ", "17 of 120", "17/120", "17 / 120", "017", "17 of", "17 von 9"})
        EXPECT_EQ(parse_page(QString::fromLatin1(typed)), 17) << typed;
    EXPECT_EQ(parse_page(QStringLiteral("0")), 0);
}

TEST(ViewerTexts, whatIsNoPageNumberIsRefused) {
    for (const char* typed :
         {"", " ", "x", "-1", "1.5", "of 3", "12345678901234567890", "1x", "1 2 3", "+1", "0x1"})
        EXPECT_EQ(parse_page(QString::fromLatin1(typed)), std::nullopt) << typed;
}

TEST(ViewerTexts, aFileIsNamedInOneShortLine) {
    EXPECT_EQ(short_name("/tmp/aging.rpt"), QStringLiteral("aging.rpt"));
    EXPECT_EQ(short_name("aging.rpt"), QStringLiteral("aging.rpt"));
    EXPECT_EQ(short_name("/tmp/a\nb\x1b.rpt"), QStringLiteral("a?b?.rpt"));
    EXPECT_EQ(short_name("/\xe2\x80\xae"
                         "abc"),
              QStringLiteral("?abc"));
    const QString cut = short_name(QByteArray(300, 'a') + ".rpt");
    EXPECT_EQ(cut.size(), 60);
    EXPECT_TRUE(cut.endsWith(QStringLiteral("a.rpt")));
}

TEST(ViewerTexts, aDroppedFileIsTheFirstOfThisMachine) {
    const auto drop = [](std::initializer_list<const char*> urls) {
        QList<QUrl> list;
        for (const char* url : urls)
            list << QUrl::fromEncoded(url);
        return dropped_file(list);
    };
    EXPECT_EQ(drop({"file:///tmp/a%20b.rpt"}), "/tmp/a b.rpt");
    EXPECT_EQ(drop({"file:///tmp/%FF%25.rpt"}), "/tmp/\xff%.rpt");
    EXPECT_EQ(drop({"https://example.org/a", "file:///b", "file:///c"}), "/b");
    EXPECT_EQ(drop({"https://example.org/a"}), "");
    EXPECT_EQ(drop({"file:///a%00b"}), "");
    EXPECT_EQ(drop({}), "");
}
