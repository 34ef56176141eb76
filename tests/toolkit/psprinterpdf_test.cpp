#include "tests/support/tools.h"

#include <printman/toolkit/psprinter.h>

#include <QDir>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPageLayout>
#include <QPainter>
#include <QPainterPath>
#include <QRawFont>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

using namespace testsupport;

namespace {

/// Paints on a PsPrinter and looks at the PDF that Ghostscript makes of it.
class PsPrinterPdf : public testing::Test {
protected:
    /// Paints a job of one page, unless @p paint turns pages itself.
    void print(const std::function<void(QPainter&)>& paint) {
        ps_ = scratch_.filePath(QStringLiteral("job.ps"));
        printer_.setOutputFileName(ps_);
        QPainter p;
        ASSERT_TRUE(p.begin(&printer_));
        paint(p);
        ASSERT_TRUE(p.end()) << printer_.errorString().toStdString();
        pdf_ = make_pdf(ps_);
        ASSERT_FALSE(pdf_.isEmpty());
    }

    /// Paints one text with a font.
    void print_text(const char* family, const QString& text) {
        print([&](QPainter& p) {
            p.setFont(QFont(QString::fromLatin1(family), 12));
            p.drawText(100, 300, text);
        });
    }

    /// The pixel of the first page at a place in device pixels from the painted area's corner.
    QColor pixel(int x, int y, int page = 1) {
        constexpr int dpi = 75;
        if (picture_page_ != page) {
            picture_ = pdf_picture(pdf_, page, dpi);
            picture_page_ = page;
        }
        const QRect area = printer_.pageLayout().paintRectPixels(600);
        return picture_.pixelColor((x + area.x()) / 8, (y + area.y()) / 8);
    }

    QString words() const { return pdf_words(pdf_).join(u' '); }

