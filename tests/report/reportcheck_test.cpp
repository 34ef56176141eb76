#include "tests/support/bytepipe.h"
#include "tests/support/scratch.h"

#include <printman/report/marker.h>
#include <printman/report/reportcheck.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

using printman::check_report;
using printman::ReportFault;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The faults of a report as "line: text".
std::vector<std::string> faults_of(const std::string& path) {
    std::vector<std::string> list;
    const int result = check_report(path, [&list](const ReportFault& fault) {
        list.push_back(std::to_string(fault.line) + ": " + fault.what);
        return true;
    });
    EXPECT_EQ(result, 0);
    return list;
}

std::vector<std::string> faults(std::string_view bytes) {
    const MemoryFile file;
    return faults_of(file.write(bytes));
}

/// The faults of a page of 20 x 3 with these lines, the first being line 2 of the file.
std::vector<std::string> page_faults(const std::string& lines) {
    return faults("#!?PAGETOP 20,3\n" + lines + "#!?PAGEEND\n");
}

std::vector<std::string> line_faults(const std::string& line) {
    return page_faults(line + '\n');
}

} // namespace

TEST(ReportCheck, aSoundReportHasNoFaults) {
    EXPECT_THAT(faults("#!?PAGETOP 20,3\n"
                       "Name #!?L6,5,5;Smith\n"
                       "\n"
                       "12345678901234567890\n"
                       "#!?PAGEEND\n"
                       "\n"
                       "#!?PAGETOP\n"
                       "#!?R1,19,19;             1.50x#!?T1,20;\n"
                       "#!?PAGEEND\n"
                       "#!?PAGETOP 20,3\n"
                       "#!?PAGEEND"),
                IsEmpty());
}

TEST(ReportCheck, anEmptyFileIsOne) {
    EXPECT_THAT(faults(""), ElementsAre("0: the file is empty"));
}

TEST(ReportCheck, aForeignFileHasTextOutsideAndNoPage) {
    EXPECT_THAT(faults("some\ntext\n"),
                ElementsAre("1: text outside a page is lost (told once before the next page)",
                            "0: no page: no line starts with \"#!?PAGETOP\""));
    EXPECT_THAT(faults("\n\n"), ElementsAre("0: no page: no line starts with \"#!?PAGETOP\""));
}

TEST(ReportCheck, textOutsideAPageIsToldOncePerGap) {
    const std::string page = "#!?PAGETOP 20,3\nx\n#!?PAGEEND\n";
    const std::string what = ": text outside a page is lost (told once before the next page)";
    EXPECT_THAT(faults("a\nb\n" + page + "\nc\nd\n" + page + "e\n"),
                ElementsAre("1" + what, "7" + what, "12" + what));
}

TEST(ReportCheck, theFirstPageStartNeedsGeometry) {
    const std::string what =
        "1: the first page start has no geometry (\"#!?PAGETOP columns,lines\")";
    for (const char* top : {"#!?PAGETOP", "#!?PAGETOP 80", "#!?PAGETOP,80", "#!?PAGETOP 80 24"})
        EXPECT_THAT(faults(std::string(top) + "\nx\n#!?PAGEEND\n#!?PAGETOP 9,9\n#!?PAGEEND\n"),
                    ElementsAre(what))
            << top;
    EXPECT_THAT(faults(std::string_view("#!?PAGETOP 80\0,24\n#!?PAGEEND\n", 29)),
                ElementsAre("1: zero byte: it cuts the line", what));
}

TEST(ReportCheck, absurdGeometryIsTold) {
    for (const char* numbers : {"0,66", "32768,66", "132,32768", "-1,66", "9000,9000"})
        EXPECT_THAT(faults(std::string("#!?PAGETOP ") + numbers + "\n#!?PAGEEND\n"),
                    ElementsAre(std::string("1: geometry ") + numbers +
                                " is out of range: 1 to 32767 columns and lines, 67108864 cells"));
    EXPECT_THAT(faults("#!?PAGETOP 80,x\n#!?PAGEEND\n"),
                ElementsAre("1: geometry 80,0 has no lines"));
}

TEST(ReportCheck, aLaterGeometryThatDiffersIsIgnored) {
    EXPECT_THAT(faults("#!?PAGETOP 20,3\n#!?PAGEEND\n#!?PAGETOP 20,4\n#!?PAGEEND\n"
                       "#!?PAGETOP 020, 3\n#!?PAGEEND\n"),
                ElementsAre("3: geometry 20,4 is ignored: the first page says 20,3"));
}

