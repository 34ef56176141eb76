#include <printman/render/textruler.h>
#include <printman/toolkit/psprinter.h>

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <cmath>

using printman::alignment_flags;
using printman::TextRuler;

namespace {

constexpr const char* families[] = {"Liberation Mono", "Liberation Sans", "DejaVu Sans Mono",
                                    "Nimbus Mono PS"};
const QString texts[] = {
    QStringLiteral("T"),          QStringLiteral("Total"),      QStringLiteral("Total    "),
    QStringLiteral("   "),        QStringLiteral("  1.234,50"), QStringLiteral("Größe é"),
    QStringLiteral("AVATAR To."), QStringLiteral("a\tb\rc"),    QStringLiteral("snow ☃")};

} // namespace

TEST(TextRuler, isAsWideAsTheTextAtEveryFontSizeAndAlignment) {
    QImage image(10, 10, QImage::Format_RGB32);
    QPainter p(&image);
    for (const char* family : families) {
        for (int size = 5; size <= 36; ++size) {
            p.setFont(QFont(QString::fromLatin1(family), size));
            const QFontMetricsF font(p.font(), &image);
            const TextRuler ruler(p);
            for (QString text : texts) {
                const QRect cell(10, 20, 1001, p.fontMetrics().height());
                const QRect left = ruler.bounding_rect(cell, alignment_flags(2), text);
                const QRect right = ruler.bounding_rect(cell, alignment_flags(3), text);
                const QRect centre = ruler.bounding_rect(cell, alignment_flags(4), text);
                const QRect qt = p.boundingRect(cell, alignment_flags(2), text);
                text.replace(u'\t', u' ').replace(u'\r', u' ');
                const int width = static_cast<int>(std::ceil(font.horizontalAdvance(text)));
                EXPECT_EQ(left.width(), width) << family << size << text.toStdString();
                EXPECT_EQ(left.left(), cell.left());
                EXPECT_EQ(right.right(), cell.right());
                EXPECT_EQ(right.width(), width);
                EXPECT_NEAR(centre.center().x(), cell.center().x(), 1);
                // Qt adds what the last glyph reaches over its width, a pixel at the most.
                EXPECT_NEAR(left.right(), qt.right(), 1) << family << size << text.toStdString();
            }
        }
    }
}

TEST(TextRuler, isOneLineHighAtEveryFontAndSize) {
    QImage image(10, 10, QImage::Format_RGB32);
    QPainter p(&image);
    int taller_in_qt = 0;
    for (const char* family : families) {
        for (int size = 5; size <= 36; ++size) {
            p.setFont(QFont(QString::fromLatin1(family), size));
            const int height = p.fontMetrics().height();
            const QRect cell(0, 7 * height, 1000, height);
            const QRect ours = TextRuler(p).bounding_rect(cell, alignment_flags(2), texts[1]);
            EXPECT_EQ(ours.top(), cell.top()) << family << size;
            EXPECT_EQ(ours.bottom(), cell.bottom()) << family << size;
            taller_in_qt += p.boundingRect(cell, alignment_flags(2), texts[1]).height() > height;
        }
    }
    // What the ruler is there for.
    EXPECT_GT(taller_in_qt, 0);
}

TEST(TextRuler, measuresAtTheDevicesResolution) {
    PsPrinter printer;
    printer.setOutputFileName(QStringLiteral("/dev/null"));
    QPainter p;
    ASSERT_TRUE(p.begin(&printer));
    p.setFont(QFont(QStringLiteral("Liberation Mono"), 12));
    EXPECT_NEAR(TextRuler(p).width(QStringLiteral("0123456789")), 600, 1);
    EXPECT_NEAR(TextRuler(p).height(), 113, 2);
    EXPECT_EQ(TextRuler(p).height(), p.fontMetrics().height());
}

TEST(TextRuler, spacingCountsBetweenCharacters) {
    QImage image(10, 10, QImage::Format_RGB32);
    QPainter p(&image);
    QFont font(QStringLiteral("Liberation Mono"), 12);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 3);
    p.setFont(font);
    const QRect cell(0, 0, 500, 20);
    EXPECT_EQ(TextRuler(p).bounding_rect(cell, Qt::AlignLeft, texts[1]).width(),
              p.boundingRect(cell, Qt::AlignLeft, texts[1]).width());
}

TEST(AlignmentFlags, areLeftForAllButThreeAndFour) {
    EXPECT_EQ(printman::alignment_flags(3), Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(printman::alignment_flags(4), Qt::AlignHCenter | Qt::AlignVCenter);
    for (const int code : {-1, 0, 1, 2, 5, 7, 255})
        EXPECT_EQ(printman::alignment_flags(code), Qt::AlignLeft | Qt::AlignVCenter) << code;
}
