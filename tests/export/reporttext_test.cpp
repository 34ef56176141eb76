#include "tests/support/scratch.h"

#include <printman/export/reporttext.h>
#include <printman/progress.h>
#include <printman/system/outputfile.h>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace printman;

namespace {

/// Saves a report as "out.txt" in a directory of its own.
struct Saving {
    Scratch scratch;
    ReportBuffer report;
    EscapeTable fields;

    explicit Saving(std::string_view bytes) {
        report.set_file_name(scratch.write(bytes));
        EXPECT_EQ(report.init(fields), 0);
    }

    std::string error(const std::string& name, const Progress& progress = {},
                      LastColumn last_column = LastColumn::kept) {
        OutputFile out;
        EXPECT_TRUE(out.open(QString::fromStdString(name)).ok());
        JobControl control(progress);
        return write_report_text(report, fields, out, last_column, control).error().toStdString();
    }

    std::string text(LastColumn last_column = LastColumn::kept) {
        EXPECT_EQ(error(scratch.path("out.txt"), {}, last_column), "");
        return scratch.read("out.txt");
    }
};

std::string page(const std::string& lines, const std::string& geometry) {
    return "#!?PAGETOP " + geometry + '\n' + lines + "#!?PAGEEND\n";
}

} // namespace

TEST(ReportText, pagesFollowOneAnotherWithoutSeparator) {
    Saving saving(page("a\nb\n", "5,2") + page("c\nd\n", "5,2"));
    EXPECT_EQ(saving.text(), "a\nb\nc\nd\n");
    EXPECT_EQ(saving.report.current_page(), 2);
}

TEST(ReportText, everyPageHasAllItsLines) {
    Saving saving(page("a\n\nb\n", "5,5"));
    EXPECT_EQ(saving.text(), "a\n\nb\n\n\n");
}

TEST(ReportText, aFullLineKeepsItsLastColumnUnlessItIsToBeDropped) {
    Saving saving(page("abcd\nabcde\n\n", "5,3"));
    EXPECT_EQ(saving.text(), "abcd\nabcde\n\n");
    EXPECT_EQ(saving.text(LastColumn::dropped), "abcd\nabcd\n\n");
    Saving longer(page("x\nabcdefg\n", "5,3"));
    EXPECT_EQ(longer.text(), "x\nabcde\nfg\n");
    EXPECT_EQ(longer.text(LastColumn::dropped), "x\nabcd\nfg\n");
}

TEST(ReportText, aLineOfOneColumnHoldsNothingWithoutIt) {
    Saving saving(page("a\nb\n", "1,2"));
    EXPECT_EQ(saving.text(), "a\nb\n");
    EXPECT_EQ(saving.text(LastColumn::dropped), "\n\n");
}

TEST(ReportText, aZeroByteHidesTheRestOfItsLine) {
    // The long first line leaves its end behind the second one's zero.
    Saving saving(page("0123456789\nx\n", "5,2"));
    EXPECT_EQ(saving.text(), "01234\nx\n");
    Saving empty(page("0123456789\n\n", "5,2"));
    EXPECT_EQ(empty.text(), "01234\n\n");
}

TEST(ReportText, markersAreLeftOutAndBytesAndBlanksStay) {
    Saving saving(page("  Gr\xfc\xdf"
                       "e #!?R9,4,4; 1,5  \t\n",
                       "40,1"));
    EXPECT_EQ(saving.text(), "  Gr\xfc\xdf"
                             "e  1,5  \t\n");
}

TEST(ReportText, aSecondIndexingWritesEveryPageTwice) {
    Saving saving(page("a\n", "5,1") + page("b\n", "5,1"));
    EXPECT_EQ(saving.text(), "a\nb\n");
    saving.report.init(saving.fields);
    EXPECT_EQ(saving.text(), "a\nb\na\nb\n");
}

