#include "tests/support/tools.h"

#include <printman/render/itempainter.h>
#include <printman/toolkit/psprinter.h>

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace printman;

namespace {

constexpr int columns = 40;
constexpr int lines = 4;

StringItem item(int column, int line, int width, const QString& text, int align) {
    StringItem made;
    made.cell = QRect(column, line, width, 1);
    made.text = text;
    made.align = static_cast<int16_t>(align);
    return made;
}

/// The smallest rectangle that holds every pixel that is not white.
QRect ink(const QImage& image) {
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

/// A page on an image whose pixels are the logical units.
class ItemPainting : public testing::Test {
protected:
    ItemPainting() {
        QImage probe(1, 1, QImage::Format_RGB32);
        QPainter measuring(&probe);
        measuring.setFont(font_);
        units_.set(measuring, columns, lines, false, 0, 0);
        image_ = QImage(units_.window(), QImage::Format_RGB32);
        image_.fill(Qt::white);
    }

    QRect paint(std::vector<QValueList<StringItem>>& rows) {
        QPainter p(&image_);
        p.setFont(font_);
        units_.set(p, columns, lines, false, 0, 0);
        ItemPainter(p, units_).draw_page(rows);
        p.end();
        return ink(image_);
    }

    QFont font_{QStringLiteral("Liberation Mono"), 12};
    PageUnits units_;
    QImage image_;
};

} // namespace

TEST_F(ItemPainting, drawnIsTheTextsRectangleInItsCell) {
    std::vector<QValueList<StringItem>> rows(lines);
    rows[1] << item(2, 1, 20, QStringLiteral("left"), 2)
            << item(22, 1, 10, QStringLiteral("right"), 3);
    rows[2] << item(0, 2, 40, QStringLiteral("mid"), 4);
    paint(rows);
    const int cw = units_.char_width();
    const int lh = units_.line_height();
    QImage probe(1, 1, QImage::Format_RGB32);
    QPainter p(&probe);
    p.setFont(font_);
    for (const QValueList<StringItem>& row : rows) {
        for (const StringItem& each : row) {
            const QRect cell = units_.logical(each.cell);
            const QRect qt = p.boundingRect(cell,
                                            each.align == 3   ? Qt::AlignRight
                                            : each.align == 4 ? Qt::AlignHCenter
                                                              : Qt::AlignLeft,
                                            each.text);
            EXPECT_EQ(each.drawn.left(), qt.left());
            EXPECT_EQ(each.drawn.right(), qt.right());
            EXPECT_EQ(each.drawn.top(), cell.top());
            EXPECT_EQ(each.drawn.height(), lh);
            EXPECT_LT(each.drawn.width(), cell.width());
        }
    }
    EXPECT_EQ(rows[1][0].drawn.left(), 2 * cw);
    EXPECT_EQ(rows[1][1].drawn.right(), 32 * cw - 1);
}

TEST_F(ItemPainting, theInkLiesInsideTheDrawnRectangle) {
    for (const int align : {2, 3, 4}) {
        image_.fill(Qt::white);
        std::vector<QValueList<StringItem>> rows(lines);
        rows[2] << item(5, 2, 30, QStringLiteral("HgH"), align);
        const QRect found = paint(rows);
        EXPECT_FALSE(found.isEmpty());
        EXPECT_TRUE(rows[2][0].drawn.contains(found)) << align;
    }
}

TEST_F(ItemPainting, alignmentThreeIsFlushRightAndSevenIsLeft) {
    std::vector<QValueList<StringItem>> rows(lines);
    rows[0] << item(10, 0, 8, QStringLiteral("12"), 3);
    const QRect right = paint(rows);
    EXPECT_GE(right.left(), 16 * units_.char_width());
    EXPECT_LT(right.right(), 18 * units_.char_width());
    image_.fill(Qt::white);
    rows[0] = {item(10, 0, 8, QStringLiteral("12"), 7)};
    const QRect left = paint(rows);
    EXPECT_GE(left.left(), 10 * units_.char_width());
    EXPECT_LT(left.right(), 12 * units_.char_width());
}

TEST_F(ItemPainting, thePainterKeepsItsPenAndFont) {
    std::vector<QValueList<StringItem>> rows(lines);
    rows[0] << item(0, 0, 8, QStringLiteral("text"), 2);
    QPainter p(&image_);
    p.setFont(font_);
    p.setPen(Qt::red);
    ItemPainter(p, units_).draw_page(rows);
    EXPECT_EQ(p.font(), font_);
    EXPECT_EQ(p.pen().color(), QColor(Qt::red));
    p.end();
    int red = 0;
    for (int x = 0; x < image_.width(); ++x)
        red += image_.pixelColor(x, units_.line_height() / 2).green() < 128;
    EXPECT_GT(red, 0);
}

TEST_F(ItemPainting, aHighlightIsDrawnInItsOwnRectangle) {
    StringItem piece = item(0, 0, 4, QStringLiteral("cut"), 3);
    piece.drawn = QRect(100, 2 * units_.line_height(), 90, units_.line_height());
    QPainter p(&image_);
    p.setFont(font_);
    ItemPainter(p, units_).draw_highlight(piece);
    p.end();
    const QRect found = ink(image_);
    EXPECT_TRUE(piece.drawn.contains(found));
    EXPECT_GE(found.left(), 190 - 3 * units_.char_width());
}

TEST_F(ItemPainting, aSoftHyphenIsAHyphenInItsCell) {
    std::vector<QValueList<StringItem>> rows(lines);
    rows[0] << item(0, 0, 20, QStringLiteral("A\u00adB\u00adC 12"), 2);
    rows[1] << item(0, 1, 20, QStringLiteral("A-B-C 12"), 2);
    paint(rows);
    EXPECT_EQ(rows[0][0].drawn.width(), rows[1][0].drawn.width());
    EXPECT_EQ(rows[0][0].text, QStringLiteral("A\u00adB\u00adC 12"));
    const int height = units_.line_height();
    EXPECT_EQ(image_.copy(0, 0, image_.width(), height),
              image_.copy(0, height, image_.width(), height));
}

TEST_F(ItemPainting, textOfEveryKindComesBackFromAPage) {
    QTemporaryDir scratch;
    for (const char* family : {"Liberation Mono", "Liberation Sans", "DejaVu Sans Mono"}) {
        for (int size = 5; size <= 20; ++size) {
            const QString ps = scratch.filePath(QStringLiteral("%1.ps").arg(size));
            PsPrinter printer;
            printer.setOutputFileName(ps);
            QPainter p;
            ASSERT_TRUE(p.begin(&printer));
            p.setFont(QFont(QString::fromLatin1(family), size));
            PageUnits units;
            units.set(p, columns, lines, false, 0, 0);
            // The snowman is in no text font: it goes through the painter, between straight text.
            std::vector<QValueList<StringItem>> rows(lines);
            rows[0] << item(0, 0, 9, QStringLiteral("first"), 2);
            rows[1] << item(4, 1, 12, QStringLiteral("snow ☃"), 3);
            rows[2] << item(0, 2, 9, QStringLiteral("soft\u00adhyphen"), 2);
            rows[3] << item(20, 3, 9, QStringLiteral("last"), 4);
            ItemPainter(p, units).draw_page(rows);
            ASSERT_TRUE(p.end());
            EXPECT_EQ(testsupport::pdf_words(testsupport::make_pdf(ps)).join(u' '),
                      QStringLiteral("first snow ☃ soft-hyphen last"))
                << family << size;
        }
    }
}

TEST_F(ItemPainting, textTakesTheSamePlaceStraightAndThroughThePainter) {
    QTemporaryDir scratch;
    QString boxes[2];
    for (const bool straight : {true, false}) {
        const QString ps =
            scratch.filePath(straight ? QStringLiteral("a.ps") : QStringLiteral("b.ps"));
        PsPrinter printer;
        printer.setOutputFileName(ps);
        QPainter p;
        ASSERT_TRUE(p.begin(&printer));
        // A clip is what the straight way leaves to the painter.
        if (!straight)
            p.setClipRect(QRect(0, 0, 10000, 10000));
        p.setFont(QFont(QStringLiteral("Liberation Mono"), 10));
        PageUnits units;
        units.set(p, columns, lines, false, 0, 0);
        std::vector<QValueList<StringItem>> rows(lines);
        rows[0] << item(0, 0, 9, QStringLiteral("Total  x"), 2)
                << item(10, 0, 12, QStringLiteral("1,50"), 3);
        rows[3] << item(0, 3, 40, QStringLiteral("Größe"), 4);
        ItemPainter(p, units).draw_page(rows);
        ASSERT_TRUE(p.end());
        const QString pdf = testsupport::make_pdf(ps);
        boxes[straight] =
            QString::fromUtf8(testsupport::run(QStringLiteral("pdftotext"),
                                               {QStringLiteral("-bbox"), pdf, QStringLiteral("-")})
                                  .out);
    }
    const QRegularExpression word(
        QStringLiteral("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\".*>([^<]+)</word"));
    auto one = word.globalMatch(boxes[0]);
    auto two = word.globalMatch(boxes[1]);
    int words = 0;
    while (one.hasNext() && two.hasNext()) {
        const auto a = one.next();
        const auto b = two.next();
        EXPECT_EQ(a.captured(4), b.captured(4));
        for (const int place : {1, 2, 3})
            EXPECT_NEAR(a.captured(place).toDouble(), b.captured(place).toDouble(), 0.3)
                << a.captured(4).toStdString() << place;
        ++words;
    }
    EXPECT_EQ(words, 4);
    EXPECT_EQ(one.hasNext(), two.hasNext());
}

TEST_F(ItemPainting, aTextThatFillsItsCellLosesNothingAtAnyScale) {
    // Where Qt's layout is higher than the font's line, it clips what is drawn in a cell.
    const auto paint_in = [this](int width, int points, int percent) {
        const QSize size = QSize(280, 36) * percent / 100;
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        std::vector<QValueList<StringItem>> rows(lines);
        rows[1] << item(4, 1, width, QStringLiteral("M. Hartwell  555-0134"), 2);
        QPainter p(&image);
        QFont small(QStringLiteral("Liberation Mono"), points);
        small.setHintingPreference(QFont::PreferFullHinting);
        p.setFont(small);
        units_.set_in(p, columns, lines, image.rect());
        ItemPainter(p, units_).draw_page(rows);
        p.end();
        return image;
    };
    for (int points = 5; points <= 14; ++points) {
        for (int percent = 30; percent <= 250; percent += 7)
            EXPECT_EQ(paint_in(21, points, percent), paint_in(30, points, percent))
                << points << ' ' << percent;
    }
}
