#include "tests/report/pagecells.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using printman::EscapeTable;
using printman::PageRows;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(PageRows, aLineWithoutMarkersIsOneItem) {
    Page page(80, 3);
    page.put(1, "Name: Smith");
    EXPECT_THAT(page.items(1), ElementsAre("0,1 11x1 2 [Name: Smith]"));
    EXPECT_THAT(page.items(0), IsEmpty());
    EXPECT_THAT(page.items(2), IsEmpty());
}

TEST(PageRows, anItemsOtherFieldsAreAtTheirDefaults) {
    Page page(20, 1);
    page.put(0, "text");
    const PageRows rows = page.load();
    ASSERT_EQ(rows.row(0).size(), 1);
    const StringItem& item = rows.row(0).front();
    EXPECT_TRUE(item.spare.isNull());
    EXPECT_EQ(item.drawn, QRect());
    EXPECT_TRUE(item.source_text.isNull());
    EXPECT_EQ(item.source_cell, QRect());
}

TEST(PageRows, aLineOfOnlyBlanksIsAnItemOfBlanks) {
    Page page(80, 1);
    page.put(0, "     ");
    EXPECT_THAT(page.items(), ElementsAre("0,0 5x1 2 [     ]"));
}

TEST(PageRows, leadingBlanksOfARunStay) {
    Page page(80, 1);
    page.put(0, "   Total  ");
    EXPECT_THAT(page.items(), ElementsAre("0,0 10x1 2 [   Total  ]"));
}

TEST(PageRows, textThenARightFieldAreTwoItems) {
    Page page(80, 1);
    page.put(0, "Total       12.50").mark(0, {3, 10, 8, 8});
    EXPECT_THAT(page.items(), ElementsAre("0,0 9x1 2 [Total    ]", "9,0 8x1 3 [12.50]"));
}

TEST(PageRows, aLeftFieldIsAsWideAsItsTrimmedText) {
    Page page(80, 1);
    page.put(0, "ab  cd    ef").mark(0, {2, 3, 8, 8});
    EXPECT_THAT(page.items(), ElementsAre("0,0 2x1 2 [ab]", "2,0 2x1 2 [cd]", "10,0 2x1 2 [ef]"));
}

