#include "tests/support/scratch.h"

#include <printman/report/marker.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>

using printman::escape_report_line;
using printman::EscapeField;
using printman::MarkerParse;
using printman::parse_field_marker;
using printman::parse_marker;

namespace {

/// Reads the marker that starts the line @p text, whose newline is a zero byte.
MarkerParse parse(const std::string& text) {
    const std::string line = text + '\0';
    return parse_marker(line, 3, static_cast<int>(line.size()) - 1);
}

EscapeField field(int type, int start, int size, int data_size) {
    return {static_cast<int16_t>(type), static_cast<int16_t>(start), static_cast<int16_t>(size),
            static_cast<int16_t>(data_size)};
}

// The same rules byte by byte; a line that ends early is followed by nothing.
struct PlainParser {
    std::span<const char> line;
    int end;

    bool passed(int pos) const { return pos > end || pos >= static_cast<int>(line.size()); }

    int16_t number(const std::string& digits) const {
        return static_cast<int16_t>(
            static_cast<int>(std::strtol(digits.substr(0, 63).c_str(), nullptr, 10)));
    }

    /// Copies from @p pos to @p separator; false when the copy passes the end.
    bool copy(int pos, char separator, std::string& digits) const {
        digits.clear();
        do {
            if (passed(pos))
                return false;
            digits += line[pos++];
            if (passed(pos))
                return false;
        } while (line[pos] != separator);
        return true;
    }

    MarkerParse field_marker(int pos, int type) const {
        const int begin = pos;
        if (pos < 0 || passed(pos))
            return {};
        std::string first;
        std::string second;
        std::string third;
        if (!copy(pos, ',', first))
            return {};
        pos += static_cast<int>(first.size()) + 1;
        if (!copy(pos, ',', second))
            return {};
        pos += static_cast<int>(second.size()) + 1;
        if (!copy(pos, ';', third))
            return {};
        pos += static_cast<int>(third.size());
        return {pos - begin + 2, field(type, number(first), number(second), number(third))};
    }

    MarkerParse marker(int pos) const {
        if (pos < 0 || passed(pos))
            return {};
        const char letter = line[pos];
        if (letter == 'L' || letter == 'R' || letter == 'C')
            return field_marker(pos + 1, letter == 'L' ? 2 : letter == 'R' ? 3 : 4);
        std::string start;
        if (letter != 'T' || !copy(pos + 1, ',', start))
            return {};
        const int digits = static_cast<int>(start.size());
        std::string target;
        if (passed(pos + digits + 2))
            return {digits + 3, {}};
        const bool closed = copy(pos + digits + 2, ';', target);
        MarkerParse parsed{digits + static_cast<int>(target.size()) + 3, {}};
        if (closed)
            parsed.field = field(1, number(start), number(target), 0);
        return parsed;
    }
};

void expect_same(const MarkerParse& found, const MarkerParse& expected, const std::string& line) {
    EXPECT_EQ(found.consumed, expected.consumed) << line;
    EXPECT_EQ(found.field, expected.field) << line;
}

} // namespace

TEST(Marker, aLeftFieldIsReadWhole) {
    const MarkerParse parsed = parse("#!?L12,10,8;");
    EXPECT_EQ(parsed.consumed, 9);
    EXPECT_EQ(parsed.field, field(2, 12, 10, 8));
}

TEST(Marker, theCodeLetterDecidesTheFieldType) {
    EXPECT_EQ(parse("#!?L1,2,3;").field, field(2, 1, 2, 3));
    EXPECT_EQ(parse("#!?R1,2,3;").field, field(3, 1, 2, 3));
    EXPECT_EQ(parse("#!?C1,2,3;").field, field(4, 1, 2, 3));
    EXPECT_EQ(parse("#!?T1,2;").field, field(1, 1, 2, 0));
}

TEST(Marker, aTabIsReadWhole) {
    const MarkerParse parsed = parse("#!?T5,20;");
    EXPECT_EQ(parsed.consumed, 6);
    EXPECT_EQ(parsed.field, field(1, 5, 20, 0));
}

TEST(Marker, textBehindTheMarkerIsNotConsumed) {
    EXPECT_EQ(parse("#!?T5,20;7;").consumed, 6);
    EXPECT_EQ(parse("#!?R100,20,20;8;,").consumed, 11);
}

