#include <printman/select/geometry.h>
#include <printman/select/itemcutter.h>

#include <gtest/gtest.h>

#include <numeric>

using namespace printman;

namespace {

constexpr int height = 12;

/// A font whose "i" is 4 wide, whose "W" is 14 and everything else 10, one line of 12 high.
class PaperFont : public TextMeasure {
public:
    QRect bounding_rect(const QRect& cell, int flags, const QString& text) const override {
        const int width = std::accumulate(text.begin(), text.end(), 0, [](int sum, QChar c) {
            return sum + (c == u'i' ? 4 : c == u'W' ? 14 : 10);
        });
        EXPECT_TRUE(flags & Qt::AlignVCenter);
        const int x = flags & Qt::AlignRight ? cell.x() + cell.width() - width : cell.x();
        return {x, cell.y() + (cell.height() - height) / 2, width, height};
    }
};

constexpr int item_x = 100;
constexpr int item_y = 48;

class ItemCutting : public testing::Test {
protected:
    static StringItem item(const char* text) {
        StringItem made;
        made.text = QString::fromLatin1(text);
        made.align = 3;
        made.cell = QRect(7, 4, 9, 1);
        made.spare = QStringLiteral("spare");
        made.drawn = PaperFont().bounding_rect(QRect(item_x, item_y, 0, height),
                                               Qt::AlignLeft | Qt::AlignVCenter, made.text);
        return made;
    }

    /// A rectangle over the item's line, from one pixel to behind another.
    static QRect over(int from, int to) { return {from, item_y, to - from, height}; }

    bool cut(const QRect& selection, const StringItem& from) {
        piece_ = StringItem();
        return cutter_.cut(selection, from, piece_);
    }

    PaperFont font_;
    ItemCutter cutter_{font_};
    StringItem piece_;
};

} // namespace

TEST_F(ItemCutting, nothingIsHitByANullRectangleOrOfAnItemThatWasNotPainted) {
    EXPECT_FALSE(cut(QRect(), item("text")));
    StringItem unpainted = item("text");
    unpainted.drawn = QRect();
    EXPECT_FALSE(cut(over(0, 1000), unpainted));
}

TEST_F(ItemCutting, blankAndEmptyItemsAreNeverHit) {
    StringItem blank = item("  ");
    EXPECT_FALSE(cut(over(0, 1000), blank));
    blank.text = QStringLiteral(" \t\u00a0 ");
    EXPECT_FALSE(cut(over(0, 1000), blank));
    blank.text = QString();
    EXPECT_FALSE(cut(over(0, 1000), blank));
    EXPECT_TRUE(cut(over(0, 1000), item(" a ")));
}

TEST_F(ItemCutting, anItemMustLieWhollyWithinTheLinesOfTheRectangle) {
    const StringItem text = item("text");
    EXPECT_FALSE(cut(QRect(0, item_y + 1, 1000, height), text));
    EXPECT_FALSE(cut(QRect(0, item_y, 1000, height - 1), text));
    EXPECT_TRUE(cut(QRect(0, item_y, 1000, height), text));
    EXPECT_TRUE(cut(QRect(0, 0, 1000, 1000), text));
}

TEST_F(ItemCutting, anItemThatIsCoveredComesBackWhole) {
    StringItem text = item("text");
    text.source_text = QStringLiteral("source");
    text.source_cell = QRect(1, 2, 3, 4);
    text.source_align = 5;
    for (const QRect& selection : {over(item_x, item_x + 40), over(0, 1000)}) {
        ASSERT_TRUE(cut(selection, text));
        EXPECT_EQ(piece_.text, text.text);
        EXPECT_EQ(piece_.cell, text.cell);
        EXPECT_EQ(piece_.spare, text.spare);
        EXPECT_EQ(piece_.align, text.align);
        EXPECT_EQ(piece_.drawn, text.drawn);
        EXPECT_EQ(piece_.source_text, text.source_text);
        EXPECT_EQ(piece_.source_cell, text.source_cell);
        EXPECT_EQ(piece_.source_align, text.source_align);
    }
}

