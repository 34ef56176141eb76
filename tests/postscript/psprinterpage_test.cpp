#include "tests/postscript/psprinterpdf.h"

#include <QPainterPath>
#include <QRegularExpression>

using namespace testsupport;

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

TEST_F(PsPrinterPdf, textTakesThePensColorAndIsTurned) {
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
    // Without the first page the second must still know its font and color.
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
