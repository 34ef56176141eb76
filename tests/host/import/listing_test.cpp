#include "host/import/listing.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Page = std::vector<std::string>;
using Pages = std::vector<Page>;

class Recorder : public host::ListingSink {
public:
    void begin_page() override {
        EXPECT_FALSE(open_);
        open_ = true;
        pages.emplace_back();
    }

    std::string line(std::string_view text) override {
        EXPECT_TRUE(open_);
        pages.back().emplace_back(text);
        return text == refused ? "it is refused" : "";
    }

    void end_page() override {
        EXPECT_TRUE(open_);
        open_ = false;
    }

    bool open() const { return open_; }

    Pages pages;
    std::string refused = "REFUSED";

private:
    bool open_ = false;
};

struct Result {
    Pages pages;
    std::string error;
    long error_line = 0;
    bool page_breaks = false;
};

/// Reads the listing in pieces of @p piece bytes.
Result read(std::string_view text, const host::ListingRules& rules = {}, size_t piece = 4096) {
    Recorder recorder;
    host::ListingReader reader(rules, recorder);
    bool accepted = true;
    for (size_t at = 0; at < text.size() && accepted; at += piece)
        accepted = reader.feed(text.substr(at, piece));
    accepted = accepted && reader.finish();
    EXPECT_EQ(accepted, reader.error().empty());
    EXPECT_EQ(accepted, !recorder.open() && reader.error_line() == 0);
    return {recorder.pages, reader.error(), reader.error_line(), reader.has_page_breaks()};
}

const host::ListingRules asa{.page_lines = 0, .columns = 0, .asa = true};

struct Case {
    const char* name;
    std::string_view text;
    Pages pages;
};

void check_pages(const std::vector<Case>& cases, const host::ListingRules& rules) {
    for (const Case& c : cases) {
        for (const size_t piece : {size_t{1}, size_t{2}, size_t{4096}}) {
            const Result result = read(c.text, rules, piece);
            EXPECT_EQ(result.error, "") << c.name;
            EXPECT_EQ(result.pages, c.pages) << c.name << ", pieces of " << piece;
        }
    }
}

} // namespace

TEST(Listing, linesAndPages) {
    check_pages({{"nothing", "", {}},
                 {"one line", "abc\n", {{"abc"}}},
                 {"a last line without a newline counts", "abc\ndef", {{"abc", "def"}}},
                 {"only a newline", "\n", {{""}}},
                 {"blank lines stay", "a\n\n\nb\n\n", {{"a", "", "", "b", ""}}},
                 {"trailing blanks stay", "a  \n", {{"a  "}}},
                 {"CRLF", "a\r\n\r\nb\r\n", {{"a", "", "b"}}},
                 {"CR CR LF", "a\r\r\n", {{"a"}}},
                 {"a form feed ends a page", "a\n\fb\n", {{"a"}, {"b"}}},
                 {"in the middle of a line too", "a\fb\n", {{"a"}, {"b"}}},
                 {"and behind a CR", "a\r\fb\r\n", {{"a"}, {"b"}}},
                 {"one at the start makes no page", "\fa\n", {{"a"}}},
                 {"one at the end makes no page", "a\n\f", {{"a"}}},
                 {"two in a row make one between", "a\n\f\fb\n", {{"a"}, {}, {"b"}}},
                 {"two at the start", "\f\fa\n", {{}, {"a"}}},
                 {"two at the end", "a\n\f\f", {{"a"}, {}}},
                 {"a form feed alone", "\f", {}},
                 {"a line end behind it is a line", "a\n\f\nb\n", {{"a"}, {"", "b"}}},
                 {"other bytes stay", "\x01\x1b[1m\x80\xff\x7f\n", {{"\x01\x1b[1m\x80\xff\x7f"}}}},
                {});
}

TEST(Listing, pagesOfACountOfLinesBreakLikePaper) {
    check_pages({{"full page and a line", "1\n2\n3\n4\n", {{"1", "2", "3"}, {"4"}}},
                 {"exactly full", "1\n2\n3\n", {{"1", "2", "3"}}},
                 {"a form feed behind a full page", "1\n2\n3\n\f4\n", {{"1", "2", "3"}, {"4"}}},
                 {"a form feed earlier", "1\n\f2\n3\n4\n5", {{"1"}, {"2", "3", "4"}, {"5"}}}},
                {.page_lines = 3, .columns = 0, .asa = false});
}

