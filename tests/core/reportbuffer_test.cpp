#include "tests/core/scratch.h"

#include <printman/core/reportbuffer.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

using printman::EscapeField;
using printman::EscapeTable;
using printman::PageGeometry;
using printman::ReportBuffer;

namespace {

const std::string three_pages = "#!?PAGETOP 10,2\none\n#!?PAGEEND\n"
                                "#!?PAGETOP 10,2\ntwo\n#!?PAGEEND\n"
                                "#!?PAGETOP 10,2\nthree\n#!?PAGEEND\n";

/// A report file with what reads it.
struct Report {
    Scratch scratch;
    ReportBuffer buffer;
    EscapeTable fields;

    explicit Report(std::string_view bytes) {
        EXPECT_TRUE(buffer.set_file_name(scratch.write(bytes)));
    }

    bool turn(int request) { return buffer.read_page(request, fields); }

    /// Line @p row of the page read last, up to its first empty cell.
    std::string line(int row) const {
        const size_t columns = static_cast<size_t>(buffer.geometry().columns);
        const std::string cells(buffer.cells().data() + columns * row, columns);
        return cells.substr(0, cells.find('\0'));
    }

    std::string read_whole(int request, size_t size) {
        std::string cells(size, 'x');
        return buffer.read_page(request, cells, fields) ? cells : "refused";
    }
};

std::string page(const std::string& lines, const std::string& geometry = "10,3") {
    return "#!?PAGETOP " + geometry + '\n' + lines + "#!?PAGEEND\n";
}

std::string zeros(size_t count) {
    return std::string(count, '\0');
}

} // namespace

TEST(ReportBuffer, startsOnPageOneWithoutPagesOrGeometry) {
    const ReportBuffer buffer;
    EXPECT_EQ(buffer.current_page(), 1);
    EXPECT_EQ(buffer.page_count(), 0);
    EXPECT_EQ(buffer.geometry(), PageGeometry());
    EXPECT_TRUE(buffer.cells().empty());
    EXPECT_EQ(buffer.line().size(), 512u);
}

TEST(ReportBuffer, aFileNameOfMoreThan255BytesIsRefused) {
    ReportBuffer buffer;
    EXPECT_TRUE(buffer.set_file_name(std::string(255, 'a')));
    EXPECT_FALSE(buffer.set_file_name(std::string(256, 'b')));
    EXPECT_EQ(buffer.file_name(), std::string(255, 'a'));
}

TEST(ReportBuffer, withoutAFileEveryOperationFails) {
    ReportBuffer buffer;
    EscapeTable fields;
    EXPECT_EQ(buffer.init(fields), -1);
    EXPECT_EQ(buffer.index_pages(), -1);
    EXPECT_EQ(buffer.read_geometry(), -1);
    EXPECT_EQ(buffer.open("r"), -1);
    EXPECT_FALSE(buffer.add_page("x", 1));
    EXPECT_FALSE(buffer.read_page(printman::page_first, fields));
}

TEST(ReportBuffer, opensAndClosesItsFile) {
    Report report("abc");
    EXPECT_EQ(report.buffer.open(nullptr), -1);
    EXPECT_EQ(report.buffer.open(""), -1);
    EXPECT_EQ(report.buffer.close(), EOF);
    EXPECT_EQ(report.buffer.open("r"), 0);
    EXPECT_EQ(report.buffer.open("r"), 0) << "a second time closes the first stream";
    EXPECT_EQ(report.buffer.close(), 0);
    EXPECT_EQ(report.buffer.close(), EOF);
    report.buffer.set_file_name(report.scratch.path("none/such"));
    EXPECT_EQ(report.buffer.open("w"), -1);
}

TEST(ReportBuffer, theOpenFileIsNotInherited) {
    Report report("abc");
    const int next_fd = dup(0);
    close(next_fd);
    ASSERT_EQ(report.buffer.open("r"), 0);
    EXPECT_EQ(fcntl(next_fd, F_GETFD), FD_CLOEXEC);
}

