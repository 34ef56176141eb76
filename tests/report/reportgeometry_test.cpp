#include "tests/support/reportfile.h"

#include <gtest/gtest.h>

using printman::PageGeometry;

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
