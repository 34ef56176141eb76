#include <printman/render/pageunits.h>
#include <printman/select/dragarea.h>

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <climits>

using namespace printman;

namespace {

constexpr int columns = 40;
constexpr int lines = 10;
constexpr int margin = 20;

class DragArea : public testing::Test {
protected:
    explicit DragArea(int scale = 1) {
        QImage image(4000, 4000, QImage::Format_RGB32);
        QPainter p(&image);
        p.setFont(QFont(QStringLiteral("Liberation Mono"), 10));
        units_.set(p, columns, lines, false, 0, 0);
        const QSize size = units_.window() * scale;
        units_.set_in(p, columns, lines, QRect(QPoint(margin, margin), size));
    }

    /// The pixel in the middle of a cell.
    QPoint cell(int column, int row) const {
        const int width = units_.viewport().width() / columns;
        const int height = units_.viewport().height() / lines;
        return {margin + column * width + width / 2, margin + row * height + height / 2};
    }

    std::array<QRect, 3> area(QPoint from, QPoint to) const {
        return drag_area(from, to, margin, units_, columns);
    }

    /// The rectangle from one column and row to before another.
    QRect cells(int column, int row, int end_column, int end_row) const {
        const int width = units_.char_width();
        const int height = units_.line_height();
        return {QPoint(width * column, height * row),
                QPoint(width * end_column - 1, height * end_row - 1)};
    }

    PageUnits units_;
};

class ScaledDragArea : public DragArea {
protected:
    ScaledDragArea() : DragArea(3) {}
};

} // namespace

TEST_F(DragArea, withinALineReachesOneColumnBeyondTheRightMostPoint) {
    const auto rectangles = area(cell(5, 2), cell(9, 2));
    // Width: 4 columns and a pixel; the end column is 5 + 4 + 1.
    EXPECT_EQ(rectangles[0], cells(5, 2, 11, 3));
    EXPECT_TRUE(rectangles[1].isNull());
    EXPECT_TRUE(rectangles[2].isNull());
}

TEST_F(DragArea, overTwoLinesHasNoMiddleAndReachesBeyondThePageOnTheFirst) {
    const auto rectangles = area(cell(5, 2), cell(9, 3));
    EXPECT_EQ(rectangles[0], cells(5, 2, columns + 1, 3));
    EXPECT_TRUE(rectangles[1].isNull());
    EXPECT_EQ(rectangles[2], cells(0, 3, 10, 4));
}

TEST_F(DragArea, overMoreLinesHasAMiddleThatEndsWithThePage) {
    const auto rectangles = area(cell(5, 2), cell(9, 6));
    EXPECT_EQ(rectangles[0], cells(5, 2, columns + 1, 3));
    EXPECT_EQ(rectangles[1], cells(0, 3, columns, 6));
    EXPECT_EQ(rectangles[2], cells(0, 6, 10, 7));
}

TEST_F(DragArea, isTheSameInEveryDirection) {
    const auto forth = area(cell(5, 2), cell(9, 6));
    EXPECT_EQ(area(cell(9, 6), cell(5, 2)), forth);
    EXPECT_EQ(area(cell(9, 2), cell(5, 6)), forth);
    EXPECT_EQ(area(cell(5, 6), cell(9, 2)), forth);
}

TEST_F(DragArea, linesAreCountedByTheDragsHeightNotByWhereItEnds) {
    // From the bottom of a line to the top of the next is less than a line.
    const QPoint down(0, units_.line_height() / 2 - 1);
    const auto rectangles = area(cell(5, 2) + down, cell(9, 3) - down);
    EXPECT_EQ(rectangles[0], cells(5, 2, 11, 3));
    EXPECT_TRUE(rectangles[2].isNull());
}

TEST_F(ScaledDragArea, pixelsOfTheImageBecomeUnitsOfThePage) {
    const auto rectangles = area(cell(5, 2), cell(9, 6));
    EXPECT_EQ(rectangles[0], cells(5, 2, columns + 1, 3));
    EXPECT_EQ(rectangles[1], cells(0, 3, columns, 6));
    EXPECT_EQ(rectangles[2], cells(0, 6, 10, 7));
}

TEST_F(DragArea, divisionsAreCutTowardZero) {
    // Up to a cell left of and above the page counts as its first column and row.
    EXPECT_EQ(area(QPoint(margin - 2, margin - 2), cell(3, 0))[0].topLeft(), QPoint(0, 0));
    EXPECT_LT(area(QPoint(margin - 3 * units_.char_width(), margin), cell(3, 0))[0].left(), 0);
}

TEST_F(DragArea, pointsFarOutsideAndUnitsOfNoFontDoNoHarm) {
    const auto rectangles = area(QPoint(INT_MIN, INT_MIN), QPoint(INT_MAX, INT_MAX));
    EXPECT_GT(rectangles[1].height(), 0);
    const PageUnits none;
    for (const QRect& rectangle : drag_area(QPoint(1, 1), QPoint(9, 9), margin, none, columns))
        EXPECT_TRUE(rectangle.isNull());
}