    QTemporaryDir scratch_;
    PsPrinter printer_;
    QString ps_;
    QString pdf_;
    QImage picture_;
    int picture_page_ = 0;
};

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

TEST_F(PsPrinterPdf, shapesAndImagesAreWhereTheyWerePainted) {
    print([](QPainter& p) {
        p.fillRect(400, 400, 800, 400, Qt::red);
        p.setPen(QPen(Qt::blue, 80));
        p.drawLine(400, 1200, 1200, 1200);
        QImage image(8, 8, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        for (int y = 0; y < 8; ++y) {
            for (int x = 0; x < 4; ++x)
                image.setPixelColor(x, y, QColor(0, 160, 0));
        }
        p.fillRect(400, 1600, 800, 800, Qt::yellow);
        p.drawImage(QRect(400, 1600, 800, 800), image);
        QPainterPath ring;
        ring.addRect(2000, 400, 800, 800);
        ring.addRect(2200, 600, 400, 400);
        p.fillPath(ring, Qt::magenta);
        p.save();
        p.translate(2000, 2000);
        p.rotate(90);
        p.fillRect(0, 0, 600, 80, Qt::cyan);
        p.restore();
        p.setPen(QPen(Qt::black, 40, Qt::DotLine));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(2000, 3000, 800, 800);
        p.setOpacity(0.5);
        p.fillRect(400, 3000, 800, 400, Qt::black);
    });
    EXPECT_EQ(pixel(800, 600), QColor(Qt::red));
    EXPECT_EQ(pixel(800, 900), QColor(Qt::white));
    EXPECT_EQ(pixel(800, 1200), QColor(Qt::blue));
    EXPECT_EQ(pixel(600, 2000), QColor(0, 160, 0));
    EXPECT_EQ(pixel(1100, 2000), QColor(Qt::yellow));
    EXPECT_EQ(pixel(2100, 500), QColor(Qt::magenta));
    EXPECT_EQ(pixel(2400, 800), QColor(Qt::white));
    EXPECT_EQ(pixel(1960, 2300), QColor(Qt::cyan));
    EXPECT_EQ(pixel(2400, 3400), QColor(Qt::white));
    EXPECT_NEAR(pixel(800, 3200).red(), 127, 2);
}

TEST_F(PsPrinterPdf, gradientsArriveAsImages) {
    print([](QPainter& p) {
        QLinearGradient gradient(400, 0, 2400, 0);
        gradient.setColorAt(0, Qt::red);
        gradient.setColorAt(1, Qt::blue);
        p.fillRect(400, 400, 2000, 800, gradient);
    });
    EXPECT_GT(pixel(500, 800).red(), 200);
    EXPECT_GT(pixel(2300, 800).blue(), 200);
    EXPECT_EQ(pixel(2600, 800), QColor(Qt::white));
}

TEST_F(PsPrinterPdf, aClipHoldsUntilItEndsAndOverPages) {
    print([this](QPainter& p) {
        p.setClipRect(400, 400, 400, 400);
        p.fillRect(0, 0, 4000, 4000, Qt::red);
        p.setClipRect(400, 400, 200, 800, Qt::IntersectClip);
        p.fillRect(0, 0, 4000, 4000, Qt::blue);
        printer_.newPage();
        p.fillRect(0, 0, 4000, 4000, Qt::green);
        p.setClipping(false);
        p.fillRect(2000, 2000, 400, 400, Qt::red);
    });
    EXPECT_EQ(pixel(700, 600), QColor(Qt::red));
    EXPECT_EQ(pixel(500, 600), QColor(Qt::blue));
    EXPECT_EQ(pixel(500, 1000), QColor(Qt::white));
    EXPECT_EQ(pixel(500, 600, 2), QColor(Qt::green));
    EXPECT_EQ(pixel(700, 600, 2), QColor(Qt::white));
    EXPECT_EQ(pixel(2200, 2200, 2), QColor(Qt::red));
}

TEST_F(PsPrinterPdf, aStrokeLeavesNoPathBehind) {
    print([](QPainter& p) {
        p.setPen(QPen(Qt::blue, 20));
        p.setBrush(Qt::NoBrush);
        p.drawRect(400, 400, 800, 800);
        p.fillRect(2000, 400, 400, 400, Qt::red);
    });
    EXPECT_EQ(pixel(800, 800), QColor(Qt::white));
    EXPECT_EQ(pixel(2200, 600), QColor(Qt::red));
}

TEST_F(PsPrinterPdf, textTakesThePensColourAndIsTurned) {
    print([](QPainter& p) {
        p.setFont(QFont(QStringLiteral("Liberation Mono"), 48));
        p.setPen(Qt::red);
        p.translate(2000, 3000);
        p.rotate(-90);
        p.drawText(0, 0, QStringLiteral("████"));
    });
    EXPECT_EQ(pixel(1900, 2800), QColor(Qt::red));
    EXPECT_EQ(pixel(2200, 2900), QColor(Qt::white));
}

TEST_F(PsPrinterPdf, sheetsKeepTheirSizeAndOrientation) {
    printer_.setPageSize(QPageSize(QPageSize::A5));
    printer_.setPageOrientation(QPageLayout::Landscape);
    print([this](QPainter& p) {
        // Mostly steep text, which makes a distiller turn pages that it may turn.
        p.setFont(QFont(QStringLiteral("Liberation Mono"), 10));
        p.rotate(90);
        for (int i = 1; i < 20; ++i)
            p.drawText(100, -150 * i, QStringLiteral("steep text"));
        printer_.setPageOrientation(QPageLayout::Portrait);
        printer_.newPage();
    });
    const QString info = QString::fromUtf8(
        run(QStringLiteral("pdfinfo"), {QStringLiteral("-l"), QStringLiteral("2"), pdf_}).out);
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Page +1 size: +595 x 420 pts"))))
        << info.toStdString();
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Page +2 size: +420 x 595 pts"))));
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Page +1 rot: +0"))));
}

TEST_F(PsPrinterPdf, titleAndCreatorAreKept) {
    printer_.setDocName(QStringLiteral("Überfällig (Q4) €"));
    printer_.setCreator(QStringLiteral("a \\ creator"));
    print([](QPainter&) {});
    const QString info = QString::fromUtf8(run(QStringLiteral("pdfinfo"), {pdf_}).out);
    EXPECT_TRUE(info.contains(QStringLiteral("Überfällig (Q4) €"))) << info.toStdString();
    EXPECT_TRUE(info.contains(QStringLiteral("a \\ creator")));
}

TEST_F(PsPrinterPdf, theDocumentFollowsTheStructuringConventions) {
    print([this](QPainter& p) {
        p.drawText(100, 100, QStringLiteral("Größe ☃"));
        printer_.newPage();
    });
    const QList<QByteArray> lines = read_file(ps_).split('\n');
    EXPECT_EQ(lines.first(), "%!PS-Adobe-3.0");
    for (const char* comment :
         {"%%LanguageLevel: 3", "%%Pages: 2", "%%BoundingBox: 0 0 595 842", "%%EndComments",
          "%%BeginProlog", "%%EndProlog", "%%BeginSetup", "%%EndSetup", "%%Page: 1 1",
          "%%Page: 2 2", "%%BeginPageSetup", "%%EndPageSetup", "%%Trailer", "%%EOF"})
        EXPECT_TRUE(lines.contains(comment)) << comment;
    int resources = 0;
    for (const QByteArray& line : lines) {
        EXPECT_LE(line.size(), 255) << line.left(60).constData();
        for (const char c : line)
            EXPECT_TRUE(c == '\t' || (c >= ' ' && c <= '~')) << static_cast<int>(c);
        if (line.startsWith("%%BeginResource: font ")) {
            EXPECT_TRUE(lines.contains("%%+ font " + line.mid(22))) << line.constData();
            ++resources;
        }
    }
    EXPECT_GE(resources, 2);
    EXPECT_EQ(lines.count("%%EndResource"), resources + 1);
}

TEST_F(PsPrinterPdf, pagesStandOnTheirOwn) {
    print([this](QPainter& p) {
        p.setFont(QFont(QStringLiteral("Liberation Sans"), 12));
        p.setPen(Qt::red);
        p.drawText(100, 300, QStringLiteral("first"));
        printer_.newPage();
        p.drawText(100, 300, QStringLiteral("second"));
    });
    // Without the first page the second must still know its font and colour.
    QByteArray job = read_file(ps_);
    const qsizetype first = job.indexOf("%%Page: 1 1");
    job.remove(first, job.indexOf("%%Page: 2 2") - first);
    write_file(ps_, job);
    EXPECT_EQ(pdf_words(make_pdf(ps_)), QStringList{QStringLiteral("second")});
    EXPECT_GE(job.count("1 0 0 c"), 1);
}

TEST_F(PsPrinterPdf, linesStayShortWhateverTheyHold) {
    print([](QPainter& p) {
        p.setFont(QFont(QStringLiteral("Liberation Mono"), 5));
        p.drawText(100, 300, QString(100, u'é') + QString(60, u'('));
    });
    EXPECT_EQ(words(), QString(100, u'é') + QString(60, u'('));
    for (const QByteArray& line : read_file(ps_).split('\n'))
        EXPECT_LE(line.size(), 255);
}

TEST_F(PsPrinterPdf, titlesCannotBreakTheirComments) {
    printer_.setDocName(QStringLiteral("a (( b \\ c"));
    printer_.setCreator(QStringLiteral("x)"));
    print([](QPainter&) {});
    EXPECT_TRUE(read_file(ps_).contains("%%Title: (a \\(\\( b \\\\ c)\n"));
    EXPECT_TRUE(read_file(ps_).contains("%%Creator: (x\\))\n"));
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
        const auto width = [](const QImage& image) {
            int left = image.width();
            int right = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    if (qGray(image.pixel(x, y)) < 128) {
                        left = std::min(left, x);
                        right = std::max(right, x);
                    }
                }
            }
            return right - left;
        };
        EXPECT_NEAR(width(page), width(shown) / 8.0, 4) << family;
    }
}

