#include "tests/postscript/psprinterpdf.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QRawFont>
#include <QRegularExpression>

using namespace testsupport;

namespace {

struct Ink {
    int pixels = 0;
    QRect place;
};

/// What is dark in a picture.
Ink ink(const QImage& picture) {
    Ink found;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) >= 128)
                continue;
            ++found.pixels;
            found.place |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

const QString syntax = QStringLiteral("(a) )b( \\c %!PS <<d>> {e} showpage /f [g] quit");

} // namespace

TEST_F(PsPrinterPdf, textComesBackWithItsAccents) {
    const QString text = QStringLiteral("Größe é ß ñ Ç å Ø æ £ § ½ 100% € “quoted” – dash");
    for (const char* family : {"Liberation Mono", "Liberation Sans", "DejaVu Sans"}) {
        print_text(family, text);
        EXPECT_EQ(words(), text) << family;
    }
}

TEST_F(PsPrinterPdf, everyPrintableLatin1CharacterComesBack) {
    QStringList expected;
    print([&](QPainter& p) {
        p.setFont(QFont(QStringLiteral("Liberation Mono"), 10));
        int y = 100;
        for (int first = 0x20; first < 0x100; first += 16, y += 150) {
            QString line = QStringLiteral("x");
            for (int c = first; c < first + 16; ++c) {
                const bool shown = (c > 0x20 && c < 0x7f) || (c > 0xa0 && c != 0xad);
                if (shown)
                    line += QChar(c);
            }
            if (line.size() > 1) {
                expected << line;
                p.drawText(100, y, line);
            }
        }
    });
    // pdftotext puts a spacing diacritic apart; that is all that may differ.
    EXPECT_EQ(pdf_words(pdf_).join(QString()), expected.join(QString()));
}

TEST_F(PsPrinterPdf, textThatLooksLikePostScriptStaysText) {
    for (const char* family : {"Liberation Mono", "Liberation Sans"}) {
        print_text(family, syntax);
        EXPECT_EQ(words(), syntax) << family;
    }
}

TEST_F(PsPrinterPdf, controlBytesAreBlanks) {
    QString text = QStringLiteral("a");
    for (int c = 1; c < 0x20; ++c) {
        if (c != '\n')
            text += QChar(c);
    }
    print_text("Liberation Mono", text + QStringLiteral("b\x7f\x80\x9f"
                                                        "c"));
    EXPECT_EQ(words(), QStringLiteral("a b c"));
}

TEST_F(PsPrinterPdf, moreThan256CharactersComeBack) {
    QString greek;
    QString cyrillic;
    for (char16_t c = 0x391; c <= 0x3c9; ++c) {
        if (c != 0x3a2)
            greek += QChar(c);
    }
    for (char16_t c = 0x400; c <= 0x45f; ++c)
        cyrillic += QChar(c);
    QString latin;
    for (char16_t c = 0x100; c <= 0x17e; ++c)
        latin += QChar(c);
    const QStringList expected{greek, cyrillic, latin};
    print([&](QPainter& p) {
        p.setFont(QFont(QStringLiteral("DejaVu Sans"), 5));
        for (int i = 0; i < 3; ++i)
            p.drawText(50, 200 + 200 * i, expected[i]);
    });
    EXPECT_EQ(pdf_words(pdf_).join(QString()).normalized(QString::NormalizationForm_KC),
              expected.join(QString()).normalized(QString::NormalizationForm_KC));
}

TEST_F(PsPrinterPdf, noLigatureHidesLetters) {
    print_text("Liberation Sans", QStringLiteral("office affluent fjord fish"));
    EXPECT_EQ(words(), QStringLiteral("office affluent fjord fish"));
}

