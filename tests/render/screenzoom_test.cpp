#include "tests/render/pagesonscreen.h"

#include <printman/render/zoom.h>

#include <QScrollBar>

namespace {

using ScreenZoom = PagesOnScreen;

} // namespace

TEST_F(ScreenZoom, zoomingWithoutAViewMakesNone) {
    testsupport::write_file(file(), three_pages);
    manager_.init_printman(file().toLocal8Bit().constData());
    EXPECT_EQ(manager_.zoom_rpt_page(QStringLiteral("150%")), 0);
    EXPECT_EQ(manager_.zoomout(), 0);
    EXPECT_EQ(manager_.zoomin(), 0);
    for (const QWidget* widget : QApplication::topLevelWidgets())
        EXPECT_EQ(qobject_cast<const QScrollView*>(widget), nullptr);
}

TEST_F(ScreenZoom, zoomScalesTheFontInWholePoints) {
    show(three_pages);
    EXPECT_EQ(screen()->font().pointSize(), 10);
    const int sizes[] = {5, 10, 15, 20, 25, 30};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(manager_.zoom_rpt_page(manager_.zoom_ratio_names().at(i)), 1);
        EXPECT_EQ(screen()->font().pointSize(), sizes[i]);
        EXPECT_EQ(image().size(), screen()->size());
        EXPECT_TRUE(has_ink(0)) << sizes[i];
        EXPECT_FALSE(has_ink(1)) << sizes[i];
    }
    font_.setPointSize(7);
    manager_.init_rpt_view(nullptr, nullptr, &font_);
    manager_.zoom_rpt_page(QStringLiteral("150%"));
    EXPECT_EQ(screen()->font().pointSize(), 10);
}

TEST_F(ScreenZoom, anUnknownZoomIsZeroPercentAndKeepsTheFontsSize) {
    show(three_pages);
    manager_.zoom_rpt_page(QStringLiteral("150%"));
    for (const char* name : {"75%", "100", "", " 100%"}) {
        EXPECT_EQ(manager_.zoom_ratio_id(name), 0);
        manager_.zoom_rpt_page(QString::fromLatin1(name));
        EXPECT_EQ(screen()->font().pointSize(), 15);
    }
    manager_.zoom_rpt_page(QStringLiteral("100%"));
    EXPECT_EQ(screen()->font().pointSize(), 10);
}

TEST_F(ScreenZoom, aFontOfASizeInPixelsIsZoomedToo) {
    font_.setPixelSize(14);
    show(three_pages);
    const int base = screen()->font().pointSize();
    manager_.zoom_rpt_page(QStringLiteral("200%"));
    EXPECT_EQ(screen()->font().pointSize(), 2 * base);
}

TEST_F(ScreenZoom, aFontThatDoesNotExistIsReplaced) {
    font_ = QFont(QStringLiteral("No such family"), 10);
    show(three_pages);
    EXPECT_FALSE(image().isNull());
    EXPECT_EQ(manager_.page_row(0).first().drawn.left(), 0);
}

TEST_F(ScreenZoom, previewFitsThePageToTheViewAndCentresIt) {
    show(three_pages);
    EXPECT_EQ(manager_.zoomout(), 1);
    const QSize room(770, 570);
    const QSize size = screen()->size();
    EXPECT_EQ(size, manager_.get_page_size().scaled(room, Qt::KeepAspectRatio));
    EXPECT_TRUE(size.width() == room.width() || size.height() == room.height());
    EXPECT_EQ(screen()->pos(), QPoint((800 - size.width()) / 2, (600 - size.height()) / 2));
    EXPECT_EQ(screen()->font().pointSize(), 6);
    EXPECT_EQ(image().pixel(0, 0), paper);
    EXPECT_EQ(image().pixel(size.width() - 1, size.height() - 1), paper);
}

TEST_F(ScreenZoom, theZoomIsKeptDuringPreview) {
    show(three_pages);
    manager_.zoom_rpt_page(QStringLiteral("200%"));
    manager_.zoomout();
    EXPECT_EQ(manager_.zoomin(), 1);
    EXPECT_EQ(screen()->font().pointSize(), 20);
    EXPECT_EQ(screen()->pos(), QPoint(0, 0));
    manager_.zoomout();
    manager_.zoom_rpt_page(QStringLiteral("50%"));
    EXPECT_EQ(screen()->font().pointSize(), 5);
}

TEST_F(ScreenZoom, setPreviewCountsFromTheNextLayout) {
    show(three_pages);
    const QSize before = screen()->size();
    manager_.set_preview(true);
    EXPECT_EQ(screen()->size(), before);
    manager_.init_rpt_view(nullptr, nullptr, nullptr);
    EXPECT_EQ(screen()->font().pointSize(), 6);
}

