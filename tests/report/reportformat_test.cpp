#include <printman/report/reportformat.h>

#include <gtest/gtest.h>

using printman::page_top_line;
using printman::PageGeometry;
using printman::parse_top_line;
using printman::TopLine;

TEST(Format, aTopLineIsReadAsItIsWritten) {
    for (const PageGeometry geometry :
         {PageGeometry{1, 1}, PageGeometry{132, 66}, PageGeometry{32767, 2048}}) {
        const TopLine top = parse_top_line(page_top_line(geometry));
        EXPECT_EQ(top.kind, TopLine::valid);
        EXPECT_EQ(top.geometry(), geometry);
    }
    EXPECT_EQ(page_top_line({132, 66}), "#!?PAGETOP 132,66");
}

TEST(Format, aTopLineTellsWhyItStatesNoGeometry) {
    const auto kind = [](std::string_view numbers) {
        return parse_top_line("#!?PAGETOP" + std::string(numbers)).kind;
    };
    for (const char* numbers : {"", "\n", " ", " 80 24\n", ",80\n"})
        EXPECT_EQ(kind(numbers), TopLine::no_geometry) << numbers;
    for (const char* numbers : {" 80,0", " 80,", " 80,none\n"})
        EXPECT_EQ(kind(numbers), TopLine::no_lines) << numbers;
    for (const char* numbers : {" 0,5", " 0,0", " -1,5", " 5,-1", " 32768,1", " 1,32768", " ,5",
                                " 9000,9000", " 99999999999999999999,5"})
        EXPECT_EQ(kind(numbers), TopLine::out_of_range) << numbers;
}

TEST(Format, onlyAValidTopLineHasAGeometry) {
    const TopLine wide = parse_top_line("#!?PAGETOP 40000,66");
    EXPECT_EQ(wide.columns, 40000);
    EXPECT_EQ(wide.lines, 66);
    EXPECT_FALSE(wide.geometry().known());
}

TEST(Format, aTopLineEndsAtAZeroByte) {
    const std::string_view hidden("#!?PAGETOP 80\0,24\n", 18);
    EXPECT_EQ(parse_top_line(hidden).kind, TopLine::no_geometry);
}