TEST_F(PsPrinterPdf, fontsAreEmbeddedAndSubset) {
    print([](QPainter& p) {
        int y = 200;
        // TrueType outlines, and ones that come without.
        for (const char* family : {"Liberation Mono", "Liberation Serif", "Nimbus Sans"}) {
            p.setFont(QFont(QString::fromLatin1(family), 12));
            p.drawText(100, y += 200, QStringLiteral("Größe 12,50 €"));
        }
    });
    const QString fonts = QString::fromUtf8(run(QStringLiteral("pdffonts"), {pdf_}).out);
    const QStringList rows = fonts.split(u'\n', Qt::SkipEmptyParts).mid(2);
    ASSERT_EQ(rows.size(), 3) << fonts.toStdString();
    const QRegularExpression embedded(QStringLiteral("^[A-Z]{6}\\+.* yes yes yes "));
    for (const QString& row : rows)
        EXPECT_TRUE(embedded.match(row).hasMatch()) << row.toStdString();
    EXPECT_EQ(words(), QStringLiteral("Größe 12,50 € Größe 12,50 € Größe 12,50 €"));
    EXPECT_LT(read_file(pdf_).size(), 60000);
}

TEST_F(PsPrinterPdf, charactersBeyondTheFontComeFromAnother) {
    print_text("Liberation Mono", QStringLiteral("snow ☃ and arrow →"));
    EXPECT_EQ(words(), QStringLiteral("snow ☃ and arrow →"));
}

TEST_F(PsPrinterPdf, kernedTextEndsWhereItsFontSaysItDoes) {
    double start = 0;
    double width = 0;
    print([&](QPainter& p) {
        QFont font(QStringLiteral("Liberation Serif"), 24);
        p.setFont(font);
        start = 100;
        width = QFontMetricsF(font, &printer_).horizontalAdvance(QStringLiteral("AVAToTeVAWAY."));
        p.drawText(QPointF(start, 600), QStringLiteral("AVAToTeVAWAY."));
    });
    const QString box = QString::fromUtf8(
        run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf_, QStringLiteral("-")}).out);
    const QRegularExpression word(
        QStringLiteral("xMin=\"([0-9.]+)\".*xMax=\"([0-9.]+)\".*>AVAToTeVAWAY.<"));
    const auto match = word.match(box);
    ASSERT_TRUE(match.hasMatch()) << box.toStdString();
    const double left_margin = printer_.pageLayout().margins(QPageLayout::Point).left();
    EXPECT_NEAR(match.captured(1).toDouble(), left_margin + start * 0.12, 0.5);
    EXPECT_NEAR(match.captured(2).toDouble(), left_margin + (start + width) * 0.12, 1.0);
}

TEST_F(PsPrinterPdf, aStretchedFontLeavesItsFaceAlone) {
    const auto width_of_last_word = [this] {
        const QString box = QString::fromUtf8(
            run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf_, QStringLiteral("-")})
                .out);
        static const QRegularExpression word(
            QStringLiteral("xMin=\"([0-9.]+)\".*xMax=\"([0-9.]+)\".*>Hamburgefonts<"));
        const auto match = word.match(box);
        return match.captured(2).toDouble() - match.captured(1).toDouble();
    };
    print_text("Nimbus Sans", QStringLiteral("Hamburgefonts"));
    const double plain = width_of_last_word();
    print([](QPainter& p) {
        QFont font(QStringLiteral("Nimbus Sans"), 12);
        font.setStretch(50);
        p.setFont(font);
        p.drawText(100, 200, QStringLiteral("narrow"));
        font.setStretch(QFont::Unstretched);
        p.setFont(font);
        p.drawText(100, 600, QStringLiteral("Hamburgefonts"));
    });
    EXPECT_GT(plain, 50);
    EXPECT_NEAR(width_of_last_word(), plain, 0.5);
}

TEST_F(PsPrinterPdf, glyphRunsArePainted) {
    print([](QPainter& p) {
        const QRawFont font = QRawFont::fromFont(QFont(QStringLiteral("Liberation Mono"), 12));
        QGlyphRun glyphs;
        QRawFont large = font;
        large.setPixelSize(1000);
        glyphs.setRawFont(large);
        glyphs.setGlyphIndexes(large.glyphIndexesForString(QStringLiteral("█")));
        glyphs.setPositions({QPointF(0, 0)});
        p.drawGlyphRun(QPointF(400, 1400), glyphs);
    });
    EXPECT_EQ(pixel(700, 1100), QColor(Qt::black));
}

