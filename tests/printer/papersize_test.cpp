#include <printman/printer/papersize.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

namespace {

struct Text {
    short number;
    const char* text;
};

constexpr Text texts[] = {
    {5, "841 x 1189 mm"},
    {6, "594 x 841 mm"},
    {7, "420 x 594 mm"},
    {8, "297 x 420 mm"},
    {0, "210 x 297 mm, 8.26 x 11.7 inches"},
    {9, "148 x 210 mm"},
    {10, "105 x 148 mm"},
    {11, "74 x 105 mm"},
    {12, "52 x 74 mm"},
    {13, "37 x 52 mm"},
    {14, "1030 x 1456 mm"},
    {15, "728 x 1030 mm"},
    {16, "32 x 45 mm"},
    {17, "515 x 728 mm"},
    {18, "364 x 515 mm"},
    {19, "257 x 364 mm"},
    {1, "182 x 257 mm, 7.17 x 10.13 inches"},
    {20, "128 x 182 mm"},
    {21, "91 x 128 mm"},
    {22, "64 x 91 mm"},
    {23, "45 x 64 mm"},
    {24, "163 x 229 mm"},
    {25, "105 x 241 mm, US Common #10 Emvelope"},
    {26, "110 x 220 mm"},
    {4, "7.5 x 10 inches, 191 x 254 mm"},
    {27, "210 x 330 mm"},
    {28, "432 x 279 mm"},
    {3, "8.5 x 14 inches, 216 x 356 mm"},
    {2, "8.5 x 11 inches, 216 x 279 mm"},
    {29, "279 x 432 mm"},
};

/// A caller's buffer of 80 bytes that was in use before.
struct Buffer {
    Buffer() { std::memset(text, '#', sizeof text); }

    std::string bytes(size_t count) const { return {text, count}; }

    char text[80];
};

} // namespace

TEST(PaperSize, everyNumberHasItsText) {
    static_assert(std::size(texts) == 30);
    for (const auto& [number, text] : texts) {
        Buffer buffer;
        EXPECT_EQ(get_paper_size(number, buffer.text, 80), static_cast<int>(std::strlen(text)));
        EXPECT_STREQ(buffer.text, text);
        EXPECT_EQ(buffer.text[79], '\0') << "cleared to its end";
    }
}

TEST(PaperSize, aTextThatDoesNotFitIsCut) {
    Buffer buffer;
    EXPECT_EQ(get_paper_size(2, buffer.text, 10), 9);
    EXPECT_EQ(buffer.bytes(11), std::string("8.5 x 11 \0#", 11));
    Buffer exact;
    EXPECT_EQ(get_paper_size(2, exact.text, 30), 29);
    EXPECT_STREQ(exact.text, "8.5 x 11 inches, 216 x 279 mm");
    EXPECT_EQ(exact.text[30], '#');
    Buffer one;
    EXPECT_EQ(get_paper_size(2, one.text, 1), 0);
    EXPECT_EQ(one.bytes(2), std::string("\0#", 2));
}

TEST(PaperSize, anUnknownNumberLeavesTheBuffer) {
    for (const int number : {30, -1, 1000, std::numeric_limits<short>::max() + 0,
                             std::numeric_limits<short>::min() + 0}) {
        Buffer buffer;
        EXPECT_EQ(get_paper_size(static_cast<short>(number), buffer.text, 80), 0);
        EXPECT_EQ(buffer.bytes(80), std::string(80, '#')) << number;
    }
}

TEST(PaperSize, withoutABufferThereIsNoText) {
    Buffer buffer;
    DLWDEVMODE devmode{};
    std::memcpy(devmode.form_name, "A4", 3);
    for (const int size : {0, -1, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(get_paper_size(2, buffer.text, size), 0);
        EXPECT_EQ(get_paper_size(&devmode, buffer.text, size), 0);
    }
    EXPECT_EQ(get_paper_size(2, nullptr, 80), 0);
    EXPECT_EQ(get_paper_size(&devmode, nullptr, 80), 0);
    EXPECT_EQ(buffer.bytes(80), std::string(80, '#'));
}

TEST(PaperSize, ofADeviceModeIsTheNameOfItsForm) {
    DLWDEVMODE devmode{};
    std::memcpy(devmode.form_name, "Envelope", 9);
    Buffer buffer;
    EXPECT_EQ(get_paper_size(&devmode, buffer.text, 20), 8);
    EXPECT_STREQ(buffer.text, "Envelope");
    EXPECT_EQ(buffer.bytes(21).substr(8), std::string(12, '\0') + '#');
    EXPECT_EQ(get_paper_size(&devmode, buffer.text, 5), 4);
    EXPECT_STREQ(buffer.text, "Enve");
}

TEST(PaperSize, aDeviceModeWithoutAFormClearsTheBuffer) {
    const DLWDEVMODE devmode{};
    Buffer buffer;
    EXPECT_EQ(get_paper_size(&devmode, buffer.text, 20), 0);
    EXPECT_EQ(buffer.bytes(21), std::string(20, '\0') + '#');
    Buffer other;
    EXPECT_EQ(get_paper_size(nullptr, other.text, 20), 0);
    EXPECT_STREQ(other.text, "");
}

TEST(PaperSize, aFormNameThatFillsItsFieldEndsWithinIt) {
    DLWDEVMODE devmode;
    std::memset(&devmode, 'x', sizeof devmode);
    Buffer buffer;
    EXPECT_EQ(get_paper_size(&devmode, buffer.text, 80), 47);
    EXPECT_EQ(buffer.text, std::string(47, 'x'));
}