TEST(ReportBuffer, pagesAreAppendedAsTheyAre) {
    const Scratch scratch;
    ReportBuffer buffer;
    buffer.set_file_name(scratch.path());
    EXPECT_TRUE(buffer.add_page("#!?PAGETOP 5,1\nab\0c\n", 21));
    EXPECT_TRUE(buffer.add_page("xyz", 2));
    EXPECT_TRUE(buffer.add_page("", 0));
    EXPECT_EQ(scratch.read("report"), std::string("#!?PAGETOP 5,1\nab\0c\n\0xy", 23));
}

TEST(ReportBuffer, nothingIsAppendedWithoutDataOrWithANegativeSize) {
    Report report("kept");
    EXPECT_FALSE(report.buffer.add_page(nullptr, 3));
    EXPECT_FALSE(report.buffer.add_page("abc", -1));
    EXPECT_EQ(report.scratch.read("report"), "kept");
}

TEST(ReportBuffer, aPageThatCannotBeWrittenIsReported) {
    ReportBuffer buffer;
    buffer.set_file_name("/dev/full");
    EXPECT_FALSE(buffer.add_page("abc", 3));
    const std::string large(100000, 'x');
    EXPECT_FALSE(buffer.add_page(large.data(), static_cast<int>(large.size())));
}

TEST(ReportGeometry, standsOnTheFirstTopLine) {
    Report report("before\n#!?PAGETOP 132,66\n#!?PAGEEND\n#!?PAGETOP 80,24\n");
    EXPECT_EQ(report.buffer.read_geometry(), 0);
    EXPECT_EQ(report.buffer.geometry(), (PageGeometry{132, 66}));
}

TEST(ReportGeometry, theSeparatorIsAnyByteAndNumbersAreReadLikeStrtol) {
    for (const char* top : {"#!?PAGETOP 80,24", "#!?PAGETOPx80,24", "#!?PAGETOP980,24",
                            "#!?PAGETOP  80,24", "#!?PAGETOP +80, 24 lines", "#!?PAGETOP 80x,24,9",
                            "#!?PAGETOP 80,24\r\n", "#!?PAGETOP 080,024\n#!?PAGEEND\n"}) {
        Report report(top);
        EXPECT_EQ(report.buffer.read_geometry(), 0) << top;
        EXPECT_EQ(report.buffer.geometry(), (PageGeometry{80, 24})) << top;
    }
}

TEST(ReportGeometry, isMissingWhereTheFirstTopLineSaysNone) {
    for (const char* top :
         {"", "no top line\n", "#!?PAGETOP", "#!?PAGETOP\n", "#!?PAGETOP \n", "#!?PAGETOP,80\n",
          "#!?PAGETOP 80 24\n", "#!?PAGETOP 80\n24,80\n", "#!?PAGETOP\n#!?PAGETOP 80,24\n",
          " #!?PAGETOP 80,24\n", "#!?PAGETO 80,24\n", "#!?PAGEEND 80,24\n"}) {
        Report report(top);
        EXPECT_EQ(report.buffer.init(report.fields), 0) << top;
        EXPECT_EQ(report.buffer.geometry(), PageGeometry()) << top;
        for (int request = 0; request <= 4; ++request)
            EXPECT_FALSE(report.turn(request)) << top;
    }
}

TEST(ReportGeometry, aZeroByteOrTheLinesEndHidesTheComma) {
    Report report(std::string_view("#!?PAGETOP 80\0,24\n", 18));
    EXPECT_EQ(report.buffer.init(report.fields), 0);
    EXPECT_FALSE(report.buffer.geometry().known());
    Report stale("xxxxxxxxxxxxxxxxx,99\n#!?PAGETOP");
    EXPECT_EQ(stale.buffer.init(stale.fields), 0);
    EXPECT_FALSE(stale.buffer.geometry().known());
}