TEST(Listing, tabsGoToMultiplesOfEight) {
    check_pages({{"from the start", "\tx\n", {{"        x"}}},
                 {"from within", "ab\tx\n", {{"ab      x"}}},
                 {"from column eight", "12345678\tx\n", {{"12345678        x"}}},
                 {"at the end", "a\t\n", {{"a       "}}}},
                {});
    check_pages({{"counted behind the control", " ab\tx\n", {{"ab      x"}}}}, asa);
}

TEST(Listing, overprintingMerges) {
    check_pages({{"underlined", "Total\r_____\n", {{"Total"}}},
                 {"underline first", "_____\rTotal\n", {{"Total"}}},
                 {"bold", "Total\rTotal\rTotal\n", {{"Total"}}},
                 {"blanks give way", "a   b\r  c\n", {{"a c b"}}},
                 {"the longer counts", "ab\r   cd\n", {{"ab cd"}}},
                 {"a tab is blanks", "12345678\r\ty\r\n", {{"12345678y"}}}},
                {});
}

TEST(Listing, overprintingOfOtherCharactersIsRefused) {
    const Result result = read("one\ntwo\nab\rcd\n");
    EXPECT_EQ(result.error_line, 3);
    EXPECT_EQ(result.error, "two different characters are printed over each other in column 1");
}

TEST(Listing, carriageControl) {
    check_pages({{"next line", " a\n b\n", {{"a", "b"}}},
                 {"blank lines first", "0a\n-b\n", {{"", "a", "", "", "b"}}},
                 {"a page", "1a\n b\n1c\n", {{"a", "b"}, {"c"}}},
                 {"a page of one empty line", "1\n1b\n", {{""}, {"b"}}},
                 {"overprinting", " Total\n+_____\n+Total\n b\n", {{"Total", "b"}}},
                 {"overprinting with nothing before", "+a\n b\n", {{"a", "b"}}},
                 {"an empty line is a line", " a\n\n b\n", {{"a", "", "b"}}},
                 {"with CRLF", "1a\r\n\r\n+b\r\n0c\r\n", {{"a", "b", "", "c"}}},
                 {"a CR overprints too", " ab\r__\n", {{"ab"}}},
                 {"a last line without newline", " a\n+ b", {{"ab"}}},
                 {"a form feed ends the page", " a\n\f b\n", {{"a"}, {"b"}}}},
                asa);
}

TEST(Listing, unknownCarriageControlIsRefused) {
    const Result result = read(" a\n b\nxc\n", asa);
    EXPECT_EQ(result.error_line, 3);
    EXPECT_EQ(result.error, "'x' is not a carriage control character");
}

TEST(Listing, zeroBytesAreRefused) {
    const Result result = read(std::string_view("a\nb\0c\n", 6));
    EXPECT_EQ(result.error_line, 2);
    EXPECT_EQ(result.error, "the line contains a zero byte");
}

TEST(Listing, longLinesAreRefused) {
    const host::ListingRules five{.page_lines = 0, .columns = 5, .asa = false};
    EXPECT_EQ(read("12345\n", five).error, "");
    EXPECT_EQ(read("12345\n123456\n", five).error, "the line has more than 5 characters");
    EXPECT_EQ(read("12345\n123456\n", five).error_line, 2);
    EXPECT_EQ(read("\tx\n", five).error, "the line has more than 5 characters");
    EXPECT_EQ(read(std::string(32767, 'x')).error, "");
    EXPECT_EQ(read(std::string(32768, 'x')).error, "the line has more than 32767 characters");
}

TEST(Listing, whatTheSinkRefusesIsToldWithItsLine) {
    EXPECT_EQ(read("a\nREFUSED\nb\n").error, "it is refused");
    EXPECT_EQ(read("a\nREFUSED\nb\n").error_line, 2);
    EXPECT_EQ(read(" a\n REFUSED\n b\n", asa).error_line, 2);
    EXPECT_EQ(read(" a\n REFUSED", asa).error_line, 2);
}

TEST(Listing, pageBreaksAreNoticed) {
    EXPECT_FALSE(read("a\nb\n").page_breaks);
    EXPECT_TRUE(read("a\n\f").page_breaks);
    EXPECT_TRUE(read("\fa\n").page_breaks);
    EXPECT_FALSE(read(" a\n b\n", asa).page_breaks);
    EXPECT_TRUE(read("1a\n b\n", asa).page_breaks);
}
