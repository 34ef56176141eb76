#include <printman/render/pageunits.h>
#include <printman/render/units.h>
#include <printman/render/zoom.h>

#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <limits>

using printman::PageUnits;

namespace {

/// A device of 600 x 400 pixels at 100 dpi across and 50 dpi down.
QImage device() {
    QImage image(600, 400, QImage::Format_RGB32);
    image.setDotsPerMeterX(3937);
    image.setDotsPerMeterY(1969);
    return image;
}

} // namespace

TEST(Units, inchesBecomePixelsOfTheirDirectionCutTowardZero) {
    const QImage image = device();
    const QPaintDeviceMetrics metrics(&image);
    EXPECT_EQ(itopX(1.0, metrics), static_cast<int>(25.4 * 600 / image.widthMM()));
    EXPECT_EQ(itopY(1.0, metrics), static_cast<int>(25.4 * 400 / image.heightMM()));
    EXPECT_EQ(itopX(0.019, metrics), 1);
    EXPECT_EQ(itopX(-0.019, metrics), -1);
}

TEST(Units, zeroInchesAreZeroPixelsWithoutADivision) {
    const QPaintDeviceMetrics nothing(nullptr);
    EXPECT_EQ(itopX(0.0, nothing), 0);
    EXPECT_EQ(itopY(0.0, nothing), 0);
    EXPECT_EQ(itopX(1.0, nothing), 0);
}

TEST(Units, whatIsNoSizeHasNoPixels) {
    const QImage image = device();
    const QPaintDeviceMetrics metrics(&image);
    EXPECT_EQ(itopX(std::numeric_limits<double>::quiet_NaN(), metrics), 0);
    EXPECT_EQ(itopY(std::numeric_limits<double>::infinity(), metrics), 0);
    EXPECT_EQ(itopX(1e300, metrics), std::numeric_limits<int>::max());
}

TEST(PageUnits, aCellIsAsWideAsTheWidestCharacterAndAsHighAsALine) {
    QImage image = device();
    QPainter p(&image);
    p.setFont(QFont(QStringLiteral("Liberation Sans"), 10));
    PageUnits units;
    units.set(p, 80, 66, false, 0, 0);
    const QFontMetrics font = p.fontMetrics();
    EXPECT_EQ(units.char_width(), font.maxWidth());
    EXPECT_EQ(units.line_height(), font.height());
    EXPECT_EQ(units.window(), QSize(80 * font.maxWidth(), 66 * font.height()));
    EXPECT_EQ(p.window(), QRect(QPoint(0, 0), units.window()));
    EXPECT_EQ(units.logical(QRect(2, 3, 4, 1)),
              QRect(2 * font.maxWidth(), 3 * font.height(), 4 * font.maxWidth(), font.height()));
}

TEST(PageUnits, thePageKeepsItsShapeAtTheTopLeftOfAWideDevice) {
    QImage image(2000, 500, QImage::Format_RGB32);
    QPainter p(&image);
    p.setFont(QFont(QStringLiteral("Liberation Mono"), 10));
    PageUnits units;
    units.set(p, 80, 66, false, 0, 0);
    EXPECT_EQ(p.viewport().topLeft(), QPoint(0, 0));
    EXPECT_EQ(p.viewport().height(), 500);
    EXPECT_LT(p.viewport().width(), 2000);
    EXPECT_EQ(units.viewport(), units.window().scaled(2000, 500, Qt::KeepAspectRatio));
}

TEST(PageUnits, marginsShrinkTheViewport) {
    QImage image = device();
    QPainter p(&image);
    p.setFont(QFont(QStringLiteral("Liberation Mono"), 10));
    PageUnits units;
    units.margins = {0.5, 1.0, 0.25, 0.75};
    units.set(p, 300, 10, false, 7, 9);
    const QPaintDeviceMetrics metrics(&image);
    const PageUnits::PixelMargins& pixels = units.pixel_margins();
    EXPECT_EQ(pixels.left, itopX(0.5, metrics));
    EXPECT_EQ(pixels.right, itopX(1.0, metrics));
    EXPECT_EQ(pixels.top, itopY(0.25, metrics));
    EXPECT_EQ(pixels.bottom, itopY(0.75, metrics));
    EXPECT_EQ(p.viewport().topLeft(), QPoint(pixels.left + 7, pixels.top + 9));
    EXPECT_EQ(p.viewport().width(), 600 - pixels.left - pixels.right - 14);
}

TEST(PageUnits, asSecondCallShrinksFromTheViewportThatIsThere) {
    QImage image = device();
    QPainter p(&image);
    PageUnits units;
    units.set(p, 80, 24, false, 20, 20);
    units.set(p, 80, 24, false, 20, 20);
    EXPECT_EQ(p.viewport().topLeft(), QPoint(40, 40));
}

TEST(PageUnits, keepAndNoPageMapLeaveWindowAndViewport) {
    for (const bool keep : {true, false}) {
        QImage image = device();
        QPainter p(&image);
        PageUnits units;
        units.no_page_map = !keep;
        units.set(p, 80, 24, keep, 20, 20);
        EXPECT_EQ(p.window(), QRect(0, 0, 600, 400));
        EXPECT_EQ(p.viewport(), QRect(0, 0, 600, 400));
        EXPECT_EQ(units.char_width(), p.fontMetrics().maxWidth());
    }
}

TEST(PageUnits, marginsWithoutRoomAndGridsWithoutHeightStillMap) {
    QImage image = device();
    QPainter p(&image);
    PageUnits units;
    units.margins = {100, 100, 100, 100};
    units.set(p, 80, 24, false, 0, 0);
    EXPECT_EQ(p.viewport().size(), QSize(1, 1));
    p.end();
    QPainter q(&image);
    PageUnits flat;
    flat.set(q, 32767, 1, false, 0, 0);
    EXPECT_GE(q.viewport().height(), 1);
}

TEST(PageUnits, hostileCellsDoNotOverflow) {
    QImage image = device();
    QPainter p(&image);
    PageUnits units;
    units.set(p, 80, 24, false, 0, 0);
    constexpr int huge = 1 << 29;
    const QRect far = units.logical(QRect(huge, -huge, huge, huge));
    EXPECT_EQ(far.left(), huge);
    EXPECT_EQ(far.top(), -huge);
    EXPECT_GT(far.height(), 0);
}

TEST(Zoom, theTableHasSixRows) {
    EXPECT_EQ(
        printman::zoom_names(),
        (QStringList{QStringLiteral("50%"), QStringLiteral("100%"), QStringLiteral("150%"),
                     QStringLiteral("200%"), QStringLiteral("250%"), QStringLiteral("300%")}));
    EXPECT_EQ(printman::zoom_ratios[6].ratio, 0);
}

TEST(Zoom, onlyTheExactNameHasARatio) {
    EXPECT_EQ(printman::zoom_ratio("50%"), 50);
    EXPECT_EQ(printman::zoom_ratio("300%"), 300);
    for (const char* name : {"75%", "150", " 100%", "", "100% "})
        EXPECT_EQ(printman::zoom_ratio(name), 0) << name;
    EXPECT_EQ(printman::zoom_ratio(nullptr), 0);
}

TEST(Zoom, aPreviewIsCentredAndLeavesThirtyPixels) {
    EXPECT_EQ(get_preview_size(QSize(600, 480)), QSize(570, 450));
    EXPECT_EQ(get_preview_loc(QSize(101, 100), QSize(200, 203)), QPoint(49, 51));
    EXPECT_EQ(get_preview_loc(QSize(203, 100), QSize(200, 100)), QPoint(-1, 0));
}
