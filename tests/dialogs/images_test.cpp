#include "tools/images/artwork.h"

#include <printman/dialogs/embeddedimage.h>
#include <printman/dialogs/images.h>

#include <QMimeData>
#include <gtest/gtest.h>

#include <cstdlib>

using printman::decode_image;
using printman::embedded_images;
using printman::EmbeddedImage;
using printman::find_embedded_image;

namespace {

const QString logo_name = QStringLiteral("korvologo.png");
const QString icon_name = QStringLiteral("korvoicon.png");

QMimeSourceFactory& the_default() {
    return *QMimeSourceFactory::defaultFactory();
}

QImage image_in(const QMimeData* data) {
    return data ? qvariant_cast<QImage>(data->imageData()) : QImage();
}

/// A record over pixels that a test made up.
struct MadeUp {
    MadeUp(QSize size, int depth, const QByteArray& bytes) : compressed(qCompress(bytes)) {
        record.width = size.width();
        record.height = size.height();
        record.depth = depth;
        record.pixels = reinterpret_cast<const unsigned char*>(compressed.constData());
        record.pixels_size = static_cast<unsigned>(compressed.size());
        record.name = "made up";
    }

    QByteArray compressed;
    EmbeddedImage record{};
};

/// By how much the components of two pictures differ, on average.
double difference(const QImage& one, const QImage& other) {
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
                   std::abs(qBlue(a) - qBlue(b));
        }
    }
    return sum / (3.0 * one.width() * one.height());
}

} // namespace

TEST(EmbeddedImages, theTableHasBothAndAnEnd) {
    const EmbeddedImage* const table = embedded_images();
    EXPECT_STREQ(table[0].name, "korvologo.png");
    EXPECT_STREQ(table[1].name, "korvoicon.png");
    EXPECT_EQ(table[2].pixels, nullptr);
    for (const EmbeddedImage* image = table; image->pixels; ++image) {
        EXPECT_EQ(image->depth, 32);
        EXPECT_EQ(image->colors, 0);
        EXPECT_EQ(image->color_table, nullptr);
        EXPECT_FALSE(image->has_alpha);
    }
}

TEST(EmbeddedImages, decompressToAllTheirPixels) {
    constexpr int sizes[] = {52800, 6800};
    const EmbeddedImage* const table = embedded_images();
    for (int i = 0; i < 2; ++i) {
        const QByteArray pixels =
            qUncompress(table[i].pixels, static_cast<int>(table[i].pixels_size));
        EXPECT_EQ(pixels.size(), sizes[i]);
        EXPECT_EQ(table[i].width * table[i].height * 4, sizes[i]);
    }
}

TEST(EmbeddedImages, areWhatTheDrawingProgramDraws) {
    const EmbeddedImage* const table = embedded_images();
    const QImage drawn[] = {draw_logo(), draw_icon()};
    for (int i = 0; i < 2; ++i) {
        const QImage embedded = decode_image(table[i]);
        ASSERT_EQ(embedded.size(), drawn[i].size());
        EXPECT_EQ(embedded.format(), QImage::Format_RGB32);
        // Another version of the toolkit may smooth an edge by another shade.
        EXPECT_LT(difference(embedded, drawn[i]), 0.5) << "run tools/images again";
    }
}

TEST(EmbeddedImages, pixelsAreLittleEndianWordsOnEveryMachine) {
    const MadeUp image(QSize(2, 1), 32,
                       QByteArray::fromHex("33221180"
                                           "66554400"));
    const QImage plain = decode_image(image.record);
    EXPECT_EQ(plain.format(), QImage::Format_RGB32);
    EXPECT_EQ(plain.pixel(0, 0), qRgb(0x11, 0x22, 0x33));
    EXPECT_EQ(plain.pixel(1, 0), qRgb(0x44, 0x55, 0x66));
    EmbeddedImage with_alpha = image.record;
    with_alpha.has_alpha = true;
    EXPECT_TRUE(decode_image(with_alpha).hasAlphaChannel());
    EXPECT_EQ(decode_image(with_alpha).pixel(0, 0), qRgba(0x11, 0x22, 0x33, 0x80));
}

