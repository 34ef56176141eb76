#include "tests/render/pagesonscreen.h"

#include <QPainter>
#include <QTest>

namespace {

const QRgb black = qRgb(0, 0, 0);

using ScreenView = PagesOnScreen;

} // namespace

TEST_F(ScreenView, beforeThereIsAViewNothingHappens) {
    EXPECT_EQ(manager_.init_rpt_view(&window_, nullptr, nullptr), 0);
    testsupport::write_file(file(), three_pages);
    manager_.init_printman(file().toLocal8Bit().constData());
    EXPECT_EQ(manager_.show_rpt_page(1), 0);
    manager_.repaint_rpt_page(&window_);
    manager_.resize(QSize(100, 100));
    manager_.scroll_rpt_view(QPoint(5, 5));
    manager_.collect_hilights(QPoint(1, 1), QPoint(90, 90));
    manager_.show_page_hilights(true);
    manager_.unshow_page_hilights();
    manager_.clear_hilights();
    manager_.mouse_press(QPoint(1, 1));
    manager_.mouse_move(QPoint(50, 50));
    manager_.mouse_release(QPoint(60, 60));
    EXPECT_EQ(manager_.first_item_hilight(), 0);
    EXPECT_EQ(manager_.next_item_hilight(), 0);
    manager_.show_item_hilight();
    manager_.unshow_item_hilight();
    EXPECT_TRUE(manager_.hilights().empty());
    EXPECT_EQ(manager_.page_image(), nullptr);
    EXPECT_EQ(screen(), nullptr);
}

TEST_F(ScreenView, theSheetIsAFramedPageOnADarkSurround) {
    show(three_pages);
    const QImage picture = image();
    EXPECT_EQ(picture.size(), screen()->size());
    const int right = picture.width() - 20;
    const int bottom = picture.height() - 20;
    EXPECT_EQ(picture.pixel(0, 0), surround);
    EXPECT_EQ(picture.pixel(18, 18), surround);
    EXPECT_EQ(picture.pixel(19, 19), black);
    EXPECT_EQ(picture.pixel(right, bottom), black);
    EXPECT_EQ(picture.pixel(right + 1, bottom), surround);
    EXPECT_EQ(picture.pixel(right, bottom + 1), surround);
    EXPECT_EQ(picture.pixel(19, bottom), black);
    EXPECT_EQ(picture.pixel(20, bottom - 1), paper);
    EXPECT_EQ(picture.pixel(right - 1, 20), paper);
}

TEST_F(ScreenView, theSheetHasThePapersShapeAndHoldsTheText) {
    show(three_pages);
    const QSize page = manager_.get_page_size();
    const QSize sheet = screen()->size() - QSize(40, 40);
    EXPECT_EQ(sheet, page.scaled(text_size(), Qt::KeepAspectRatioByExpanding));
    EXPECT_GE(sheet.width(), text_size().width());
    EXPECT_GE(sheet.height(), text_size().height());
}

TEST_F(ScreenView, theViewIsWhereItsParentIsAndHasTheSizeGiven) {
    show(three_pages);
    EXPECT_EQ(view()->parentWidget(), &window_);
    EXPECT_EQ(view()->size(), QSize(800, 600));
    EXPECT_TRUE(view()->isVisible());
    EXPECT_EQ(screen()->parentWidget(), view()->viewport());
    EXPECT_EQ(screen()->focusPolicy(), Qt::StrongFocus);
    EXPECT_EQ(window_.focusWidget(), screen());
    EXPECT_EQ(view()->contentsWidth(), screen()->width());
}

TEST_F(ScreenView, pageRequestsTurnThePages) {
    show(three_pages);
    EXPECT_TRUE(has_ink(0));
    EXPECT_EQ(manager_.show_rpt_page(2), 1);
    EXPECT_FALSE(has_ink(0));
    EXPECT_TRUE(has_ink(1));
    EXPECT_EQ(manager_.show_rpt_page(4), 1);
    EXPECT_TRUE(has_ink(2));
    EXPECT_EQ(manager_.get_cur_page(), 3);
    const QImage last = image();
    EXPECT_EQ(manager_.show_rpt_page(2), 0);
    EXPECT_EQ(image(), last);
    EXPECT_EQ(manager_.show_rpt_page(3), 1);
    EXPECT_EQ(manager_.get_cur_page(), 2);
    EXPECT_EQ(manager_.show_rpt_page(7), 0);
    EXPECT_EQ(manager_.show_rpt_page(-1), 0);
}