TEST_F(ItemCutting, aRectangleBesideAnItemDoesNotHitIt) {
    EXPECT_FALSE(cut(over(0, item_x), item("text")));
    EXPECT_FALSE(cut(over(item_x + 40, 1000), item("text")));
    EXPECT_TRUE(cut(over(0, item_x + 1), item("text")));
    EXPECT_TRUE(cut(over(item_x + 39, 1000), item("text")));
}

TEST_F(ItemCutting, fromTheLeftTheLeadingRunThatFitsIsTaken) {
    // The width that may be taken is one more than is covered.
    ASSERT_TRUE(cut(over(0, item_x + 29), item("abcdef")));
    EXPECT_EQ(piece_.text, QStringLiteral("abc"));
    EXPECT_EQ(piece_.align, 3);
    EXPECT_EQ(piece_.drawn, QRect(item_x, item_y, 30, height));
    EXPECT_TRUE(piece_.cell.isNull());
    ASSERT_TRUE(cut(over(0, item_x + 28), item("abcdef")));
    EXPECT_EQ(piece_.text, QStringLiteral("ab"));
}

TEST_F(ItemCutting, fromTheRightTheTrailingRunThatFitsIsTaken) {
    ASSERT_TRUE(cut(over(item_x + 31, 1000), item("abcdef")));
    EXPECT_EQ(piece_.text, QStringLiteral("def"));
    EXPECT_EQ(piece_.drawn, QRect(item_x + 30, item_y, 30, height));
    ASSERT_TRUE(cut(over(item_x + 32, 1000), item("abcdef")));
    EXPECT_EQ(piece_.text, QStringLiteral("ef"));
}

TEST_F(ItemCutting, oneCharacterIsTakenHoweverNarrowTheRectangle) {
    ASSERT_TRUE(cut(over(0, item_x + 1), item("WWW")));
    EXPECT_EQ(piece_.text, QStringLiteral("W"));
    EXPECT_EQ(piece_.drawn.width(), 14);
    ASSERT_TRUE(cut(over(item_x + 41, 1000), item("WWW")));
    EXPECT_EQ(piece_.text, QStringLiteral("W"));
    EXPECT_EQ(piece_.drawn, QRect(item_x + 28, item_y, 14, height));
}

TEST_F(ItemCutting, aRunAsLongAsTheTextLeavesThePieceAsItWas) {
    ASSERT_TRUE(cut(over(0, item_x + 3), item("W")));
    EXPECT_TRUE(piece_.text.isNull());
    EXPECT_EQ(piece_.drawn, QRect());
    ASSERT_TRUE(cut(over(item_x + 5, 1000), item("W")));
    EXPECT_TRUE(piece_.text.isNull());
    // One pixel is not covered, and one more than is covered may be taken.
    ASSERT_TRUE(cut(over(0, item_x + 39), item("text")));
    EXPECT_TRUE(piece_.text.isNull());
    StringItem out;
    EXPECT_FALSE(cutter_.left(item(""), 5, out));
    EXPECT_FALSE(cutter_.right(item(""), 5, out));
    EXPECT_FALSE(cutter_.left(item("ab"), 20, out));
    EXPECT_TRUE(cutter_.left(item("ab"), 19, out));
    EXPECT_TRUE(cutter_.right(item("ab"), -5, out));
    EXPECT_EQ(out.text, QStringLiteral("b"));
}

TEST_F(ItemCutting, anInnerRunGoesFromBehindTheFirstPrefixToTheLastThatFits) {
    // Start 21: the prefix of 3 is the first as wide. End 21 + 20 = 41: the prefix of 4 fits.
    ASSERT_TRUE(cut(over(item_x + 20, item_x + 40), item("abcdef")));
    EXPECT_EQ(piece_.text, QStringLiteral("d"));
    EXPECT_EQ(piece_.align, 3);
    // Its rectangle reaches one pixel beyond the run.
    EXPECT_EQ(piece_.drawn, QRect(item_x + 30, item_y, 11, height));
    EXPECT_TRUE(piece_.cell.isNull());
}