TEST(PageRows, aCentredFieldKeepsItsWholeWidth) {
    Page page(80, 1);
    page.put(0, " mid    x").mark(0, {4, 1, 8, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 8x1 4 [mid]", "8,0 1x1 2 [x]"));
}

TEST(PageRows, aBlankFieldIsNoItemButSkipsItsCells) {
    for (int type : {2, 3, 4}) {
        Page page(80, 1);
        page.put(0, "ab        cd").mark(0, {static_cast<int16_t>(type), 3, 8, 8});
        EXPECT_THAT(page.items(), ElementsAre("0,0 2x1 2 [ab]", "10,0 2x1 2 [cd]"));
    }
}

TEST(PageRows, blanksBeforeAFieldAreDropped) {
    Page page(80, 1);
    page.put(0, "     12").mark(0, {3, 4, 4, 0});
    EXPECT_THAT(page.items(), ElementsAre("3,0 4x1 3 [12]"));
}

TEST(PageRows, aTabContinuesAtItsTarget) {
    Page page(80, 1);
    page.put(0, "ab skipped  cd").mark(0, {1, 3, 13, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 2x1 2 [ab]", "12,0 2x1 2 [cd]"));
}

TEST(PageRows, aTabThatDoesNotLeadBeyondTheRunStartIsIgnored) {
    Page page(80, 1);
    page.put(0, "abcdef").mark(0, {1, 4, 1, 0});
    // The pending text is an item already, and what follows starts at the same place.
    EXPECT_THAT(page.items(), ElementsAre("0,0 3x1 2 [abc]", "0,0 3x1 2 [def]"));
}

TEST(PageRows, afterARefusedTabTheSecondMarkerAtThatColumnCounts) {
    Page page(80, 1);
    page.put(0, "abcdef").mark(0, {1, 4, 1, 0}).mark(0, {3, 4, 3, 0}).mark(0, {2, 4, 1, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 3x1 2 [abc]", "3,0 3x1 3 [def]"));
}

TEST(PageRows, aTabRefusedTwiceIsPassedOver) {
    Page page(80, 1);
    page.put(0, "abcdef").mark(0, {1, 4, 1, 0}).mark(0, {1, 4, 0, 0}).mark(0, {2, 4, 3, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 3x1 2 [abc]", "0,0 3x1 2 [def]"));
}

TEST(PageRows, aTabMayLeadBackBehindTheRunStart) {
    Page page(80, 1);
    page.put(0, "abcdefgh").mark(0, {1, 7, 4, 0});
    EXPECT_THAT(page.items(),
                ElementsAre("0,0 6x1 2 [abcdef]", "3,0 3x1 2 [def]", "3,0 2x1 2 [gh]"));
}

TEST(PageRows, aTabPastTheLineEndsIt) {
    Page page(6, 2);
    page.put(0, "abcdef").put(1, "ghijkl").mark(0, {1, 3, 9, 0});
    EXPECT_THAT(page.items(0), ElementsAre("0,0 2x1 2 [ab]"));
    EXPECT_THAT(page.items(1), ElementsAre("0,1 4x1 2 [ijkl]"));
}

TEST(PageRows, aZeroByteHidesTheRestOfTheLine) {
    Page page(20, 2);
    page.put(0, "ab").put(0, "hidden", 5).put(1, "cd");
    EXPECT_THAT(page.items(0), ElementsAre("0,0 2x1 2 [ab]"));
    EXPECT_THAT(page.items(1), ElementsAre("0,1 2x1 2 [cd]"));
}

TEST(PageRows, aFieldStopsAtAZeroByteAndSkipsWhatIsBehindIt) {
    Page page(20, 1);
    page.put(0, std::string_view("ab\0cdef", 7)).mark(0, {3, 1, 5, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 5x1 3 [ab]", "5,0 2x1 2 [ef]"));
}

TEST(PageRows, aFieldAtTheLastColumnIsText) {
    Page page(6, 1);
    page.put(0, "abcdef").mark(0, {3, 6, 1, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 6x1 2 [abcdef]"));
    page.mark(0, {3, 5, 1, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 4x1 2 [abcd]", "4,0 1x1 3 [e]", "5,0 1x1 2 [f]"));
}

TEST(PageRows, aFieldWithoutWidthIsText) {
    for (int16_t size : {0, -1, -32768})
        for (int16_t type : {2, 3, 4}) {
            Page page(8, 1);
            page.put(0, "abcdef").mark(0, {type, 3, size, 0});
            EXPECT_THAT(page.items(), ElementsAre("0,0 6x1 2 [abcdef]"));
        }
}

TEST(PageRows, aFieldOfUnknownTypeIsText) {
    Page page(8, 1);
    page.put(0, "abcdef").mark(0, {7, 3, 2, 0}).mark(0, {0, 5, 2, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 6x1 2 [abcdef]"));
}

TEST(PageRows, aFieldThatRunsIntoTheNextLineTakesItsCells) {
    Page page(6, 2);
    page.put(0, "abcdef").put(1, "ghijkl").mark(0, {3, 4, 5, 0});
    // What follows in the next line is placed at its start.
    EXPECT_THAT(page.items(0), ElementsAre("0,0 3x1 2 [abc]", "3,0 5x1 3 [defgh]"));
    EXPECT_THAT(page.items(1), ElementsAre("0,1 4x1 2 [ijkl]"));
}

TEST(PageRows, afterAFieldWiderThanALineTheLineCounterCatchesUp) {
    Page page(4, 4);
    page.put(0, "abcd").put(1, "efgh").put(2, "ijkl").put(3, "mnop").mark(0, {2, 1, 13, 0});
    EXPECT_THAT(page.items(0), ElementsAre("0,0 4x1 2 [abcd]"));
    EXPECT_THAT(page.items(1), IsEmpty());
    EXPECT_THAT(page.items(2), IsEmpty());
    EXPECT_THAT(page.items(3), ElementsAre("0,3 3x1 2 [nop]"));
    // A zero cell leads back to the line that the counter has reached.
    page.cells[13] = 0;
    EXPECT_THAT(page.items(1), IsEmpty());
    EXPECT_THAT(page.items(2), ElementsAre("0,2 4x1 2 [ijkl]"));
    EXPECT_THAT(page.items(3), ElementsAre("0,3 1x1 2 [m]"));
}

TEST(PageRows, aFieldIsCutAtTheGridsEndAndAtThePagesWidth) {
    Page page(4, 2);
    page.put(0, "abcd").put(1, "efgh").mark(1, {3, 2, 32767, 0}).mark(0, {3, 1, 7, 0});
    EXPECT_THAT(page.items(0), ElementsAre("0,0 7x1 3 [abcd]"));
    Page last(4, 2);
    last.put(1, "efgh").mark(1, {3, 2, 32767, 0});
    EXPECT_THAT(last.items(1), ElementsAre("0,1 1x1 2 [e]", "1,1 32767x1 3 [fgh]"));
}

TEST(PageRows, aFieldThatCutsANegativeOrFarColumnIsNeverMet) {
    Page page(8, 1);
    page.put(0, "abc").mark(0, {2, 0, 2, 0}).mark(0, {2, -5, 2, 0}).mark(0, {2, 900, 2, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 3x1 2 [abc]"));
}

TEST(PageRows, markersNeedNotStandInTheOrderOfTheirColumns) {
    Page page(20, 1);
    page.put(0, "abcdefghij").mark(0, {3, 7, 2, 0}).mark(0, {4, 3, 2, 0});
    EXPECT_THAT(page.items(), ElementsAre("0,0 2x1 2 [ab]", "2,0 2x1 4 [cd]", "4,0 2x1 2 [ef]",
                                          "6,0 2x1 3 [gh]", "8,0 2x1 2 [ij]"));
}

TEST(PageRows, bytesAreLatin1) {
    Page page(20, 1);
    page.put(0, "Gr\xfc\xdf"
                "e");
    EXPECT_EQ(page.load().row(0).front().text, QStringLiteral("Grüße"));
}

TEST(PageRows, aLoadReplacesTheItemsOfTheLastOne) {
    Page first(10, 3);
    first.put(0, "old").put(2, "old");
    Page second(10, 3);
    second.put(1, "new");
    PageRows rows;
    rows.load(first.cells, 10, 3, first.fields);
    rows.load(second.cells, 10, 3, second.fields);
    EXPECT_EQ(rows.size(), 3);
    EXPECT_TRUE(rows.row(0).isEmpty());
    EXPECT_THAT(shown(rows.row(1)), ElementsAre("0,1 3x1 2 [new]"));
    EXPECT_TRUE(rows.row(2).isEmpty());
}

TEST(PageRows, thereIsALineForEachOfThePageLoadedLast) {
    Page tall(5, 9);
    Page low(5, 2);
    low.put(1, "x");
    PageRows rows;
    rows.load(low.cells, 5, 2, low.fields);
    EXPECT_EQ(rows.size(), 2);
    tall.put(8, "y");
    rows.load(tall.cells, 5, 9, tall.fields);
    EXPECT_EQ(rows.size(), 9);
    EXPECT_EQ(rows.row(8).size(), 1);
    rows.load(low.cells, 5, 2, low.fields);
    EXPECT_EQ(rows.size(), 2);
    EXPECT_EQ(rows.rows().size(), 2u);
}

TEST(PageRows, rowsOutsideThePageAreEmptyAndTakeNothing) {
    Page page(5, 2);
    PageRows rows = page.load();
    StringItem item;
    item.text = QStringLiteral("x");
    for (int row : {-1, 2, 32767}) {
        rows.add(row, item);
        EXPECT_TRUE(rows.row(row).isEmpty());
    }
    rows.add(1, item);
    EXPECT_EQ(rows.row(1).size(), 1);
    rows.release();
    EXPECT_EQ(rows.size(), 0);
    EXPECT_TRUE(rows.row(1).isEmpty());
}

TEST(PageRows, aPageWithoutGeometryHasNoLines) {
    PageRows rows;
    const EscapeTable none;
    rows.load({}, 0, 0, none);
    EXPECT_EQ(rows.size(), 0);
    rows.load({}, 0, 5, none);
    EXPECT_EQ(rows.size(), 0);
    rows.load({}, 5, -1, none);
    EXPECT_EQ(rows.size(), 0);
}

TEST(PageRows, aGridThatIsTooShortIsReadToItsEnd) {
    PageRows rows;
    EscapeTable fields;
    fields.create(3);
    fields.add(1, {3, 2, 4, 0});
    const std::string cells = "abcdef";
    rows.load(cells, 4, 3, fields);
    EXPECT_THAT(shown(rows.row(0)), ElementsAre("0,0 4x1 2 [abcd]"));
    EXPECT_THAT(shown(rows.row(1)), ElementsAre("0,1 1x1 2 [e]", "1,1 4x1 3 [f]"));
    rows.load({}, 4, 3, fields);
    EXPECT_EQ(rows.size(), 3);
    EXPECT_TRUE(rows.row(0).isEmpty());
}