TEST_F(ScreenZoom, resizingFitsThePreviewAndLeavesTheZoomedPage) {
    show(three_pages);
    const QSize zoomed = screen()->size();
    manager_.resize(QSize(400, 300));
    EXPECT_EQ(view()->size(), QSize(400, 300));
    EXPECT_EQ(screen()->size(), zoomed);
    manager_.zoomout();
    manager_.resize(QSize(500, 640));
    EXPECT_EQ(screen()->size(),
              manager_.get_page_size().scaled(QSize(470, 610), Qt::KeepAspectRatio));
    EXPECT_EQ(image().size(), screen()->size());
}

TEST_F(ScreenZoom, viewsOfNoSizeDoNoHarm) {
    show(three_pages);
    manager_.zoomout();
    for (const QSize& size : {QSize(0, 0), QSize(10, 10), QSize(-1, -1), QSize(31, 1)}) {
        manager_.resize(size);
        EXPECT_GE(screen()->width(), 1);
        EXPECT_GE(screen()->height(), 1);
    }
}

TEST_F(ScreenZoom, anotherLayoutStartsAtTheTopLeft) {
    show(three_pages);
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    view()->setContentsPos(300, 200);
    EXPECT_GT(view()->contentsX(), 0);
    manager_.zoom_rpt_page(QStringLiteral("250%"));
    EXPECT_EQ(view()->contentsX(), 0);
    EXPECT_EQ(view()->contentsY(), 0);
}

TEST_F(ScreenZoom, scrollingBringsAPlaceIntoView) {
    show(three_pages);
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    manager_.scroll_rpt_view(QPoint(1000, 900));
    const QSize seen = view()->viewport()->size();
    EXPECT_EQ(view()->contentsX(), 1050 - seen.width());
    EXPECT_EQ(view()->contentsY(), 950 - seen.height());
}

TEST_F(ScreenZoom, theScreenFontOfTheSettingsIsTakenByTheNextLayout) {
    testhost::set("SCR_FACENAME", "DejaVu Sans Mono");
    testhost::set("SCR_POINTSIZE", "8");
    manager_.load_screenfont();
    testsupport::write_file(file(), three_pages);
    manager_.init_printman(file().toLocal8Bit().constData());
    const QSize size(800, 600);
    manager_.init_rpt_view(&window_, &size, nullptr);
    EXPECT_EQ(screen()->font().family(), QStringLiteral("DejaVu Sans Mono"));
    EXPECT_EQ(screen()->font().pointSize(), 8);
    manager_.zoom_rpt_page(QStringLiteral("200%"));
    EXPECT_EQ(screen()->font().pointSize(), 16);
    testhost::set("SCR_FACENAME", "");
    testhost::set("SCR_POINTSIZE", "12");
    manager_.load_screenfont();
    manager_.zoom_rpt_page(QStringLiteral("100%"));
    EXPECT_EQ(screen()->font().pointSize(), 8);
}

TEST_F(ScreenZoom, aPageTooLargeForAnImageIsRefusedAndTheNextZoomIsNot) {
    const QByteArray wide = "#!?PAGETOP 4000,100\nwide\n#!?PAGEEND\n";
    show("#!?PAGETOP 60,20\nOne\n#!?PAGEEND\n");
    testsupport::write_file(file(), wide);
    ASSERT_EQ(manager_.init_printman(file().toLocal8Bit().constData()), 0);
    ASSERT_EQ(manager_.init_rpt_view(nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(manager_.show_rpt_page(1), 0);
    EXPECT_EQ(manager_.page_image(), nullptr);
    EXPECT_EQ(screen()->grab(QRect(0, 0, 10, 10)).toImage().pixel(5, 5), surround);
    EXPECT_EQ(manager_.zoomout(), 1);
    EXPECT_FALSE(image().isNull());
}

TEST_F(ScreenZoom, withoutAFontTheDefaultOneIsZoomed) {
    testsupport::write_file(file(), three_pages);
    manager_.init_printman(file().toLocal8Bit().constData());
    const QSize size(800, 600);
    ASSERT_EQ(manager_.init_rpt_view(&window_, &size, nullptr), 1);
    const int points = screen()->font().pointSize();
    EXPECT_EQ(points, QFont().pointSize());
    manager_.zoom_rpt_page(QStringLiteral("200%"));
    EXPECT_EQ(screen()->font().pointSize(), 2 * points);
    manager_.zoomout();
    manager_.zoom_rpt_page(QStringLiteral("100%"));
    EXPECT_EQ(screen()->font().pointSize(), points);
}

TEST_F(ScreenZoom, previewNeedsNoScrollBars) {
    show(three_pages);
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    EXPECT_TRUE(view()->verticalScrollBar()->isVisible());
    for (const QSize& size : {QSize(443, 600), QSize(600, 443), QSize(500, 500)}) {
        manager_.resize(size);
        manager_.zoomout();
        QApplication::processEvents();
        EXPECT_FALSE(view()->verticalScrollBar()->isVisible());
        EXPECT_FALSE(view()->horizontalScrollBar()->isVisible());
        manager_.zoomin();
    }
}