TEST(Marker, aTabWithoutSemicolonTakesTheRestOfTheLineAndSaysNothing) {
    const MarkerParse parsed = parse("#!?T5,20");
    EXPECT_EQ(parsed.consumed, 7);
    EXPECT_EQ(parsed.field, std::nullopt);
}

TEST(Marker, aTabThatEndsWithItsCommaConsumesOneByteMoreThanStands) {
    const std::string line = "#!?T12,";
    const MarkerParse parsed = parse_marker(line, 3, 6);
    EXPECT_EQ(parsed.consumed, 5);
    EXPECT_EQ(parsed.field, std::nullopt);
    // With the newline's zero behind the comma, that is the target's only byte.
    EXPECT_EQ(parse(line).consumed, 6);
    EXPECT_EQ(parse(line).field, std::nullopt);
}

TEST(Marker, aTabWithoutCommaIsNone) {
    EXPECT_EQ(parse("#!?T5;").consumed, 0);
    EXPECT_EQ(parse("#!?T").consumed, 0);
    EXPECT_EQ(parse("#!?T5").field, std::nullopt);
}

TEST(Marker, anUnfinishedFieldIsNone) {
    for (const char* text :
         {"#!?L", "#!?L5", "#!?L5,", "#!?R5,6", "#!?R5,6,", "#!?C5,6,7", "#!?C5,6;", "#!?L5;6;7;"})
        EXPECT_EQ(parse(text).consumed, 0) << text;
}

TEST(Marker, anUnknownLetterIsNone) {
    for (const char* text :
         {"#!?X1,2,3;", "#!?l1,2,3;", "#!?t1,2;", "#!?1,2;", "#!?PAGETOP", "#!?#!?T1,2;"})
        EXPECT_EQ(parse(text).consumed, 0) << text;
}

TEST(Marker, theFirstByteOfANumberIsTakenEvenIfItIsItsSeparator) {
    EXPECT_EQ(parse("#!?T,5,20;").field, field(1, 0, 20, 0));
    EXPECT_EQ(parse("#!?T,5,20;").consumed, 7);
    EXPECT_EQ(parse("#!?T5,;20;").field, field(1, 5, 0, 0));
    EXPECT_EQ(parse("#!?T5,;20;").consumed, 7);
    EXPECT_EQ(parse("#!?L,,,,;;").field, field(2, 0, 0, 0));
    EXPECT_EQ(parse("#!?L,,,,;;").consumed, 7);
    EXPECT_EQ(parse("#!?T5,;").field, std::nullopt);
}

TEST(Marker, numbersAreWhatStrtolMakesOfThem) {
    EXPECT_EQ(parse("#!?R +7,-3, 010;").field, field(3, 7, -3, 10));
    EXPECT_EQ(parse("#!?R7x,x3,0x10;").field, field(3, 7, 0, 0));
}

TEST(Marker, numbersAreCutToSixteenBits) {
    EXPECT_EQ(parse("#!?L65537,32768,-32769;").field, field(2, 1, -32768, 32767));
    EXPECT_EQ(parse("#!?L4294967298,99999999999999999999,-99999999999999999999;").field,
              field(2, 2, static_cast<int16_t>(static_cast<int>(LONG_MAX)),
                    static_cast<int16_t>(static_cast<int>(LONG_MIN))));
}

TEST(Marker, ofANumberOfMoreThan63BytesTheFirst63Count) {
    const std::string zeros(62, '0');
    EXPECT_EQ(parse("#!?T" + zeros + "7,8;").field, field(1, 7, 8, 0));
    const MarkerParse parsed = parse("#!?T" + zeros + "75,8;");
    EXPECT_EQ(parsed.field, field(1, 7, 8, 0));
    EXPECT_EQ(parsed.consumed, 68);
    const MarkerParse wide = parse("#!?L1,2," + zeros + "1234567;");
    EXPECT_EQ(wide.field, field(2, 1, 2, 1));
    EXPECT_EQ(wide.consumed, 75);
}