TEST_F(ScreenView, aPageNumberIsShownWithoutWalking) {
    show(three_pages);
    EXPECT_EQ(manager_.goto_rpt_page(3), 1);
    EXPECT_EQ(manager_.get_cur_page(), 3);
    EXPECT_TRUE(has_ink(2));
    for (const int page : {0, -1, 4, 2147483647}) {
        EXPECT_EQ(manager_.goto_rpt_page(page), 0) << page;
        EXPECT_EQ(manager_.get_cur_page(), 3) << page;
    }
}

TEST_F(ScreenView, whatCannotBeReadLeavesWhatIsShown) {
    show(three_pages);
    const QImage before = image();
    QFile::remove(file());
    EXPECT_EQ(manager_.show_rpt_page(2), 0);
    EXPECT_EQ(manager_.goto_rpt_page(3), 0);
    EXPECT_EQ(image(), before);
    EXPECT_EQ(screen()->grab().toImage(), before);
    EXPECT_EQ(manager_.zoom_rpt_page(QStringLiteral("200%")), 1);
    EXPECT_TRUE(has_ink(0));
}

TEST_F(ScreenView, aReportThatWasCutOffShowsWhatIsLeft) {
    show(three_pages);
    testsupport::write_file(file(), three_pages.left(70));
    EXPECT_EQ(manager_.show_rpt_page(4), 0);
    EXPECT_EQ(manager_.show_rpt_page(1), 1);
}

TEST_F(ScreenView, colorsCountFromTheNextPageShown) {
    show(three_pages);
    testhost::set("KRV_COLOR_SBG", "0,0,255");
    const QImage before = image();
    manager_.repaint_rpt_page(screen());
    EXPECT_EQ(image(), before);
    manager_.show_rpt_page(0);
    EXPECT_EQ(image().pixel(30, image().height() - 30), qRgb(0, 0, 255));
}

TEST_F(ScreenView, theWidgetShowsTheImage) {
    show(three_pages);
    EXPECT_EQ(screen()->grab().toImage(), image());
    manager_.zoomout();
    EXPECT_EQ(screen()->grab().toImage(), image());
}

TEST_F(ScreenView, aReportOfAnotherGeometryIsScaledIntoTheSheet) {
    show("#!?PAGETOP 40,5\nsmall\n#!?PAGEEND\n");
    QByteArray large = "#!?PAGETOP 120,60\n";
    for (int line = 0; line < 60; ++line)
        large += QByteArray(120, 'x') + '\n';
    testsupport::write_file(file(), large + "#!?PAGEEND\n");
    ASSERT_EQ(manager_.init_printman(file().toLocal8Bit().constData()), 0);
    ASSERT_EQ(manager_.show_rpt_page(1), 1);
    const QImage picture = image();
    const auto has_text = [&](const QRect& place) {
        const QImage part = picture.copy(place).convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < part.height(); ++y) {
            for (int x = 0; x < part.width(); ++x) {
                if (part.pixel(x, y) != paper)
                    return true;
            }
        }
        return false;
    };
    // The text fills the sheet one way and leaves its margins free.
    const QRect sheet = picture.rect().adjusted(20, 20, -20, -20);
    EXPECT_TRUE(has_text(QRect(sheet.topLeft(), QSize(10, 10))));
    EXPECT_TRUE(has_text(sheet.adjusted(sheet.width() - 12, 0, 0, 0)) ||
                has_text(sheet.adjusted(0, sheet.height() - 12, 0, 0)));
    EXPECT_EQ(picture.pixel(picture.width() - 10, picture.height() - 10), surround);
}

