#include "host/settings/numbers.h"

#include <gtest/gtest.h>

namespace {

using Whole = std::optional<std::array<int, 3>>;

Whole three(const QByteArray& text) {
    return host::parse_list<3>(
        text, [](const QByteArray& part) { return host::parse_whole(part, 0, 9); });
}

} // namespace

TEST(Numbers, areWholeTexts) {
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

TEST(Numbers, ofAListAreSeparatedByCommas) {
    EXPECT_EQ(three("1,2,3"), (Whole{{1, 2, 3}}));
    EXPECT_EQ(three(" 1 , 2,3 "), (Whole{{1, 2, 3}}));
    for (const char* wrong : {"", "1", "1,2", "1,2,3,4", "1,,3", "1,2,10", "1,2,x", "1;2;3"})
        EXPECT_EQ(three(wrong), std::nullopt) << wrong;
}