TEST(ReportCheck, pageStartsAndEndsMustAlternate) {
    EXPECT_THAT(faults("#!?PAGETOP 20,3\n#!?PAGETOP 20,3\n#!?PAGEEND\n#!?PAGEEND\n"),
                ElementsAre("2: page start inside the page of line 1, which has no end",
                            "4: page end without a page start"));
    EXPECT_THAT(faults("#!?PAGETOP 20,3\nx\n"),
                ElementsAre("2: the last page has no end (it starts at line 1)"));
}

TEST(ReportCheck, tooManyLinesAreToldOncePerPage) {
    EXPECT_THAT(page_faults("1\n2\n3\n4\n5\n6\n"),
                ElementsAre("5: the page has more than 3 lines: this and the following ones are "
                            "lost"));
}

TEST(ReportCheck, aTopLineOfMoreThan49BytesSpillsIntoThePage) {
    const std::string top = "#!?PAGETOP 20,3" + std::string(33, ' ');
    EXPECT_THAT(faults(top + "\n1\n2\n3\n#!?PAGEEND\n"), IsEmpty());
    EXPECT_THAT(faults(top + " \n1\n2\n3\n#!?PAGEEND\n"),
                ElementsAre("1: page start longer than 49 bytes: what follows them is the page's "
                            "first line",
                            "4: the page has more than 3 lines: this and the following ones are "
                            "lost"));
}

TEST(ReportCheck, aPageMarkAtEvery49thByteStartsAPage) {
    const std::string top = "#!?PAGETOP 2000,3\n";
    EXPECT_THAT(faults(top + std::string(49, 'x') + "#!?PAGETOP\n#!?PAGEEND\n"),
                ElementsAre("2: \"#!?PAGETOP\" at column 50 starts a page inside the line",
                            "2: not a marker: \"#!?\" at column 50"));
    EXPECT_THAT(faults(top + std::string(48, 'x') + "#!?PAGETOP\n#!?PAGEEND\n"),
                ElementsAre("2: not a marker: \"#!?\" at column 49"));
    // Across the border of what is read as one line.
    const std::string text = std::string(1022, 'x');
    for (size_t at = 490; at < 1000; at += 49) {
        std::string line = text;
        line.replace(at, 10, "#!?PAGETOP");
        EXPECT_THAT(faults(top + line + "\n#!?PAGEEND\n"),
                    testing::Contains("2: \"#!?PAGETOP\" at column " + std::to_string(at + 1) +
                                      " starts a page inside the line"));
    }
}

TEST(ReportCheck, aLineOfMoreThan510BytesIsReadAsSeveral) {
    const std::string what = "2: longer than 510 bytes: it is read as several lines, which lose a "
                             "byte each";
    const std::string top = "#!?PAGETOP 2000,3\n";
    EXPECT_THAT(faults(top + std::string(510, 'x') + "\n#!?PAGEEND\n"), IsEmpty());
    EXPECT_THAT(faults(top + std::string(511, 'x') + "\n#!?PAGEEND\n"), ElementsAre(what));
    EXPECT_THAT(faults(top + std::string(1500, 'x') + "\n#!?PAGEEND\n"), ElementsAre(what));
    EXPECT_THAT(faults(top + std::string(1600, 'x') + "\n#!?PAGEEND\n"),
                ElementsAre(what, "2: the page has more than 3 lines: this and the following ones "
                                  "are lost"));
}

TEST(ReportCheck, textPastTheWidthIsToldWithItsCells) {
    EXPECT_THAT(line_faults(std::string(20, 'x')), IsEmpty());
    EXPECT_THAT(line_faults(std::string(23, 'x')),
                ElementsAre("2: text runs 3 cells past the page's width of 20"));
    EXPECT_THAT(line_faults("#!?L1,5,5;#!?R6,5,5;" + std::string(20, 'x')), IsEmpty());
}