TEST_F(PsPrinterPdf, anAbsurdSizeIsNoHarm) {
    print([](QPainter& p) {
        p.setFont(QFont(QStringLiteral("Liberation Mono"), 20000));
        p.drawText(100, 300, QStringLiteral("huge"));
    });
}

TEST_F(PsPrinterPdf, aFlatTransformationPaintsNothing) {
    print([](QPainter& p) {
        p.scale(1, 0);
        p.setPen(QPen(Qt::black, 10));
        p.drawLine(0, 0, 1000, 1000);
        p.drawText(100, 100, QStringLiteral("flat"));
    });
    EXPECT_FALSE(read_file(ps_).contains("flat"));
}

TEST_F(PsPrinterPdf, boldAndItalicWithoutAFaceOfTheirOwnAreMadeUp) {
    print([](QPainter& p) {
        QFont font(QStringLiteral("DejaVu Sans"), 24);
        p.setFont(font);
        p.drawText(100, 400, QStringLiteral("plain"));
        font.setItalic(true);
        font.setBold(true);
        p.setFont(font);
        p.drawText(100, 900, QStringLiteral("both"));
    });
    EXPECT_EQ(words(), QStringLiteral("plain both"));
}

TEST_F(PsPrinterPdf, spacedStretchedAndDecoratedTextIsPainted) {
    print([](QPainter& p) {
        QFont font(QStringLiteral("Liberation Sans"), 48);
        font.setUnderline(true);
        font.setLetterSpacing(QFont::AbsoluteSpacing, 600);
        p.setFont(font);
        p.drawText(0, 600, QStringLiteral("HH"));
        QFont wide(QStringLiteral("Liberation Sans"), 48);
        wide.setStretch(200);
        p.setFont(wide);
        p.drawText(0, 1600, QStringLiteral("██"));
    });
    EXPECT_TRUE(words().startsWith(QStringLiteral("H H")));
    EXPECT_EQ(pixel(400, 1500), QColor(Qt::black));
}
