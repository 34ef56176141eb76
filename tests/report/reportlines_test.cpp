#include "tests/support/reportfile.h"

#include <gtest/gtest.h>

using printman::EscapeField;

TEST(ReportLines, shorterPagesLeaveTheRestEmpty) {
    Report report(page("first\n\nlast\n") + page("x\n"));
    report.buffer.init(report.fields);
    EXPECT_EQ(report.read_whole(printman::page_first, 30), "first" + zeros(15) + "last" + zeros(6));
    EXPECT_EQ(report.read_whole(printman::page_next, 30), "x" + zeros(29));
}

TEST(ReportLines, readingStopsAtTheGeometrysLineCount) {
    Report report(page("1\n2\n3\n4\n5\n"));
    report.buffer.init(report.fields);
    EXPECT_EQ(report.read_whole(printman::page_first, 50),
              std::string("1") + zeros(9) + "2" + zeros(9) + "3" + zeros(29));
    EXPECT_STREQ(report.buffer.line().data(), "4\n");
}

TEST(ReportLines, aPageWithoutEndRunsOnAndSkipsTopLines) {
    Report report("#!?PAGETOP 10,3\none\n#!?PAGETOP 10,3\ntwo\n");
    report.buffer.init(report.fields);
    EXPECT_EQ(report.buffer.page_count(), 2);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(0) + '/' + report.line(1) + '/' + report.line(2), "one/two/");
}

TEST(ReportLines, whatFollowsTheEndMarkOnItsLineDoesNotMatter) {
    Report report("#!?PAGETOP 10,3\none\n#!?PAGEENDING\ntwo\n");
    report.buffer.init(report.fields);
    EXPECT_EQ(report.read_whole(printman::page_first, 30), "one" + zeros(27));
    EXPECT_STREQ(report.buffer.line().data(), "#!?PAGEENDING\n");
}

TEST(ReportLines, aLineOf85CharactersRunsOnIntoTheNextLine) {
    const std::string text = std::string(80, 'a') + "bcdef";
    Report report(page(text + '\n', "80,3"));
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(std::string(report.buffer.cells().data(), 240), text + zeros(155));
}

TEST(ReportLines, theStrippedNewlinesZeroFillsACell) {
    Report report(page("0123456789\nx\n", "4,3"));
    report.buffer.init(report.fields);
    // The long line fills all three; the next one and its zero overwrite two cells of it.
    EXPECT_EQ(report.read_whole(printman::page_first, 12), "0123x" + zeros(1) + "6789" + zeros(2));
}

TEST(ReportLines, aLastLineThatRunsPastTheGridIsCut) {
    Report report(page("aaaa\nbbbb\ncccccccc\n", "4,3"));
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(std::string(report.buffer.cells().data(), 12), "aaaabbbbcccc");
    EXPECT_EQ(report.read_whole(printman::page_first, 12), "aaaabbbbcccc");
}

TEST(ReportLines, markersBehindAFullLastLineCountOnlyOnTheScreen) {
    Report report(page("aaaa#!?R2,2,2;\nbbbb#!?L1,2,2;\n", "4,2"));
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.fields.row(0).size(), 1u);
    EXPECT_EQ(report.fields.row(1).size(), 1u);
    // A caller's buffer ends the line at its last byte.
    EXPECT_EQ(report.read_whole(printman::page_first, 8), "aaaabbbb");
    EXPECT_EQ(report.fields.row(0).size(), 1u);
    EXPECT_TRUE(report.fields.row(1).empty());
}

TEST(ReportLines, aCallersBufferTakesWhatFits) {
    Report report(page("abcd\nefgh\nijkl\n", "4,3"));
    report.buffer.init(report.fields);
    for (size_t size = 0; size <= 12; ++size)
        EXPECT_EQ(report.read_whole(printman::page_first, size),
                  std::string("abcdefghijkl").substr(0, size));
    EXPECT_EQ(report.read_whole(printman::page_first, 14), "abcdefghijkl" + zeros(2));
}

TEST(ReportLines, aLastLineWithoutNewlineLosesItsLastCharacter) {
    Report report("#!?PAGETOP 10,3\nfirst\nlast");
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(1), "las");
}