TEST(ReportCheck, whatLooksLikeAMarkerButIsNoneIsToldWithItsColumn) {
    EXPECT_THAT(line_faults("abc#!?X1,2;"), ElementsAre("2: not a marker: \"#!?\" at column 4"));
    EXPECT_THAT(line_faults("#!?L1,2"), ElementsAre("2: not a marker: \"#!?\" at column 1"));
    EXPECT_THAT(line_faults("#!?T5;"), ElementsAre("2: not a marker: \"#!?\" at column 1"));
    EXPECT_THAT(line_faults("ab#!?T3,9"), ElementsAre("2: unfinished marker at column 3"));
    EXPECT_THAT(line_faults("#!? #!? #!?"), ElementsAre("2: not a marker: \"#!?\" at column 1"));
}

TEST(ReportCheck, markersMustStandInThePage) {
    EXPECT_THAT(line_faults("#!?L0,2,2;"),
                ElementsAre("2: marker #!?L0,2,2; at column 1 starts outside the page"));
    EXPECT_THAT(line_faults("x#!?R21,2,2;"),
                ElementsAre("2: marker #!?R21,2,2; at column 2 starts outside the page"));
    EXPECT_THAT(line_faults("#!?C-3,2,2;"),
                ElementsAre("2: marker #!?C-3,2,2; at column 1 starts outside the page"));
    EXPECT_THAT(line_faults("#!?L5,0,2;"),
                ElementsAre("2: marker #!?L5,0,2; at column 1 has no width"));
    EXPECT_THAT(line_faults("#!?L5,17,2;"),
                ElementsAre("2: marker #!?L5,17,2; at column 1 reaches past the right edge"));
    EXPECT_THAT(line_faults("#!?L5,16,2;"), IsEmpty());
    EXPECT_THAT(line_faults("#!?T5,21;"),
                ElementsAre("2: marker #!?T5,21; at column 1 leads outside the page"));
    EXPECT_THAT(line_faults("#!?T5,5;"),
                ElementsAre("2: marker #!?T5,5; at column 1 does not lead forward"));
    EXPECT_THAT(line_faults("#!?T0,1;"),
                ElementsAre("2: marker #!?T0,1; at column 1 starts outside the page"));
}

TEST(ReportCheck, aMarkerAtTheLastColumnIsNeverFound) {
    EXPECT_THAT(line_faults("#!?L20,1,1;"),
                ElementsAre("2: marker #!?L20,1,1; at column 1 stands at the last column, where it "
                            "is never found"));
}

TEST(ReportCheck, aThirdMarkerAtTheSamePlaceIsNeverFound) {
    EXPECT_THAT(line_faults("#!?L5,2,2;#!?R5,2,2;"), IsEmpty());
    EXPECT_THAT(line_faults("#!?L5,2,2;#!?R5,2,2;#!?C5,3,3;#!?C5,4,4;"),
                ElementsAre("2: marker #!?C5,3,3; at column 21 is the third at its place and is "
                            "never found"));
    EXPECT_THAT(page_faults("#!?L5,2,2;#!?R5,2,2;\n#!?L5,2,2;#!?R5,2,2;\n"), IsEmpty());
}

TEST(ReportCheck, aMarkerIsShownShortAndWithoutControlBytes) {
    EXPECT_THAT(line_faults("#!?L\x1b[2J0,\xe4,1;"),
                ElementsAre("2: marker #!?L?[2J0,?,1; at column 1 starts outside the page"));
    EXPECT_THAT(line_faults("#!?L" + std::string(100, ' ') + "0,1,1;"),
                ElementsAre("2: marker #!?L" + std::string(28, ' ') +
                            "... at column 1 starts outside the page"));
}

TEST(ReportCheck, theMarkerWithoutEffectIsNoFault) {
    EXPECT_THAT(line_faults(printman::escape_report_line("#!?T5,20;#!?T5,20;x")), IsEmpty());
    EXPECT_THAT(line_faults("#!?T0,0;#!?T0,0;#!?T0,0;#!?T0,0;"), IsEmpty());
}

TEST(ReportCheck, zeroBytesAreTold) {
    EXPECT_THAT(page_faults(std::string("ab\0c\0d\n", 7)),
                ElementsAre("2: zero byte: it cuts the line"));
    EXPECT_THAT(page_faults(std::string("\0\nx\n", 4)),
                ElementsAre("2: zero byte: it cuts the line"));
    // What stands behind it is not looked at.
    EXPECT_THAT(page_faults(std::string("ab\0#!?X", 7) + std::string(30, 'x') + '\n'),
                ElementsAre("2: zero byte: it cuts the line"));
}

