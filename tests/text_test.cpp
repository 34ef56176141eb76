#include <printman/text.h>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>

namespace {

std::string print_string(const std::string& source, int dst_size = 100) {
    std::string dst(static_cast<size_t>(dst_size), 'x');
    const int length =
        get_print_string(dst.data(), dst_size, source.data(), static_cast<int>(source.size()));
    EXPECT_EQ(dst.substr(static_cast<size_t>(length)).find_first_not_of('\0'), std::string::npos);
    return dst.substr(0, static_cast<size_t>(length));
}

} // namespace

TEST(Q2cstr, givesLatin1TextInOneBufferThatEveryCallOverwrites) {
    char* first = q2cstr(QStringLiteral("Grüße"));
    EXPECT_STREQ(first, "Gr\xfc\xdf"
                        "e");
    EXPECT_EQ(q2cstr(QStringLiteral("x")), first);
    EXPECT_STREQ(first, "x");
    EXPECT_STREQ(q2cstr(QString()), "");
}

TEST(Q2cstr, cutsTextsToItsBuffer) {
    EXPECT_EQ(q2cstr(QString(127, u'a')), std::string(127, 'a'));
    EXPECT_EQ(q2cstr(QString(128, u'a')), std::string(127, 'a'));
    EXPECT_EQ(q2cstr(QString(100000, u'a')), std::string(127, 'a'));
}

TEST(IsWhitespace, onlyTheBlankIsOne) {
    EXPECT_EQ(is_whitespace("   ", 3), 1);
    EXPECT_EQ(is_whitespace(" \t ", 3), 0);
    EXPECT_EQ(is_whitespace("  x", 3), 0);
    EXPECT_EQ(is_whitespace("  \xa0", 3), 0);
    EXPECT_EQ(is_whitespace("  ", 3), 0) << "the zero byte is no blank";
    EXPECT_EQ(is_whitespace("  x", 2), 1);
}

TEST(IsWhitespace, noBytesAreAllBlank) {
    EXPECT_EQ(is_whitespace("x", 0), 1);
    EXPECT_EQ(is_whitespace("x", -5), 1);
    EXPECT_EQ(is_whitespace(nullptr, 0), 1);
}

TEST(GetPrintString, trimsBlanksFromBothEnds) {
    EXPECT_EQ(print_string("  a b  "), "a b");
    EXPECT_EQ(print_string("ab"), "ab");
    EXPECT_EQ(print_string(" \tx\t "), "\tx\t");
}

TEST(GetPrintString, allBlanksAreNoText) {
    EXPECT_EQ(print_string("     "), "");
    EXPECT_EQ(print_string(""), "");
    std::array<char, 3> dst{'x', 'x', 'x'};
    EXPECT_EQ(get_print_string(dst.data(), dst.size(), "ab", -1), 0);
    EXPECT_EQ(dst, (std::array<char, 3>{}));
}

TEST(GetPrintString, stopsAtAZeroByteAndThenKeepsTheBlanksBeforeIt) {
    EXPECT_EQ(print_string(std::string(" ab \0cd ", 8)), "ab ");
    EXPECT_EQ(print_string(std::string("\0ab", 3)), "");
}

TEST(GetPrintString, neverWritesPastTheDestination) {
    EXPECT_EQ(print_string(" abcdef", 4), "abc");
    EXPECT_EQ(print_string("abcdef", 1), "");
    char untouched = 'x';
    EXPECT_EQ(get_print_string(&untouched, 0, "abc", 3), 0);
    EXPECT_EQ(untouched, 'x');
    EXPECT_EQ(get_print_string(nullptr, 5, "abc", 3), 0);
}

TEST(DLWErrorWin, writesTheMessageAndANewlineToStandardError) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(DLWErrorWin("100% of it"), 11);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "100% of it\n");
}