TEST_F(PsPrinterPdf, decomposedAccentsAndSmallCapitalsComeBack) {
    print([](QPainter& p) {
        QFont font(QStringLiteral("Liberation Sans"), 12);
        p.setFont(font);
        p.drawText(100, 300, QStringLiteral("cafe\u0301"));
        font.setCapitalization(QFont::SmallCaps);
        p.setFont(font);
        p.drawText(100, 600, QStringLiteral("caps"));
    });
    EXPECT_EQ(words().normalized(QString::NormalizationForm_C).toLower(),
              QStringLiteral("café caps"));
}

TEST_F(PsPrinterPdf, aMadeUpSlantIsTheSameForEveryFace) {
    // Neither face has an italic; one is embedded by its tables, the other by its outlines.
    for (const char* family : {"Liberation Sans Narrow", "Standard Symbols PS"}) {
        const QString sign = QStringLiteral("|");
        print([&](QPainter& p) {
            QFont font(QString::fromLatin1(family), 200);
            font.setItalic(true);
            p.setFont(font);
            p.drawText(1000, 2500, sign);
        });
        const QImage page = pdf_picture(pdf_, 1, 75);
        QImage shown(4000, 4000, QImage::Format_RGB32);
        shown.fill(Qt::white);
        shown.setDotsPerMeterX(23622);
        shown.setDotsPerMeterY(23622);
        QPainter p(&shown);
        QFont font(QString::fromLatin1(family), 200);
        font.setItalic(true);
        p.setFont(font);
        p.drawText(1000, 2500, sign);
        p.end();
        EXPECT_NEAR(ink(page).place.width(), ink(shown).place.width() / 8.0, 4) << family;
    }
}

TEST_F(PsPrinterPdf, boldAndItalicWithoutAFaceOfTheirOwnAreMadeUp) {
    const auto ink_of = [this](bool bold, bool italic) {
        print([&](QPainter& p) {
            QFont font(QStringLiteral("DejaVu Sans"), 48);
            font.setBold(bold);
            font.setItalic(italic);
            p.setFont(font);
            p.drawText(1000, 1000, QStringLiteral("IIII"));
        });
        EXPECT_EQ(words(), QStringLiteral("IIII"));
        return ink(pdf_picture(pdf_, 1, 75));
    };
    const Ink plain = ink_of(false, false);
    const Ink bold = ink_of(true, false);
    const Ink both = ink_of(true, true);
    EXPECT_GT(bold.pixels, plain.pixels * 5 / 4);
    // A slanted letter begins further left and ends further right than an upright one.
    EXPECT_NEAR(both.pixels, bold.pixels, bold.pixels / 8.0);
    EXPECT_GT(both.place.width(), bold.place.width() + 4);
}

TEST_F(PsPrinterPdf, spacedStretchedAndDecoratedTextIsPainted) {
    int underline = 0;
    print([&](QPainter& p) {
        QFont font(QStringLiteral("Liberation Sans"), 48);
        font.setUnderline(true);
        font.setLetterSpacing(QFont::AbsoluteSpacing, 600);
        p.setFont(font);
        underline = 600 + qRound(QFontMetricsF(font, &printer_).underlinePos());
        p.drawText(0, 600, QStringLiteral("HH"));
        QFont wide(QStringLiteral("Liberation Sans"), 48);
        wide.setStretch(200);
        p.setFont(wide);
        p.drawText(0, 1600, QStringLiteral("██"));
    });
    EXPECT_TRUE(words().startsWith(QStringLiteral("H H")));
    // Between the letters there is nothing but the line.
    EXPECT_LT(pixel(600, underline).red(), 128);
    EXPECT_EQ(pixel(600, 400), QColor(Qt::white));
    EXPECT_EQ(pixel(400, 1500), QColor(Qt::black));
}