TEST(ReportGeometry, absurdNumbersCountAsMissing) {
    for (const char* numbers :
         {"32768,1", "1,32768", "-1,5", "5,-1", "0,5", "0,0", "9000,9000", "99999999999999999999,5",
          "5,99999999999999999999", "4294967376,24", "x,y"}) {
        Report report(std::string("#!?PAGETOP ") + numbers + "\nx\n");
        EXPECT_EQ(report.buffer.init(report.fields), 0) << numbers;
        EXPECT_EQ(report.buffer.geometry(), PageGeometry()) << numbers;
        EXPECT_EQ(report.buffer.page_count(), 0) << numbers;
        EXPECT_FALSE(report.turn(printman::page_first)) << numbers;
    }
}

TEST(ReportGeometry, reachesToItsLimits) {
    for (const auto& [numbers, geometry] :
         {std::pair{"32767,2048", PageGeometry{32767, 2048}}, std::pair{"1,1", PageGeometry{1, 1}},
          std::pair{"8192,8192", PageGeometry{8192, 8192}},
          std::pair{"2,32767", PageGeometry{2, 32767}}}) {
        Report report(std::string("#!?PAGETOP ") + numbers + "\nx\n");
        EXPECT_EQ(report.buffer.init(report.fields), 0);
        EXPECT_EQ(report.buffer.geometry(), geometry);
        EXPECT_TRUE(report.turn(printman::page_first));
        EXPECT_EQ(report.line(0), "x");
    }
}

TEST(ReportGeometry, pagesOfNoLinesAreToldByTheResult) {
    for (const char* numbers : {"80,0", "80,", "80,none"}) {
        Report report(std::string("#!?PAGETOP ") + numbers + "\n");
        EXPECT_EQ(report.buffer.init(report.fields), 1) << numbers;
        EXPECT_EQ(report.buffer.geometry(), PageGeometry()) << numbers;
    }
}

TEST(ReportGeometry, staysWhenReadAloneFindsNone) {
    Report report("#!?PAGETOP 80,24\n");
    EXPECT_EQ(report.buffer.read_geometry(), 0);
    for (const char* bytes : {"", "#!?PAGETOP\n", "#!?PAGETOP 99999,1\n", "#!?PAGETOP 80,0\n"}) {
        report.scratch.write(bytes);
        EXPECT_EQ(report.buffer.read_geometry(), 0);
        EXPECT_EQ(report.buffer.geometry(), (PageGeometry{80, 24})) << bytes;
    }
    report.buffer.set_file_name(report.scratch.path("missing"));
    EXPECT_EQ(report.buffer.read_geometry(), -1);
    EXPECT_EQ(report.buffer.geometry(), (PageGeometry{80, 24}));
}

TEST(ReportBuffer, indexingMakesTheCellsAndTheEscapeTable) {
    Report report(three_pages);
    EXPECT_EQ(report.buffer.init(report.fields), 0);
    EXPECT_EQ(report.buffer.geometry(), (PageGeometry{10, 2}));
    EXPECT_EQ(report.buffer.page_count(), 3);
    EXPECT_EQ(report.buffer.cells().size(), 20u);
    EXPECT_EQ(std::string(report.buffer.cells().data(), 20), zeros(20));
    EXPECT_EQ(report.fields.rows(), 2);
}

TEST(ReportBuffer, aSecondIndexingCountsThePagesTwice) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    EXPECT_EQ(report.buffer.init(report.fields), 0);
    EXPECT_EQ(report.buffer.page_count(), 6);
    const std::vector<std::string> texts{"one", "two", "three", "one", "two", "three"};
    int request = printman::page_first;
    for (const std::string& text : texts) {
        ASSERT_TRUE(report.turn(request));
        EXPECT_EQ(report.line(0), text);
        request = printman::page_next;
    }
    EXPECT_FALSE(report.turn(printman::page_next));
}

TEST(ReportBuffer, afterTheIndexIsClearedItIsMadeAnew) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    report.buffer.clear_index();
    EXPECT_EQ(report.buffer.page_count(), 3);
    for (int request = 1; request <= 4; ++request)
        EXPECT_FALSE(report.turn(request)) << "no page is known";
    EXPECT_EQ(report.buffer.init(report.fields), 0);
    EXPECT_EQ(report.buffer.page_count(), 3);
    EXPECT_TRUE(report.turn(printman::page_last));
}