TEST_F(ItemCutting, aRectangleFromTheLeftEdgeToInsideTakesTheInnerRun) {
    // Start 1: the prefix of 2 is the first that is measured.
    ASSERT_TRUE(cut(over(item_x, item_x + 35), item("abcdef")));
    EXPECT_EQ(piece_.text, QStringLiteral("c"));
    EXPECT_EQ(piece_.drawn, QRect(item_x + 20, item_y, 11, height));
}

TEST_F(ItemCutting, aRectangleFromInsideToTheRightEdgeTakesTheInnerRun) {
    ASSERT_TRUE(cut(over(item_x + 31, item_x + 60), item("abcdef")));
    EXPECT_EQ(piece_.text, QStringLiteral("ef"));
    // No prefix is too wide, so the run ends where it began.
    EXPECT_EQ(piece_.drawn,
              QRect(QPoint(item_x + 40, item_y), QPoint(item_x, item_y + height - 1)));
}

TEST_F(ItemCutting, anInnerRunWithinOneCharacterIsTheRestOfTheText) {
    // The prefix of 3 is the first as wide as 21, and already wider than 21 + 2.
    ASSERT_TRUE(cut(over(item_x + 20, item_x + 22), item("abcdef")));
    EXPECT_EQ(piece_.text, QStringLiteral("def"));
    EXPECT_EQ(piece_.drawn,
              QRect(QPoint(item_x + 30, item_y), QPoint(item_x + 20, item_y + height - 1)));
}

TEST_F(ItemCutting, anInnerRunBehindEveryPrefixStandsAtTheOriginWithoutHeight) {
    StringItem out;
    cutter_.centre(item("abcd"), 100, 20, out);
    EXPECT_EQ(out.text, QStringLiteral("bcd"));
    EXPECT_EQ(out.drawn, QRect(QPoint(0, 0), QPoint(0, -1)));
}

TEST_F(ItemCutting, anInnerRunOfOneCharacterHasNoText) {
    StringItem out;
    cutter_.centre(item("a"), 1, 5, out);
    EXPECT_EQ(out.text, QString());
    EXPECT_EQ(out.drawn, QRect(QPoint(0, 0), QPoint(0, -1)));
}

TEST_F(ItemCutting, proportionalFontsAreMeasured) {
    ASSERT_TRUE(cut(over(0, item_x + 23), item("iiiWWW")));
    EXPECT_EQ(piece_.text, QStringLiteral("iii"));
    EXPECT_EQ(piece_.drawn.width(), 12);
    ASSERT_TRUE(cut(over(item_x + 25, 1000), item("iiiWWW")));
    EXPECT_EQ(piece_.text, QStringLiteral("WW"));
}

TEST(MergeRect, isTheGapFromTheFirstToTheSecondAsHighAsTheFirst) {
    const QRect gap = merge_rect(QRect(10, 20, 30, 12), QRect(70, 22, 5, 9));
    EXPECT_EQ(gap, QRect(QPoint(40, 20), QPoint(70, 31)));
}

TEST(MergeRect, ofTouchingRectanglesIsOnePixelWide) {
    EXPECT_EQ(merge_rect(QRect(0, 0, 10, 5), QRect(10, 0, 10, 5)).width(), 1);
}

TEST(MergeRect, doesNotReorder) {
    const QRect gap = merge_rect(QRect(50, 0, 10, 5), QRect(10, 0, 10, 5));
    EXPECT_EQ(gap, QRect(QPoint(60, 0), QPoint(10, 4)));
    EXPECT_LT(gap.width(), 0);
}