TEST(Marker, nothingIsReadOutsideTheLine) {
    const std::string line = "#!?T5,20;";
    EXPECT_EQ(parse_marker(line, -1, 8).consumed, 0);
    EXPECT_EQ(parse_marker(line, INT_MIN, INT_MAX).consumed, 0);
    EXPECT_EQ(parse_marker(line, 9, 8).consumed, 0);
    EXPECT_EQ(parse_marker(line, 3, -1).consumed, 0);
    EXPECT_EQ(parse_marker(line, INT_MAX, INT_MAX).consumed, 0);
    EXPECT_EQ(parse_marker(line, 3, INT_MAX).consumed, 6);
    EXPECT_EQ(parse_marker({}, 0, 10).consumed, 0);
    EXPECT_EQ(parse_field_marker(line, -1, 8, 2).consumed, 0);
    EXPECT_EQ(parse_field_marker(line, 9, 8, 2).consumed, 0);
    EXPECT_EQ(parse_field_marker({}, 0, 0, 2).consumed, 0);
    const std::string open = "#!?T5,20";
    EXPECT_EQ(parse_marker(open, 3, 4000).consumed, 6);
}

TEST(Marker, theNumbersOfAFieldAreReadBehindItsLetter) {
    const std::string line = "#!?X12,10,8;";
    const MarkerParse parsed = parse_field_marker(line, 4, 11, 65539);
    EXPECT_EQ(parsed.consumed, 9);
    EXPECT_EQ(parsed.field, field(3, 12, 10, 8));
    EXPECT_EQ(parse_field_marker(line, 4, 10, 3).consumed, 0);
}

TEST(Marker, readsRandomBytesLikeAPlainParser) {
    TextMaker maker(7, {"T", "L", "R", "C", ",", ",", ";", ";", "1", "2", "-", " ", "x",
                        std::string(1, '\0'), std::string(70, '3')});
    for (int i = 0; i < 200000; ++i) {
        const std::string line = maker.text(12);
        const int pos = maker.number(-1, static_cast<int>(line.size()) + 1);
        const int end = maker.number(-2, static_cast<int>(line.size()) + 2);
        const PlainParser plain{line, end};
        expect_same(parse_marker(line, pos, end), plain.marker(pos), line);
        expect_same(parse_field_marker(line, pos, end, 4), plain.field_marker(pos, 4), line);
        ASSERT_FALSE(HasFailure());
    }
}

TEST(EscapeReportLine, leavesTextWithoutMarkersAlone) {
    for (const char* text : {"", "plain", "#!", "#", "!?#", "# !?T5,20;", "#!?", "#!?X1,2,3;",
                             "#!?T5;", "#!?L5,6,7", "#!?PAGE", "#!?pagetop", "##!!??"})
        EXPECT_EQ(escape_report_line(text), text);
}

TEST(EscapeReportLine, putsAMarkerWithoutEffectBehindTheHashOfAMarker) {
    EXPECT_EQ(escape_report_line("#!?T5,20;"), "##!?T0,0;!?T5,20;");
    EXPECT_EQ(escape_report_line("a#!?L1,2,3;b"), "a##!?T0,0;!?L1,2,3;b");
    EXPECT_EQ(escape_report_line("#!?T5,20"), "##!?T0,0;!?T5,20");
    EXPECT_EQ(escape_report_line("#!?T0,0;"), "##!?T0,0;!?T0,0;");
}

TEST(EscapeReportLine, keepsPageMarksFromStartingOrEndingAPage) {
    EXPECT_EQ(escape_report_line("#!?PAGETOP 80,24"), "##!?T0,0;!?PAGETOP 80,24");
    EXPECT_EQ(escape_report_line("see #!?PAGEEND"), "see ##!?T0,0;!?PAGEEND");
}

TEST(EscapeReportLine, escapesAMarkerThatOnlyAnEscapeBehindItCompletes) {
    // Unfinished by itself, the tab would take the comma and the semicolon of the inserted marker.
    EXPECT_EQ(escape_report_line("#!?T#!?T1,2;"), "##!?T0,0;!?T##!?T0,0;!?T1,2;");
    EXPECT_EQ(escape_report_line("#!?T#!?PAGETOP"), "##!?T0,0;!?T##!?T0,0;!?PAGETOP");
}
