#include "tests/support/reportonscreen.h"

#include <printman/render/zoom.h>

#include <QFontMetrics>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

namespace {

const QByteArray three_pages = "#!?PAGETOP 60,20\nOne#!?R20,8,8;   12.50\n#!?PAGEEND\n"
                               "#!?PAGETOP\n\nTwo\n#!?PAGEEND\n#!?PAGETOP\n\n\nThree\n#!?PAGEEND\n";

const QRgb black = qRgb(0, 0, 0);
const QRgb surround = qRgb(64, 64, 64);
const QRgb paper = qRgb(255, 255, 0);

class ScreenView : public ReportOnScreen {
protected:
    QSize text_size() const {
        const QFontMetrics metrics(screen()->font(), screen());
        return {60 * metrics.maxWidth(), 20 * metrics.height()};
    }

    /// Whether anything but paper is in the cells of a line.
    bool has_ink(int line) const {
        const QFontMetrics metrics(screen()->font(), screen());
        const QImage picture = image();
        const QRect place(20, 20 + line * metrics.height(), 60 * metrics.maxWidth(),
                          metrics.height());
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x) {
                if (picture.pixel(x, y) != paper)
                    return true;
            }
        }
        return false;
    }
};

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

TEST_F(ScreenView, zoomingWithoutAViewMakesNone) {
    testsupport::write_file(file(), three_pages);
    manager_.init_printman(file().toLocal8Bit().constData());
    EXPECT_EQ(manager_.zoom_rpt_page(QStringLiteral("150%")), 0);
    EXPECT_EQ(manager_.zoomout(), 0);
    EXPECT_EQ(manager_.zoomin(), 0);
    for (const QWidget* widget : QApplication::topLevelWidgets())
        EXPECT_EQ(qobject_cast<const QScrollView*>(widget), nullptr);
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

TEST_F(ScreenView, zoomScalesTheFontInWholePoints) {
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

TEST_F(ScreenView, anUnknownZoomIsZeroPercentAndKeepsTheFontsSize) {
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

TEST_F(ScreenView, aFontOfASizeInPixelsIsZoomedToo) {
    font_.setPixelSize(14);
    show(three_pages);
    const int base = screen()->font().pointSize();
    manager_.zoom_rpt_page(QStringLiteral("200%"));
    EXPECT_EQ(screen()->font().pointSize(), 2 * base);
}

TEST_F(ScreenView, aFontThatDoesNotExistIsReplaced) {
    font_ = QFont(QStringLiteral("No such family"), 10);
    show(three_pages);
    EXPECT_FALSE(image().isNull());
    EXPECT_EQ(manager_.page_row(0).first().drawn.left(), 0);
}

TEST_F(ScreenView, previewFitsThePageToTheViewAndCentresIt) {
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

TEST_F(ScreenView, theZoomIsKeptDuringPreview) {
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

TEST_F(ScreenView, setPreviewCountsFromTheNextLayout) {
    show(three_pages);
    const QSize before = screen()->size();
    manager_.set_preview(true);
    EXPECT_EQ(screen()->size(), before);
    manager_.init_rpt_view(nullptr, nullptr, nullptr);
    EXPECT_EQ(screen()->font().pointSize(), 6);
}

TEST_F(ScreenView, resizingFitsThePreviewAndLeavesTheZoomedPage) {
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

TEST_F(ScreenView, viewsOfNoSizeDoNoHarm) {
    show(three_pages);
    manager_.zoomout();
    for (const QSize& size : {QSize(0, 0), QSize(10, 10), QSize(-1, -1), QSize(31, 1)}) {
        manager_.resize(size);
        EXPECT_GE(screen()->width(), 1);
        EXPECT_GE(screen()->height(), 1);
    }
}

TEST_F(ScreenView, anotherLayoutStartsAtTheTopLeft) {
    show(three_pages);
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    view()->setContentsPos(300, 200);
    EXPECT_GT(view()->contentsX(), 0);
    manager_.zoom_rpt_page(QStringLiteral("250%"));
    EXPECT_EQ(view()->contentsX(), 0);
    EXPECT_EQ(view()->contentsY(), 0);
}

TEST_F(ScreenView, scrollingBringsAPlaceIntoView) {
    show(three_pages);
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    manager_.scroll_rpt_view(QPoint(1000, 900));
    const QSize seen = view()->viewport()->size();
    EXPECT_EQ(view()->contentsX(), 1050 - seen.width());
    EXPECT_EQ(view()->contentsY(), 950 - seen.height());
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

TEST_F(ScreenView, theScreenFontOfTheSettingsIsTakenByTheNextLayout) {
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

TEST_F(ScreenView, theWidgetShowsTheImage) {
    show(three_pages);
    EXPECT_EQ(screen()->grab().toImage(), image());
    manager_.zoomout();
    EXPECT_EQ(screen()->grab().toImage(), image());
}

TEST_F(ScreenView, aPageTooLargeForAnImageIsRefusedAndTheNextZoomIsNot) {
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

TEST_F(ScreenView, withoutAFontTheDefaultOneIsZoomed) {
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

TEST_F(ScreenView, previewNeedsNoScrollBars) {
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
