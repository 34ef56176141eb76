#include "host/cli/command.h"
#include "host/cli/pdfoptions.h"

#include <gtest/gtest.h>

namespace {

host::Outcome read(const QHash<QByteArray, QByteArray>& options,
                   std::optional<host::Watermark>& mark) {
    return host::read_watermark_options(host::Arguments({}, options), mark);
}

} // namespace

TEST(WatermarkOptions, coloursAreNumbersOrHexadecimal) {
    EXPECT_EQ(host::parse_mark_colour("255,0,16"), QColor(255, 0, 16));
    EXPECT_EQ(host::parse_mark_colour("1, 2, 3"), QColor(1, 2, 3));
    EXPECT_EQ(host::parse_mark_colour("#ff0010"), QColor(255, 0, 16));
    for (const char* wrong : {"", "red", "1,2", "1,2,3,4", "256,0,0", "-1,0,0", "#ff00", "#ff00100",
                              "#gg0000", "#-f0000", "#"})
        EXPECT_EQ(host::parse_mark_colour(wrong), std::nullopt) << wrong;
}

TEST(WatermarkOptions, placesAreTwoNumbers) {
    EXPECT_EQ(host::parse_place("1.5,-2"), QPointF(1.5, -2));
    for (const char* wrong : {"", "1", "1,2,3", "x,1", "1,nan", "101,0"})
        EXPECT_EQ(host::parse_place(wrong), std::nullopt) << wrong;
}

TEST(WatermarkOptions, defaultsAndOptions) {
    std::optional<host::Watermark> mark;
    ASSERT_TRUE(read({}, mark).ok());
    EXPECT_FALSE(mark);
    ASSERT_TRUE(read({{"watermark", "DRAFT"}}, mark).ok());
    ASSERT_TRUE(mark);
    EXPECT_EQ(mark->text, "DRAFT");
    EXPECT_FALSE(mark->size);
    EXPECT_EQ(mark->angle, 45);
    EXPECT_FALSE(mark->at);
    EXPECT_FALSE(mark->in_front);
    ASSERT_TRUE(read({{"watermark", "x"},
                      {"watermark-font", "Courier"},
                      {"watermark-size", "12"},
                      {"watermark-angle", "-90"},
                      {"watermark-colour", "#010203"},
                      {"watermark-at", "1,2"},
                      {"watermark-front", ""}},
                     mark)
                    .ok());
    EXPECT_EQ(mark->family, "Courier");
    EXPECT_EQ(mark->size, 12);
    EXPECT_EQ(mark->angle, -90);
    EXPECT_EQ(mark->colour, QColor(1, 2, 3));
    EXPECT_EQ(mark->at, QPointF(1, 2));
    EXPECT_TRUE(mark->in_front);
}

TEST(WatermarkOptions, textsThatTheLibraryWouldCutAreRefused) {
    std::optional<host::Watermark> mark;
    EXPECT_TRUE(read({{"watermark", QByteArray(79, 'x')}}, mark).ok());
    const host::Outcome text = read({{"watermark", QByteArray(80, 'x')}}, mark);
    EXPECT_EQ(text.status, host::Outcome::usage);
    EXPECT_EQ(text.message, "the watermark's text is 80 bytes long; the limit is 79");
    EXPECT_TRUE(read({{"watermark", "x"}, {"watermark-font", QByteArray(51, 'x')}}, mark).ok());
    EXPECT_EQ(read({{"watermark", "x"}, {"watermark-font", QByteArray(52, 'x')}}, mark).status,
              host::Outcome::usage);
}

TEST(WatermarkOptions, whatMakesNoSenseIsWrongUsage) {
    std::optional<host::Watermark> mark;
    for (const QHash<QByteArray, QByteArray>& options :
         {QHash<QByteArray, QByteArray>{{"watermark", ""}},
          {{"watermark", " "}},
          {{"watermark", "x"}, {"watermark-font", " "}},
          {{"watermark", "x"}, {"watermark-size", "0"}},
          {{"watermark", "x"}, {"watermark-size", "7.5"}},
          {{"watermark", "x"}, {"watermark-angle", "361"}},
          {{"watermark", "x"}, {"watermark-colour", "red"}},
          {{"watermark", "x"}, {"watermark-at", "1"}}})
        EXPECT_EQ(read(options, mark).status, host::Outcome::usage);
    for (const char* alone : {"watermark-font", "watermark-size", "watermark-angle",
                              "watermark-colour", "watermark-at", "watermark-front"}) {
        const host::Outcome outcome = read({{alone, "1"}}, mark);
        EXPECT_EQ(outcome.status, host::Outcome::usage);
        EXPECT_EQ(outcome.message, QByteArray("--") + alone + " requires --watermark");
    }
}
