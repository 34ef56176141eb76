#include <printman/report/escapetable.h>

#include <gtest/gtest.h>

using printman::EscapeField;
using printman::EscapeTable;

namespace {

constexpr int columns = 80;

EscapeTable table_of(int rows) {
    EscapeTable table;
    table.create(rows);
    return table;
}

} // namespace

TEST(EscapeTable, keepsTheFieldsOfALineInTheOrderInWhichTheyWereAdded) {
    EscapeTable table = table_of(3);
    table.add(1, {2, 40, 5, 0});
    table.add(1, {3, 10, 5, 0});
    ASSERT_EQ(table.row(1).size(), 2u);
    EXPECT_EQ(table.row(1)[0].start, 40);
    EXPECT_EQ(table.row(1)[1].start, 10);
    EXPECT_TRUE(table.row(0).empty());
}

TEST(EscapeTable, ignoresRowsOutsideThePage) {
    EscapeTable table = table_of(3);
    table.add(-1, {1, 2, 3, 0});
    table.add(3, {1, 2, 3, 0});
    for (int row = -2; row < 5; ++row) {
        EXPECT_TRUE(table.row(row).empty());
        EXPECT_EQ(table.find(row, 2, columns, false), nullptr);
    }
}

TEST(EscapeTable, findsAFieldByItsStart) {
    EscapeTable table = table_of(4);
    table.add(3, {2, 12, 10, 8});
    const EscapeField* found = table.find(3, 12, columns, false);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(*found, (EscapeField{2, 12, 10, 8}));
    EXPECT_EQ(table.find(3, 11, columns, false), nullptr);
    EXPECT_EQ(table.find(2, 12, columns, false), nullptr);
}

TEST(EscapeTable, ofMarkersAtTheSameColumnTheFirstAndTheSecondAreFoundAndNoThird) {
    EscapeTable table = table_of(1);
    table.add(0, {1, 5, 1, 0});
    table.add(0, {2, 9, 9, 9});
    table.add(0, {2, 5, 2, 0});
    table.add(0, {3, 5, 3, 0});
    EXPECT_EQ(table.find(0, 5, columns, false)->size, 1);
    EXPECT_EQ(table.find(0, 5, columns, true)->size, 2);
    EXPECT_EQ(table.find(0, 9, columns, true), nullptr);
}

TEST(EscapeTable, aFieldAtTheLastColumnIsNeverFound) {
    EscapeTable table = table_of(1);
    table.add(0, {2, columns - 1, 1, 1});
    table.add(0, {2, columns, 1, 1});
    table.add(0, {2, columns + 1, 1, 1});
    EXPECT_NE(table.find(0, columns - 1, columns, false), nullptr);
    EXPECT_EQ(table.find(0, columns, columns, false), nullptr);
    EXPECT_EQ(table.find(0, columns + 1, columns, false), nullptr);
}

TEST(EscapeTable, columnZeroIsLookedUpAndNegativeOnesAreNot) {
    EscapeTable table = table_of(1);
    table.add(0, {2, 0, 1, 1});
    table.add(0, {2, -1, 1, 1});
    EXPECT_NE(table.find(0, 0, columns, false), nullptr);
    EXPECT_EQ(table.find(0, -1, columns, false), nullptr);
}

TEST(EscapeTable, clearForgetsTheFieldsAndKeepsTheTable) {
    EscapeTable table = table_of(2);
    table.add(0, {2, 5, 1, 1});
    table.clear();
    EXPECT_EQ(table.rows(), 2);
    EXPECT_EQ(table.find(0, 5, columns, false), nullptr);
    table.add(0, {3, 6, 1, 1});
    EXPECT_NE(table.find(0, 6, columns, false), nullptr);
}

TEST(EscapeTable, withoutATableNothingIsTakenOrFound) {
    EscapeTable table = table_of(2);
    table.release();
    table.add(0, {2, 5, 1, 1});
    EXPECT_EQ(table.rows(), 0);
    EXPECT_EQ(table.find(0, 5, columns, false), nullptr);
    table.clear();
    table.create(-3);
    EXPECT_EQ(table.rows(), 0);
}

TEST(EscapeTable, creatingItAnewForgetsEverything) {
    EscapeTable table = table_of(2);
    table.add(0, {2, 5, 1, 1});
    table.create(5);
    EXPECT_EQ(table.rows(), 5);
    EXPECT_TRUE(table.row(0).empty());
}
