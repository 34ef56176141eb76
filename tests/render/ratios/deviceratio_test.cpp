#include "tests/support/reportonscreen.h"

#include <QFontMetrics>
#include <QTest>

// Run at several device pixel ratios, which the environment sets: everything but the number of
// pixels is the same at each.

namespace {

const QByteArray report =
    "#!?PAGETOP 60,20\nAlpha beta         #!?R20,8,8;   12.50\n\nGamma\n#!?PAGEEND\n";
const QRgb paper = qRgb(255, 255, 0);

class DeviceRatio : public ReportOnScreen {
protected:
    DeviceRatio() { show(report); }

    double ratio() const { return screen()->devicePixelRatioF(); }

    /// A device pixel of the image at a logical place.
    QRgb pixel(double x, double y) const {
        return image().pixel(static_cast<int>(x * ratio()), static_cast<int>(y * ratio()));
    }

    QPoint at(int column, int row) const {
        const QFontMetrics metrics(screen()->font(), screen());
        return {20 + column * metrics.maxWidth() + metrics.maxWidth() / 2,
                20 + row * metrics.height() + metrics.height() / 2};
    }
};

} // namespace

TEST_F(DeviceRatio, isThatOfTheEnvironment) {
    const QByteArray asked = qgetenv("QT_SCALE_FACTOR");
    EXPECT_EQ(ratio(), asked.isEmpty() ? 1.0 : asked.toDouble());
    EXPECT_EQ(manager_.page_image()->devicePixelRatio(), ratio());
}

TEST_F(DeviceRatio, theImageHasTheScreensDevicePixels) {
    const QSizeF pixels = QSizeF(screen()->size()) * ratio();
    EXPECT_NEAR(image().width(), pixels.width(), 1);
    EXPECT_NEAR(image().height(), pixels.height(), 1);
    const QFontMetrics metrics(screen()->font(), screen());
    const QSize text(60 * metrics.maxWidth(), 20 * metrics.height());
    EXPECT_EQ(screen()->size() - QSize(40, 40),
              manager_.get_page_size().scaled(text, Qt::KeepAspectRatioByExpanding));
}

TEST_F(DeviceRatio, theSheetStandsAtItsLogicalPlace) {
    EXPECT_EQ(pixel(10, 10), qRgb(64, 64, 64));
    EXPECT_EQ(pixel(25, screen()->height() - 25), paper);
    EXPECT_EQ(pixel(19.5, 100), qRgb(0, 0, 0));
    EXPECT_EQ(pixel(screen()->width() - 0.5, 5), qRgb(64, 64, 64));
    // To the last pixel of the image.
    EXPECT_EQ(image().pixel(image().width() - 1, image().height() - 1), qRgb(64, 64, 64));
    manager_.zoomout();
    EXPECT_EQ(pixel(screen()->width() - 0.9, screen()->height() - 0.9), paper);
}

TEST_F(DeviceRatio, textIsAsSharpAsTheDeviceAllows) {
    // A stem of a letter is at most two device pixels of grey wide, however many there are.
    const QImage picture = image();
    const QRect place = manager_.page_row(0).first().drawn.translated(20, 20);
    int solid = 0;
    int edges = 0;
    for (int y = place.top() * ratio(); y < place.bottom() * ratio(); ++y) {
        for (int x = place.left() * ratio(); x < place.right() * ratio(); ++x) {
            const QRgb found = picture.pixel(x, y);
            solid += found == qRgb(255, 0, 0);
            edges += found != qRgb(255, 0, 0) && found != paper;
        }
    }
    EXPECT_GT(solid, 0);
    if (ratio() == 2.0) {
        // An image of single pixels that was stretched would have them in pairs.
        bool has_odd_run = false;
        for (int y = place.top() * 2; y < place.bottom() * 2 && !has_odd_run; ++y) {
            for (int x = place.left() * 2; x < place.right() * 2; x += 2)
                has_odd_run |= picture.pixel(x, y) != picture.pixel(x + 1, y);
        }
        EXPECT_TRUE(has_odd_run);
    }
    EXPECT_GT(edges, 0);
}

TEST_F(DeviceRatio, theMouseSelectsWhatIsUnderIt) {
    QTest::mousePress(screen(), Qt::LeftButton, {}, at(0, 0));
    QTest::mouseMove(screen(), at(29, 0));
    QTest::mouseRelease(screen(), Qt::LeftButton, {}, at(29, 0));
    ASSERT_EQ(manager_.hilights().size(), 2U);
    EXPECT_EQ(manager_.hilights().front().text, manager_.page_row(0).front().text);
    const QRect place = manager_.hilights().front().drawn.translated(20, 20);
    EXPECT_EQ(pixel(place.left() + 0.5, place.top() + 0.5), qRgb(0, 0, 0));
    QTest::mousePress(screen(), Qt::LeftButton, {}, at(0, 2));
    QTest::mouseMove(screen(), at(10, 2));
    EXPECT_EQ(manager_.hilights().front().text, QStringLiteral("Gamma"));
}

TEST_F(DeviceRatio, nothingOfAHighlightStays) {
    for (const bool preview : {false, true}) {
        if (preview)
            manager_.zoomout();
        const QImage before = image();
        manager_.mouse_press(QPoint(screen()->width() / 9, screen()->height() / 9));
        for (int step = 0; step < 20; ++step) {
            manager_.mouse_move(
                QPoint(step * 389 % screen()->width(), step * 83 % (screen()->height() / 2)));
        }
        manager_.clear_hilights();
        EXPECT_EQ(image(), before) << preview;
    }
}

TEST_F(DeviceRatio, theWidgetShowsTheImageAsItIs) {
    // A screen has no half pixels: the image may have one more.
    const QImage shown = screen()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QSize common = shown.size().boundedTo(image().size());
    EXPECT_LE(image().width() - common.width(), 1);
    EXPECT_LE(image().height() - common.height(), 1);
    EXPECT_EQ(shown.copy(QRect({0, 0}, common)),
              image().convertToFormat(QImage::Format_RGB32).copy(QRect({0, 0}, common)));
}