TEST_F(ScreenView, nothingOfAnEarlierReportIsShownAsOneOfTheNew) {
    show(three_pages);
    EXPECT_TRUE(has_ink(0));
    testsupport::write_file(file(), "#!?PAGETOP 60,20\n\n\nNew\n#!?PAGEEND\n");
    ASSERT_EQ(manager_.init_printman(file().toLocal8Bit().constData()), 0);
    manager_.show_rpt_page(0);
    EXPECT_FALSE(has_ink(0));
    EXPECT_EQ(manager_.show_rpt_page(1), 1);
    EXPECT_TRUE(has_ink(2));
}

TEST_F(ScreenView, aScreenOfTheHostsOwnShowsTheImageToo) {
    show(three_pages);
    CScreen own(&manager_, nullptr, "own");
    own.resize(image().size() + QSize(10, 10));
    const QImage shown = own.grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(shown.copy(image().rect()), image().convertToFormat(QImage::Format_RGB32));
    EXPECT_EQ(shown.pixel(shown.width() - 1, shown.height() - 1), surround);
    CPrintMan without_view;
    CScreen blank(&without_view, nullptr, "blank");
    blank.resize(20, 20);
    EXPECT_EQ(blank.grab().toImage().pixel(10, 10), surround);
}

TEST_F(ScreenView, aScreenWithoutAManagerIsBlank) {
    CScreen screen(nullptr, nullptr, nullptr);
    screen.resize(20, 20);
    EXPECT_EQ(screen.grab().toImage().pixel(10, 10), screen.palette().window().color().rgb());
}

TEST_F(ScreenView, theColorsAreReadForEveryPageThatIsShown) {
    show(three_pages);
    testhost::set("KRV_COLOR_SBG", "0,0,255");
    manager_.goto_rpt_page(2);
    EXPECT_EQ(image().pixel(30, image().height() - 30), qRgb(0, 0, 255));
}

TEST_F(ScreenView, theWindowMayGoBeforeTheManager) {
    auto parent = std::make_unique<QWidget>();
    parent->show();
    testsupport::write_file(file(), three_pages);
    manager_.init_printman(file().toLocal8Bit().constData());
    const QSize size(300, 200);
    ASSERT_EQ(manager_.init_rpt_view(parent.get(), &size, &font_), 1);
    ASSERT_EQ(manager_.show_rpt_page(1), 1);
    parent.reset();
    EXPECT_EQ(manager_.show_rpt_page(2), 0);
    EXPECT_EQ(manager_.zoomin(), 0);
    EXPECT_EQ(manager_.zoomout(), 0);
    manager_.resize(size);
    manager_.mouse_press(QPoint(30, 30));
    manager_.mouse_move(QPoint(90, 90));
    manager_.clear_hilights();
    manager_.set_preview(false);
    ASSERT_EQ(manager_.init_rpt_view(&window_, nullptr, nullptr), 1);
    EXPECT_EQ(manager_.show_rpt_page(1), 1);
    EXPECT_TRUE(has_ink(0));
}

TEST_F(ScreenView, aManagerThatGoesFirstLeavesAHarmlessWidget) {
    auto manager = std::make_unique<CPrintMan>();
    testsupport::write_file(file(), three_pages);
    manager->init_printman(file().toLocal8Bit().constData());
    const QSize size(300, 200);
    ASSERT_EQ(manager->init_rpt_view(&window_, &size, &font_), 1);
    ASSERT_EQ(manager->show_rpt_page(1), 1);
    manager.reset();
    ASSERT_NE(screen(), nullptr);
    QTest::mousePress(screen(), Qt::LeftButton, {}, QPoint(30, 30));
    QTest::mouseMove(screen(), QPoint(90, 60));
    QTest::mouseRelease(screen(), Qt::LeftButton, {}, QPoint(90, 60));
    QTest::keyClick(screen(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_FALSE(screen()->grab().isNull());
}

TEST_F(ScreenView, aJobThatWasAbortedLeavesThePageBlank) {
    show(three_pages);
    std::unique_ptr<QPainter> job(manager_.create_generic_printer("nobody"));
    manager_.printing_canceled();
    manager_.show_rpt_page(1);
    const bool painted = has_ink(0);
    job.reset();
    EXPECT_FALSE(painted);
    manager_.show_rpt_page(1);
    EXPECT_TRUE(has_ink(0));
}