TEST(ReportBuffer, indexingDropsCellsAndGeometryOfTheLastReport) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    report.buffer.set_file_name(report.scratch.path("missing"));
    EXPECT_EQ(report.buffer.init(report.fields), -1);
    EXPECT_EQ(report.buffer.geometry(), PageGeometry());
    EXPECT_EQ(report.buffer.page_count(), 0);
    EXPECT_TRUE(report.buffer.cells().empty());
    EXPECT_FALSE(report.turn(printman::page_first));
}

TEST(ReportBuffer, indexingAloneAddsTheSamePagesAgain) {
    Report report(three_pages);
    EXPECT_EQ(report.buffer.index_pages(), 0);
    EXPECT_EQ(report.buffer.page_count(), 3);
    EXPECT_EQ(report.buffer.index_pages(), 0);
    EXPECT_EQ(report.buffer.page_count(), 6);
    report.buffer.set_file_name(report.scratch.path("missing"));
    EXPECT_EQ(report.buffer.index_pages(), -1);
    EXPECT_EQ(report.buffer.page_count(), 6);
}

TEST(ReportBuffer, withGeometryAndIndexButNoCellsOnlyACallersBufferIsFilled) {
    Report report(three_pages);
    report.buffer.read_geometry();
    report.buffer.index_pages();
    EXPECT_FALSE(report.turn(printman::page_first));
    EXPECT_EQ(report.read_whole(printman::page_first, 20), "one" + zeros(17));
}

TEST(ReportPages, aReportOfOnePageHasNoNext) {
    Report report("#!?PAGETOP 80,3\na\nb\nc\n#!?PAGEEND\n");
    report.buffer.init(report.fields);
    EXPECT_EQ(report.buffer.page_count(), 1);
    EXPECT_EQ(report.buffer.cells().size(), 240u);
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(0) + report.line(1) + report.line(2), "abc");
    EXPECT_FALSE(report.turn(printman::page_next));
    EXPECT_EQ(report.buffer.current_page(), 1);
}

TEST(ReportPages, requestsTurnThePages) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    const std::vector<std::pair<int, std::string>> steps{
        {1, "one"}, {2, "two"}, {2, "three"}, {3, "two"}, {4, "three"}, {3, "two"}, {1, "one"}};
    for (const auto& [request, text] : steps) {
        EXPECT_TRUE(report.turn(request));
        EXPECT_EQ(report.line(0), text);
    }
}

TEST(ReportPages, requestsOutOfRangeAreRefusedAndThePageStays) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    EXPECT_FALSE(report.turn(printman::page_previous));
    EXPECT_EQ(report.buffer.current_page(), 1);
    EXPECT_TRUE(report.turn(printman::page_last));
    EXPECT_EQ(report.buffer.current_page(), 3);
    EXPECT_FALSE(report.turn(printman::page_next));
    for (int request : {-1, 0, 5, 1000})
        EXPECT_FALSE(report.turn(request)) << request;
    EXPECT_EQ(report.buffer.current_page(), 3);
    EXPECT_EQ(report.line(0), "three");
}

TEST(ReportPages, whichRequestsAreAllowedDependsOnTheCurrentPage) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    const auto allowed = [&report] {
        std::string text;
        for (int request = -1; request <= 5; ++request)
            text += report.buffer.allows(request) ? '1' : '0';
        return text;
    };
    EXPECT_EQ(allowed(), "0111010");
    report.turn(printman::page_next);
    EXPECT_EQ(allowed(), "0111110");
    report.turn(printman::page_last);
    EXPECT_EQ(allowed(), "0110110");
    EXPECT_FALSE(ReportBuffer().allows(printman::page_next));
    EXPECT_TRUE(ReportBuffer().allows(printman::page_last));
}