TEST(ReportText, savingStartsAtTheFirstPage) {
    Saving saving(page("a\n", "5,1") + page("b\n", "5,1"));
    saving.report.read_page(page_last, saving.fields);
    EXPECT_EQ(saving.text(), "a\nb\n");
}

TEST(ReportText, withoutGeometryOrPagesTheFileIsEmpty) {
    for (const char* bytes : {"", "no pages\n", "#!?PAGETOP\nx\n", "#!?PAGETOP 99999,1\nx\n"}) {
        Saving saving(bytes);
        EXPECT_EQ(saving.text(), "") << bytes;
        EXPECT_TRUE(saving.scratch.names().contains(QStringLiteral("out.txt")));
    }
}

TEST(ReportText, progressIsToldAfterEachPage) {
    Saving saving(page("a\n", "5,1") + page("b\n", "5,1") + page("c\n", "5,1"));
    std::string told;
    const auto progress = [&told](int done, int total) {
        told += std::to_string(done) + '/' + std::to_string(total) + ' ';
        return true;
    };
    EXPECT_EQ(saving.error(saving.scratch.path("out.txt"), progress), "");
    EXPECT_EQ(told, "1/3 2/3 3/3 ");
}

TEST(ReportText, anInterruptedSaveWritesNothing) {
    Saving saving(page("a\n", "5,1") + page("b\n", "5,1"));
    const auto stop = [](int, int) { return false; };
    EXPECT_EQ(saving.error(saving.scratch.path("out.txt"), stop), "canceled");
    EXPECT_EQ(saving.scratch.names(), QStringList{QStringLiteral("report")});
    saving.scratch.write("earlier", "out.txt");
    EXPECT_EQ(saving.error(saving.scratch.path("out.txt"), stop), "canceled");
    EXPECT_EQ(saving.scratch.read("out.txt"), "earlier");
}

TEST(ReportText, aReportThatDisappearsMeanwhileIsAnError) {
    Saving saving(page("a\n", "5,1") + page("b\n", "5,1"));
    saving.scratch.write("earlier", "out.txt");
    const auto remove = [&saving](int, int) { return unlink(saving.scratch.path().c_str()) == 0; };
    EXPECT_EQ(saving.error(saving.scratch.path("out.txt"), remove),
              "cannot read page 2 of the report");
    EXPECT_EQ(saving.scratch.read("out.txt"), "earlier");
}

TEST(ReportText, aReportThatShrinksMeanwhileIsAnError) {
    Saving saving(page("a\n", "5,1") + page("b\n", "5,1"));
    const auto shrink = [&saving](long size) {
        return [&saving, size](int, int) {
            return truncate(saving.scratch.path().c_str(), size) == 0;
        };
    };
    EXPECT_EQ(saving.error(saving.scratch.path("out.txt"), shrink(44)),
              "the report became shorter while it was read");
    EXPECT_EQ(saving.error(saving.scratch.path("out.txt"), shrink(20)),
              "cannot read page 2 of the report");
    EXPECT_EQ(saving.scratch.names(), QStringList{QStringLiteral("report")});
}

TEST(ReportText, aFullDiskIsAnError) {
    Saving saving(page("a\n", "5,1"));
    EXPECT_EQ(saving.error("/dev/full"), "No space left on device");
    std::string lines;
    for (int i = 0; i < 3000; ++i)
        lines += std::string(99, 'x') + '\n';
    Saving large(page(lines, "200,3000") + page(lines, "200,3000"));
    EXPECT_EQ(large.error("/dev/full"), "No space left on device");
}

TEST(ReportText, aLargeReportIsWrittenWhole) {
    std::string bytes;
    std::string expected;
    for (int number = 0; number < 500; ++number) {
        std::string lines;
        for (int row = 0; row < 66; ++row) {
            const std::string text = std::to_string(number * 66 + row);
            lines += text + '\n';
            expected += text + '\n';
        }
        bytes += page(lines, "132,66");
    }
    Saving saving(bytes);
    EXPECT_EQ(saving.text(), expected);
}
