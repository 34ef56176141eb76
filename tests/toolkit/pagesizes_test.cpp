#include <printman/toolkit/pagesizes.h>
#include <printman/toolkit/qpaintdevicemetrics.h>

#include <QImage>
#include <gtest/gtest.h>

namespace {

struct Paper {
    const char* name;
    double width;
    double height;
};

// In the order of the page-size numbers, in millimetres.
constexpr Paper papers[] = {
    {"A4", 210, 297},
    {"B5", 182, 257},
    {"Letter", 215.9, 279.4},
    {"Legal", 215.9, 355.6},
    {"Executive", 190.5, 254},
    {"A0", 841, 1189},
    {"A1", 594, 841},
    {"A2", 420, 594},
    {"A3", 297, 420},
    {"A5", 148, 210},
    {"A6", 105, 148},
    {"A7", 74, 105},
    {"A8", 52, 74},
    {"A9", 37, 52},
    {"B0", 1030, 1456},
    {"B1", 728, 1030},
    {"B10", 32, 45},
    {"B2", 515, 728},
    {"B3", 364, 515},
    {"B4", 257, 364},
    {"B6", 128, 182},
    {"B7", 91, 128},
    {"B8", 64, 91},
    {"B9", 45, 64},
    {"C5E", 163, 229},
    {"Comm10E", 104.8, 241.3},
    {"DLE", 110, 220},
    {"Folio", 210, 330},
    {"Ledger", 431.8, 279.4},
    {"Tabloid", 279.4, 431.8},
};

} // namespace

TEST(PageSizes, everyNumberHasTheSizeOfItsPaper) {
    static_assert(std::size(papers) == printman::page_size_count);
    for (int number = 0; number < printman::page_size_count; ++number) {
        const QSizeF size = printman::page_size_of(number).size(QPageSize::Millimeter);
        EXPECT_STREQ(printman::page_size_name(number), papers[number].name);
        EXPECT_NEAR(size.width(), papers[number].width, 0.1) << papers[number].name;
        EXPECT_NEAR(size.height(), papers[number].height, 0.1) << papers[number].name;
    }
}

TEST(PageSizes, otherNumbersAreNoSize) {
    for (const int number : {-1, 30, 1000}) {
        EXPECT_FALSE(printman::page_size_of(number).isValid());
        EXPECT_EQ(printman::page_size_name(number), nullptr);
    }
}

TEST(PaintDeviceMetrics, areThoseOfTheDevice) {
    QImage image(600, 300, QImage::Format_RGB32);
    image.setDotsPerMeterX(3000);
    image.setDotsPerMeterY(3000);
    const QPaintDeviceMetrics metrics(&image);
    EXPECT_EQ(metrics.width(), 600);
    EXPECT_EQ(metrics.height(), 300);
    EXPECT_EQ(metrics.widthMM(), 200);
    EXPECT_EQ(metrics.heightMM(), 100);
}

TEST(PaintDeviceMetrics, ofNoDeviceAreZero) {
    const QPaintDeviceMetrics metrics(nullptr);
    EXPECT_EQ(metrics.width(), 0);
    EXPECT_EQ(metrics.heightMM(), 0);
}
