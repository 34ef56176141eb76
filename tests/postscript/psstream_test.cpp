#include <printman/postscript/psstream.h>

#include <QString>
#include <gtest/gtest.h>

#include <limits>

using printman::PsStream;

namespace {

std::string number(double value, int decimals) {
    PsStream stream;
    stream.number(value, decimals);
    return std::string(stream.text());
}

std::string string(std::string_view bytes) {
    PsStream stream;
    stream.string(bytes);
    return std::string(stream.text());
}

} // namespace

TEST(PsStream, numbersHaveNoTrailingZeros) {
    EXPECT_EQ(number(0, 2), "0");
    EXPECT_EQ(number(12, 2), "12");
    EXPECT_EQ(number(12.5, 2), "12.5");
    EXPECT_EQ(number(0.05, 2), "0.05");
    EXPECT_EQ(number(-0.25, 2), "-0.25");
    EXPECT_EQ(number(-3.999, 2), "-4");
    EXPECT_EQ(number(0.1204, 4), "0.1204");
}

TEST(PsStream, numbersThatNoPageHoldsAreCut) {
    EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN(), 1), "0");
    EXPECT_EQ(number(std::numeric_limits<double>::infinity(), 1), "10000000");
    EXPECT_EQ(number(-1e300, 1), "-10000000");
}

TEST(PsStream, aStringHoldsAnyBytes) {
    EXPECT_EQ(string("plain"), "(plain)");
    EXPECT_EQ(string("a(b)c\\d"), "(a\\(b\\)c\\\\d)");
    EXPECT_EQ(string(std::string_view("\0\n\x7f\xe9", 4)), "(\\000\\012\\177\\351)");
}

TEST(PsStream, hexadecimalLinesStayShort) {
    PsStream stream;
    stream.hex(std::string(500, '\xa5'));
    const std::string text(stream.text());
    size_t longest = 0;
    size_t start = 0;
    for (size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        longest = std::max(longest, end - start);
    EXPECT_EQ(longest, 240u);
    EXPECT_EQ(std::count(text.begin(), text.end(), 'a'), 500);
}

TEST(PsStream, aCommentTextIsOneLineOfPrintableAscii) {
    EXPECT_EQ(printman::ps_comment_text(QString::fromUtf8("a\nb\xc3\xa9%%EOF")), "a?b?%%EOF");
}