TEST(ReportPages, withoutAnyPageNothingIsReadAndThePageStays) {
    Report report("#!?PAGETOP 10,2\nabc\n");
    report.buffer.read_geometry();
    for (int request = 0; request <= 4; ++request)
        EXPECT_EQ(report.read_whole(request, 20), "refused");
    EXPECT_EQ(report.buffer.current_page(), 1);
}

TEST(ReportPages, anOpenFailureComesAfterThePageWasTurned) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    report.turn(printman::page_first);
    ASSERT_EQ(unlink(report.scratch.path().c_str()), 0);
    EXPECT_FALSE(report.turn(printman::page_next));
    EXPECT_EQ(report.buffer.current_page(), 2);
    EXPECT_EQ(report.line(0), "one") << "the cells stay";
}

TEST(ReportPages, theCurrentPageSurvivesANewIndexing) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    report.turn(printman::page_last);
    report.buffer.clear_index();
    report.scratch.write(page("only\n"));
    report.buffer.init(report.fields);
    EXPECT_EQ(report.buffer.current_page(), 3);
    EXPECT_FALSE(report.turn(printman::page_next));
    EXPECT_FALSE(report.turn(printman::page_previous)) << "there is no page 2";
    EXPECT_EQ(report.buffer.current_page(), 3);
    EXPECT_TRUE(report.turn(printman::page_first));
}

TEST(ReportPages, aPageThatTheFileNoLongerReachesCannotBeRead) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    EXPECT_FALSE(report.buffer.has_shrunk());
    report.scratch.write("#!?PAGETOP 10,2\non");
    EXPECT_TRUE(report.buffer.has_shrunk());
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.line(0), "o");
    EXPECT_FALSE(report.turn(printman::page_next));
}

TEST(ReportPages, aNewGeometryNeverReachesPastTheCells) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    report.scratch.write("#!?PAGETOP 9,40\none\ntwo\nthree\n#!?PAGEEND\n");
    report.buffer.read_geometry();
    EXPECT_TRUE(report.turn(printman::page_first));
    EXPECT_EQ(report.buffer.cells().size(), 20u);
    EXPECT_EQ(std::string(report.buffer.cells().data(), 20),
              "one" + zeros(6) + "two" + zeros(6) + "th");
}

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

TEST(ReportFile, whatIsNoRegularFileIsRefused) {
    const Scratch scratch;
    ASSERT_EQ(mkfifo(scratch.path("pipe").c_str(), 0600), 0);
    for (const std::string& name : {scratch.path("."), scratch.path("pipe"),
                                    std::string("/dev/zero"), std::string("/dev/full")}) {
        ReportBuffer buffer;
        EscapeTable fields;
        buffer.set_file_name(name);
        EXPECT_EQ(buffer.read_geometry(), -1) << name;
        EXPECT_EQ(buffer.index_pages(), -1) << name;
        EXPECT_EQ(buffer.init(fields), -1) << name;
        EXPECT_FALSE(buffer.read_page(printman::page_first, fields)) << name;
    }
}

TEST(ReportFile, anUnreadableFileIsRefused) {
    Report report(three_pages);
    report.buffer.init(report.fields);
    chmod(report.scratch.path().c_str(), 0);
    const WithoutPrivileges nobody;
    EXPECT_EQ(report.buffer.read_geometry(), -1);
    EXPECT_EQ(errno, EACCES);
    EXPECT_EQ(report.buffer.index_pages(), -1);
    EXPECT_FALSE(report.turn(printman::page_first));
    EXPECT_FALSE(report.buffer.add_page("x", 1));
    EXPECT_EQ(report.buffer.init(report.fields), -1);
}

TEST(ReportFile, aForeignFileHasNoPages) {
    std::mt19937 random(5);
    std::string bytes(100000, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    Report report(bytes);
    EXPECT_EQ(report.buffer.init(report.fields), 0);
    EXPECT_EQ(report.buffer.page_count(), 0);
    EXPECT_FALSE(report.turn(printman::page_first));
}