TEST(ReportCheck, carriageReturnsAreToldOnce) {
    const std::string what = "carriage return at the line's end: it is read as text (told once)";
    EXPECT_THAT(faults("#!?PAGETOP 5,3\r\nabcde\r\nx\r\n#!?PAGEEND\r\n\r\n"),
                ElementsAre("1: " + what));
    EXPECT_THAT(faults("#!?PAGETOP 5,3\nx\nabcdefg\r\n#!?PAGEEND\n"),
                ElementsAre("3: " + what, "3: text runs 2 cells past the page's width of 5"));
    EXPECT_THAT(line_faults("a\rb"), IsEmpty());
}

TEST(ReportCheck, aLastLineWithoutNewlineLosesACharacter) {
    EXPECT_THAT(faults("#!?PAGETOP 20,3\nabc"),
                ElementsAre("2: the last line has no newline: its last character is lost",
                            "2: the last page has no end (it starts at line 1)"));
    EXPECT_THAT(faults("#!?PAGETOP 20,3"),
                ElementsAre("1: the last page has no end (it starts at line 1)"));
    EXPECT_THAT(faults("#!?PAGETOP 20,3\nabc\n#!?PAGEEND"), IsEmpty());
}

TEST(ReportCheck, theSinkCanStop) {
    const Scratch scratch;
    int told = 0;
    EXPECT_EQ(check_report(scratch.write("#!?PAGEEND\n#!?PAGEEND\n#!?PAGEEND\n"),
                           [&told](const ReportFault&) { return ++told < 2; }),
              0);
    EXPECT_EQ(told, 2);
}

TEST(ReportCheck, aLongFileIsReadOnce) {
    std::string bytes;
    for (int number = 0; number < 20000; ++number)
        bytes += "#!?PAGETOP 20,3\nName #!?L6,5,5;Smith\n\n#!?PAGEEND\n";
    const BytePipe once(bytes);
    EXPECT_THAT(faults_of(once.path()), IsEmpty());
    EXPECT_THAT(faults(bytes + "x\n"),
                ElementsAre("80001: text outside a page is lost (told once before the next page)"));
}

TEST(ReportCheck, aFileThatCannotBeReadIsToldByItsErrno) {
    const Scratch scratch;
    const auto sink = [](const ReportFault&) {
        ADD_FAILURE();
        return true;
    };
    EXPECT_EQ(check_report(scratch.path("missing"), sink), ENOENT);
    EXPECT_EQ(check_report("", sink), ENOENT);
    EXPECT_EQ(check_report(scratch.path("."), sink), EISDIR);
    EXPECT_EQ(check_report("/dev/zero", sink), EINVAL);
    const std::string path = scratch.write("x");
    chmod(path.c_str(), 0);
    const WithoutPrivileges nobody;
    EXPECT_EQ(check_report(path, sink), EACCES);
}

TEST(ReportCheck, randomBytesAreReadToTheEnd) {
    TextMaker maker(9, {"#!?PAGETOP", "#!?PAGEEND", "#!?PAGETOP 5,3\n", "\n", "#!?T", "#!?L1,2,3;",
                        ",", ";", "9", std::string(1, '\0'), "\r\n", std::string(511, 'x')});
    for (int i = 0; i < 2000; ++i)
        faults(maker.text(60));
}

TEST(ReportCheck, saysWhichFaultIsAboutThePageSizeOfTheReport) {
    const auto kinds = [](std::string_view bytes) {
        const MemoryFile file;
        std::vector<ReportFault::Kind> list;
        EXPECT_EQ(check_report(file.write(bytes),
                               [&list](const ReportFault& fault) {
                                   list.push_back(fault.kind);
                                   return true;
                               }),
                  0);
        return list;
    };
    for (const char* top : {"#!?PAGETOP\n", "#!?PAGETOP 99999,1\n", "#!?PAGETOP 80,0\n"})
        EXPECT_THAT(kinds(std::string(top) + "#!?PAGEEND\n"),
                    testing::Contains(ReportFault::geometry))
            << top;
    EXPECT_THAT(kinds("lost\n#!?PAGETOP 80,1\n#!?PAGEEND\n#!?PAGETOP 132,66\n#!?PAGEEND\n"),
                ElementsAre(ReportFault::other, ReportFault::other));
}