TEST(EmbeddedImages, mayHaveAColorTable) {
    const QRgb colors[] = {qRgb(1, 2, 3), qRgb(4, 5, 6)};
    MadeUp bytes(QSize(3, 2), 8, QByteArray::fromHex("0001000001010000"));
    MadeUp bits(QSize(3, 2), 1, QByteArray::fromHex("40000000C0000000"));
    for (MadeUp* image : {&bytes, &bits}) {
        image->record.colors = 2;
        image->record.color_table = colors;
        const QImage decoded = decode_image(image->record);
        ASSERT_EQ(decoded.size(), QSize(3, 2)) << image->record.depth;
        EXPECT_EQ(decoded.pixel(0, 0), colors[0]);
        EXPECT_EQ(decoded.pixel(1, 0), colors[1]);
        EXPECT_EQ(decoded.pixel(2, 0), colors[0]);
        EXPECT_EQ(decoded.pixel(0, 1), colors[1]);
        EXPECT_EQ(decoded.pixel(1, 1), colors[1]);
    }
}

TEST(EmbeddedImages, damagedOrMissingPixelsMakeNoImage) {
    EXPECT_TRUE(decode_image(MadeUp(QSize(2, 2), 32, QByteArray(15, 'x')).record).isNull());
    EXPECT_TRUE(decode_image(MadeUp(QSize(2, 2), 32, QByteArray()).record).isNull());
    EXPECT_TRUE(decode_image(MadeUp(QSize(0, 2), 32, QByteArray(16, 'x')).record).isNull());
    EXPECT_TRUE(decode_image(MadeUp(QSize(2, -1), 32, QByteArray(16, 'x')).record).isNull());
    EXPECT_TRUE(decode_image(MadeUp(QSize(2, 2), 7, QByteArray(16, 'x')).record).isNull());
    MadeUp cut(QSize(2, 2), 32, QByteArray(16, 'x'));
    EXPECT_FALSE(decode_image(cut.record).isNull());
    cut.record.pixels_size = 6;
    EXPECT_TRUE(decode_image(cut.record).isNull());
}

TEST(EmbeddedImages, theFirstOfANameIsFound) {
    const unsigned char pixels[] = {0};
    const EmbeddedImage images[] = {{1, 1, 32, pixels, 1, 0, nullptr, false, "caf\xc3\xa9.png"},
                                    {2, 2, 32, pixels, 1, 0, nullptr, false, "two.png"},
                                    {3, 3, 32, pixels, 1, 0, nullptr, false, "two.png"},
                                    {}};
    EXPECT_EQ(find_embedded_image(images, QString::fromUtf8("caf\xc3\xa9.png")), images);
    EXPECT_EQ(find_embedded_image(images, QStringLiteral("two.png")), images + 1);
    EXPECT_EQ(find_embedded_image(images, QStringLiteral("Two.png")), nullptr);
    EXPECT_EQ(find_embedded_image(images, QString()), nullptr);
}

TEST(Images, areThereWhenTheLibraryIsLoaded) {
    EXPECT_EQ(the_default().pixmap(logo_name).size(), QSize(200, 66));
    EXPECT_EQ(the_default().pixmap(icon_name).size(), QSize(68, 25));
    EXPECT_FALSE(the_default().pixmap(logo_name).hasAlphaChannel());
}

TEST(Images, aSecondRequestIsServedFromTheStore) {
    MimeSourceFactory_printman factory;
    const QMimeData* const first = factory.data(logo_name);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(factory.data(logo_name), first);
    EXPECT_EQ(image_in(factory.data(logo_name)).cacheKey(), image_in(first).cacheKey());
    EXPECT_NE(factory.data(icon_name), first);
}

TEST(Images, anUnknownNameHasNothing) {
    MimeSourceFactory_printman factory;
    for (const QString& name : {QStringLiteral("korvologo"), QStringLiteral("KorvoLogo.png"),
                                QStringLiteral("korvologo.png "), QStringLiteral(""), QString()}) {
        EXPECT_EQ(factory.data(name), nullptr);
        EXPECT_EQ(factory.data(name), nullptr);
        EXPECT_EQ(the_default().data(name), nullptr);
    }
}

TEST(Images, areRegisteredOnceAndMayBeTakenAway) {
    qInitImages_printman();
    qInitImages_printman();
    EXPECT_NE(the_default().data(logo_name), nullptr);
    qCleanupImages_printman();
    EXPECT_EQ(the_default().data(logo_name), nullptr);
    EXPECT_TRUE(the_default().pixmap(icon_name).isNull());
    qCleanupImages_printman();
    qInitImages_printman();
    EXPECT_NE(the_default().data(logo_name), nullptr);
}

TEST(Images, oneOfTheHostGoesBeforeTheLibrarys) {
    QImage own(5, 5, QImage::Format_RGB32);
    own.fill(Qt::green);
    the_default().setImage(logo_name, own);
    EXPECT_EQ(the_default().pixmap(logo_name).size(), QSize(5, 5));
    the_default().setImage(logo_name, QImage());
    EXPECT_EQ(the_default().pixmap(logo_name).size(), QSize(200, 66));
}
