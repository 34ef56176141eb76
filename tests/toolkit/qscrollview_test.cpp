#include <printman/toolkit/qscrollview.h>

#include <QScrollBar>
#include <gtest/gtest.h>

namespace {

class ScrollView : public testing::Test {
protected:
    ScrollView() {
        view_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view_.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view_.setFrameShape(QFrame::NoFrame);
        view_.resize(200, 100);
        view_.show();
        child_ = new QWidget;
        child_->resize(1000, 800);
        view_.addChild(child_);
        child_->show();
    }

    QPoint contents() const { return {view_.contentsX(), view_.contentsY()}; }

    QScrollView view_;
    QWidget* child_;
};

} // namespace

TEST_F(ScrollView, aChildBecomesTheViewportsAndGivesTheContentsTheirSize) {
    EXPECT_EQ(child_->parentWidget(), view_.viewport());
    EXPECT_EQ(view_.contentsWidth(), 1000);
    EXPECT_EQ(view_.contentsHeight(), 800);
    EXPECT_EQ(view_.horizontalScrollBar()->maximum(), 800);
    EXPECT_EQ(view_.verticalScrollBar()->maximum(), 700);
    EXPECT_EQ(view_.verticalScrollBar()->pageStep(), 100);
}

TEST_F(ScrollView, scrollingMovesTheChild) {
    view_.setContentsPos(300, 200);
    EXPECT_EQ(contents(), QPoint(300, 200));
    EXPECT_EQ(child_->pos(), QPoint(-300, -200));
    view_.setContentsPos(5000, -7);
    EXPECT_EQ(contents(), QPoint(800, 0));
    EXPECT_EQ(child_->pos(), QPoint(-800, 0));
}

TEST_F(ScrollView, aMovedChildStandsAtItsPlaceInTheContents) {
    view_.setContentsPos(10, 20);
    view_.moveChild(child_, 15, 30);
    EXPECT_EQ(child_->pos(), QPoint(5, 10));
    EXPECT_EQ(view_.contentsWidth(), 1015);
    EXPECT_EQ(view_.contentsHeight(), 830);
}

TEST_F(ScrollView, contentsFollowAChildThatIsResizedOrGoes) {
    view_.setContentsPos(800, 700);
    child_->resize(300, 150);
    EXPECT_EQ(view_.contentsWidth(), 300);
    EXPECT_EQ(contents(), QPoint(100, 50));
    EXPECT_EQ(child_->pos(), QPoint(-100, -50));
    delete child_;
    EXPECT_EQ(view_.contentsWidth(), 0);
    EXPECT_EQ(contents(), QPoint(0, 0));
}

TEST_F(ScrollView, severalChildrenSpanTheContents) {
    auto* other = new QWidget;
    other->resize(50, 50);
    view_.addChild(other, 1200, 10);
    EXPECT_EQ(view_.contentsWidth(), 1250);
    EXPECT_EQ(view_.contentsHeight(), 800);
    other->hide();
    EXPECT_EQ(view_.contentsWidth(), 1250);
}

TEST_F(ScrollView, aPlaceThatIsSeenWithItsMarginsStaysWhereItIs) {
    view_.setContentsPos(300, 200);
    view_.ensureVisible(400, 250);
    EXPECT_EQ(contents(), QPoint(300, 200));
    view_.ensureVisible(360, 255, 10, 10);
    EXPECT_EQ(contents(), QPoint(300, 200));
}

TEST_F(ScrollView, aPlaceOutOfSightComesIntoViewWithMarginsOfFiftyPixels) {
    view_.ensureVisible(500, 400);
    EXPECT_EQ(contents(), QPoint(500 + 50 - 200, 400 + 50 - 100));
    view_.ensureVisible(300, 200);
    EXPECT_EQ(contents(), QPoint(300 - 50, 200 - 50));
}

TEST_F(ScrollView, marginsLargerThanTheViewPutThePlaceInItsMiddle) {
    view_.ensureVisible(500, 400, 5000, 5000);
    EXPECT_EQ(contents(), QPoint(400, 350));
}

TEST_F(ScrollView, placesOutsideTheContentsScrollToTheirEdge) {
    view_.ensureVisible(-5000, 100000);
    EXPECT_EQ(contents(), QPoint(0, 700));
    view_.ensureVisible(2147483647, -2147483647 - 1);
    EXPECT_EQ(contents(), QPoint(800, 0));
}

TEST_F(ScrollView, contentsSmallerThanTheViewDoNotScroll) {
    child_->resize(100, 50);
    view_.ensureVisible(99, 49);
    EXPECT_EQ(contents(), QPoint(0, 0));
    EXPECT_EQ(child_->pos(), QPoint(0, 0));
}
