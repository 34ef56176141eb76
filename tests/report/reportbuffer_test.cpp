#include "tests/support/reportfile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

using printman::EscapeTable;
using printman::PageGeometry;
using printman::ReportBuffer;

namespace {

const std::string three_pages = "#!?PAGETOP 10,2\none\n#!?PAGEEND\n"
                                "#!?PAGETOP 10,2\ntwo\n#!?PAGEEND\n"
                                "#!?PAGETOP 10,2\nthree\n#!?PAGEEND\n";

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