TEST(ReportLines, aZeroByteCutsTheLineAndCostsTheByteBeforeIt) {
    Report report(std::string_view("#!?PAGETOP 10,3\nabc\0def\n\0\nx\n", 28));
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(0), "ab");
    EXPECT_EQ(report.line(1), "");
    EXPECT_EQ(report.line(2), "x");
}

TEST(ReportLines, aCarriageReturnIsText) {
    Report report("#!?PAGETOP 10,3\r\nabc\r\n#!?PAGEEND\r\n");
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(0), "abc\r");
    EXPECT_EQ(report.line(1), "");
}

TEST(ReportLines, aLineOf510BytesIsWholeAndALongerOneIsReadAsSeveral) {
    const std::string text(510, 'x');
    Report whole(page(text + "\nnext\n", "1000,3"));
    whole.buffer.init(whole.fields);
    EXPECT_TRUE(whole.turn(printman::page_first));
    EXPECT_EQ(whole.line(0), text);
    EXPECT_EQ(whole.line(1), "next");
    Report longer(page(text + "yz!\nnext\n", "1000,3"));
    longer.buffer.init(longer.fields);
    EXPECT_TRUE(longer.turn(printman::page_first));
    EXPECT_EQ(longer.line(0), text) << "the 511th byte stood in the newline's place";
    EXPECT_EQ(longer.line(1), "z!");
    EXPECT_EQ(longer.line(2), "next");
}

TEST(ReportLines, markersTakeNoCells) {
    Report report(page("ab#!?L3,4,4;cdef#!?T7,9;gh\n"));
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(0), "abcdefgh");
    ASSERT_EQ(report.fields.row(0).size(), 2u);
    EXPECT_EQ(report.fields.row(0)[0], (EscapeField{2, 3, 4, 4}));
    EXPECT_EQ(report.fields.row(0)[1], (EscapeField{1, 7, 9, 0}));
}

TEST(ReportLines, eachPageHasItsOwnMarkers) {
    Report report(page("#!?L1,4,4;abcd\n\n#!?R2,2,2; xy\n") + page("\n#!?C1,1,1;z\n"));
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.fields.row(0).size(), 1u);
    EXPECT_EQ(report.fields.row(2).size(), 1u);
    EXPECT_TRUE(report.turn(printman::page_next));
    EXPECT_TRUE(report.fields.row(0).empty());
    EXPECT_EQ(report.fields.row(1)[0], (EscapeField{4, 1, 1, 1}));
    EXPECT_TRUE(report.fields.row(2).empty());
}

TEST(ReportLines, whatIsNoMarkerIsText) {
    for (const char* text : {"a#!?x", "#!?L1,2", "#!?", "##!?", "#!?T5;", "#!#!?"}) {
        Report report(page(std::string(text) + '\n', "40,3"));
        report.buffer.init(report.fields);
        EXPECT_TRUE(report.turn(printman::page_first));
        EXPECT_EQ(report.line(0), text);
        EXPECT_TRUE(report.fields.row(0).empty());
    }
}

TEST(ReportLines, anUnfinishedTabHidesTheRestOfItsLine) {
    Report report(page("ab#!?T5,20\ncd\n"));
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(0), "ab");
    EXPECT_EQ(report.line(1), "cd");
    EXPECT_TRUE(report.fields.row(0).empty());
}

TEST(ReportLines, aMarkerAcrossTheEndOfAPieceIsCut) {
    Report report(page(std::string(506, 'x') + "#!?L3,4,4;y\n", "1000,3"));
    report.buffer.init(report.fields);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(0), std::string(506, 'x') + "#!?L");
    EXPECT_EQ(report.line(1), ",4,4;y");
    EXPECT_TRUE(report.fields.row(0).empty());
}

TEST(ReportLines, theLineReadLastIsKept) {
    Report report(page("first\nab#!?T1,9;\n"));
    report.buffer.init(report.fields);
    EXPECT_EQ(report.buffer.line()[0], 0);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_STREQ(report.buffer.line().data(), "#!?PAGEEND\n");
    Report open_page("#!?PAGETOP 10,3\nab#!?T1,9;\n");
    open_page.buffer.init(open_page.fields);
    open_page.turn(printman::page_first);
    EXPECT_STREQ(open_page.buffer.line().data(), "ab#!?T1,9;");
}
