#include "tests/support/scratch.h"

#include <printman/export/pagetext.h>
#include <printman/system/outputfile.h>

#include <gtest/gtest.h>

using namespace printman;

namespace {

StringItem item(int column, int width, const char* text, int align) {
    StringItem made;
    made.cell = QRect(column, 0, width, 1);
    made.text = QString::fromLatin1(text);
    made.align = static_cast<int16_t>(align);
    return made;
}

std::string line(const QValueList<StringItem>& items) {
    return columned_text(items).toStdString();
}

} // namespace

TEST(ColumnedText, aLineWithoutItemsIsEmpty) {
    EXPECT_EQ(line({}), "");
}

TEST(ColumnedText, fieldsArePaddedByTheirAlignment) {
    EXPECT_EQ(line({item(0, 6, "ABC", 2)}), "ABC   ");
    EXPECT_EQ(line({item(0, 10, "ABC", 3)}), "       ABC");
    EXPECT_EQ(line({item(0, 9, "ABC", 4)}), "   ABC   ");
    EXPECT_EQ(line({item(2, 4, "AB", 3)}), "    AB");
}

TEST(ColumnedText, anOddCentredFieldIsOneShortAndTheNextGapMakesItUp) {
    EXPECT_EQ(line({item(0, 10, "ABC", 4)}), "   ABC   ");
    EXPECT_EQ(line({item(0, 10, "ABC", 4), item(10, 2, "xy", 2)}), "   ABC    xy");
}

TEST(ColumnedText, aTextWiderThanItsCellsGetsNoBlanks) {
    for (const int align : {2, 3, 4})
        EXPECT_EQ(line({item(3, 2, "ABCDE", align)}), "   ABCDE");
    // Half of -1, rounded down, is -1 and not 0: no blanks either way.
    EXPECT_EQ(line({item(0, 2, "ABC", 4)}), "ABC");
    EXPECT_EQ(line({item(0, 3, "ABC", 4)}), "ABC");
}

TEST(ColumnedText, anItemThatStartsEarlierThanTheLineHasComeFollowsDirectly) {
    EXPECT_EQ(line({item(5, 5, "first", 2), item(2, 6, "second", 2), item(12, 3, "3rd", 2)}),
              "     firstsecond3rd");
    EXPECT_EQ(line({item(-4, 3, "abc", 2)}), "abc");
}

TEST(ColumnedText, anyOtherAlignmentIsTheTextAlone) {
    for (const int align : {0, 1, 5, 7, -1})
        EXPECT_EQ(line({item(2, 9, "ABC", align), item(6, 1, "D", align)}), "  ABC D");
}

TEST(ColumnedText, textIsTakenAsItIs) {
    EXPECT_EQ(line({item(0, 8, " %1\t ", 2)}), " %1\t    ");
}

TEST(PageText, everyLineEndsWithALineFeedAndIsLatin1) {
    const Scratch scratch;
    OutputFile out;
    ASSERT_TRUE(out.open(scratch.path("out").c_str()).ok());
    const std::vector<QValueList<StringItem>> rows = {
        {item(1, 4, "\xe9\xdf", 3)}, {}, {item(0, 1, "x", 2)}, {}};
    EXPECT_EQ(write_page_text(rows, out).error(), QString());
    EXPECT_EQ(scratch.read("out"), "   \xe9\xdf\n\nx\n\n");
}

TEST(PageText, aPageWithoutLinesIsAnEmptyFile) {
    const Scratch scratch;
    OutputFile out;
    ASSERT_TRUE(out.open(scratch.path("out").c_str()).ok());
    EXPECT_EQ(write_page_text({}, out).error(), QString());
    EXPECT_EQ(scratch.names(), QStringList{QStringLiteral("out")});
    EXPECT_EQ(scratch.read("out"), "");
}

TEST(PageText, aFullDiskIsTold) {
    OutputFile out;
    ASSERT_TRUE(out.open("/dev/full").ok());
    const std::vector<QValueList<StringItem>> rows = {{item(0, 1, "x", 2)}};
    EXPECT_EQ(write_page_text(rows, out).error(), QStringLiteral("No space left on device"));
}
