#include "tests/output/printing/printing.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>

#include <climits>
#include <sys/stat.h>

using testsupport::pdf_picture;
using testsupport::pdf_words;
using testsupport::run;
using testsupport::text;
using testsupport::write_file;

namespace {

constexpr int dots = 30; // an inch

/// Jobs through Ghostscript and pdftk themselves.
class RealPdf : public Printing {
protected:
    /// A PDF form of one page with @p words on it.
    void make_form(const QByteArray& words) {
        const QString ps = path(text("form.ps"));
        write_file(ps, "%!PS\n/Helvetica findfont 20 scalefont setfont 72 400 moveto (" + words +
                           ") show 0 0 1 setrgbcolor 0 0 612 40 rectfill showpage\n");
        manager_.form_file = testsupport::make_pdf(ps);
        ASSERT_FALSE(manager_.form_file.isEmpty());
    }

    void mark(const char* words, int angle, int in_front) {
        manager_.set_watermark_info(words, "Liberation Sans", 60, angle, QColor(Qt::red), 1200,
                                    3000, in_front);
    }

    int serve(const char* id = "laser") {
        write_file(path(text("job.bin")), setup_);
        return manager_.print_serverrpt_page(id, 1, 1, 0, out(), path(text("job.bin")), {}, {});
    }

    QString out() const { return path(text("out.pdf")); }

    static int page_count(const QString& pdf) {
        const QString info = QString::fromUtf8(run(text("pdfinfo"), {pdf}).out);
        return QRegularExpression(text("Pages: +(\\d+)")).match(info).captured(1).toInt();
    }

    /// The rectangle around what is red.
    static QRect red_area(const QImage& picture) {
        QRect area;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QColor c = picture.pixelColor(x, y);
                if (c.red() > 150 && c.green() < 120 && c.blue() < 120)
                    area |= QRect(x, y, 1, 1);
            }
        return area;
    }

    QByteArray setup_ = QByteArray::fromStdString(setup_bytes({record("laser", "office")}));
};

} // namespace

TEST_F(RealPdf, aServerJobHasReportFormAndWatermarkOnEveryPage) {
    report(3);
    manager_.pdf_mode = true;
    make_form("FORMWORD");
    mark("DRAFT", 45, 0);
    ASSERT_EQ(serve(), 1) << error().toStdString();
    EXPECT_EQ(page_count(out()), 3);
    const QStringList words = pdf_words(out());
    EXPECT_EQ(words.count(text("FORMWORD")), 3);
    EXPECT_EQ(words.filter(QRegularExpression(text("^page[123]$"))).size(), 3)
        << words.join(u' ').toStdString();
    for (int page = 1; page <= 3; ++page) {
        const QImage picture = pdf_picture(out(), page, dots);
        EXPECT_GT(red_area(picture).width(), 30) << page;
        EXPECT_EQ(picture.pixelColor(100, picture.height() - 10), QColor(Qt::blue));
    }
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(RealPdf, aWatermarkInFrontCoversTheReportAndOneBehindDoesNot) {
    report(1);
    manager_.pdf_mode = true;
    int black[2] = {};
    for (const int in_front : {0, 1}) {
        manager_.set_watermark_info("MMMM", "Liberation Sans", 80, 0, QColor(Qt::red), 0, 100,
                                    in_front);
        ASSERT_EQ(serve(), 1) << error().toStdString();
        const QStringList words = pdf_words(out());
        EXPECT_TRUE(words.join(QString()).contains(text("MMMM"))) << words.join(u' ').toStdString();
        const QImage picture = pdf_picture(out(), 1, dots);
        black[in_front] = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                black[in_front] += picture.pixelColor(x, y).red() < 100;
    }
    EXPECT_GT(black[0], black[1] + 20);
    EXPECT_GT(black[1], 100);
}

TEST_F(RealPdf, theWatermarkStandsAtItsPlaceInBothOrientationsAndTurnsAboutItsCorner) {
    report(1);
    for (const int orientation : {0, 1}) {
        DLWDEVMODE sheet{};
        sheet.orientation = orientation;
        sheet.paper_size = 0;
        delete manager_.create_printer("office", sheet, path(text("sheet.ps")));
        for (const int angle : {0, 45, 90, -90}) {
            mark("DRAFT", angle, 0);
            ASSERT_EQ(manager_.generate_watermark(), 1) << error().toStdString();
            const QImage picture = pdf_picture(text("/tmp/watermark.pdf"), 1, dots);
            EXPECT_EQ(picture.width() > picture.height(), orientation == 1);
            // The corner, in dots: half an inch and a third of margins, turned with the sheet.
            const QPoint corner =
                orientation == 0 ? QPoint(60 + 15, 150 + 10) : QPoint(60 + 10, 150 + 15);
            const QRect red = red_area(picture);
            const bool is_wide = red.width() > 2 * red.height();
            const bool is_high = red.height() > 2 * red.width();
            EXPECT_EQ(is_wide, angle == 0) << angle;
            EXPECT_EQ(is_high, angle == 90 || angle == -90) << angle;
            switch (angle) {
            case 0:
                EXPECT_LE((red.topLeft() - corner).manhattanLength(), 16);
                break;
            case 90:
                EXPECT_LE((red.bottomLeft() - corner).manhattanLength(), 16);
                break;
            case -90:
                EXPECT_LE((red.topRight() - corner).manhattanLength(), 16);
                break;
            default:
                EXPECT_LT(red.top(), corner.y());
                EXPECT_GE(red.left(), corner.x() - 2);
            }
        }
    }
}

TEST_F(RealPdf, theWatermarkTextIsUtf8OrLatin1AndIsCut) {
    report(1);
    for (const char* bytes : {"\xc3\x84gypten", "\xc4gypten"}) {
        mark(bytes, 0, 0);
        ASSERT_EQ(manager_.generate_watermark(), 1);
        EXPECT_EQ(pdf_words(text("/tmp/watermark.pdf")), QStringList{text("\xc3\x84gypten")});
    }
    const QByteArray endless(10000, 'w');
    manager_.set_watermark_info(endless.constData(), endless.constData(), 8, 0, QColor(), 0, 300,
                                0);
    ASSERT_EQ(manager_.generate_watermark(), 1);
    EXPECT_EQ(pdf_words(text("/tmp/watermark.pdf")), QStringList{QString(79, u'w')});
}

TEST_F(RealPdf, anEmptyWatermarkIsOneEmptyPage) {
    report(1);
    for (const char* nothing : {"", static_cast<const char*>(nullptr)}) {
        manager_.set_watermark_info(nothing, nothing, 0, 0, QColor(), INT_MAX, INT_MIN, 0);
        ASSERT_EQ(manager_.generate_watermark(), 1) << error().toStdString();
        EXPECT_EQ(page_count(text("/tmp/watermark.pdf")), 1);
        EXPECT_EQ(pdf_words(text("/tmp/watermark.pdf")), QStringList{QString()});
        EXPECT_FALSE(QFile::exists(text("/tmp/watermark.ps")));
    }
}

TEST_F(RealPdf, theSecondDescriptionOfAWatermarkCounts) {
    report(1);
    manager_.pdf_mode = true;
    mark("FIRST", 0, 0);
    mark("SECOND", 0, 0);
    for (int job = 0; job < 2; ++job) {
        ASSERT_EQ(serve(), 1) << error().toStdString();
        const QStringList words = pdf_words(out());
        EXPECT_TRUE(words.contains(text("SECOND")));
        EXPECT_FALSE(words.contains(text("FIRST")));
    }
}

TEST_F(RealPdf, theWatermarkLeavesThePrintersSheetAsItWas) {
    report(1);
    DLWDEVMODE sheet{};
    sheet.orientation = 1;
    sheet.paper_size = 2;
    delete manager_.create_printer("office", sheet, path(text("sheet.ps")));
    const QSize before = manager_.get_page_size();
    mark("DRAFT", 30, 0);
    ASSERT_EQ(manager_.generate_watermark(), 1);
    EXPECT_EQ(manager_.get_page_size(), before);
}

TEST_F(RealPdf, printRptPdffileHasTheSheetOfTheReportPrinter) {
    report(2);
    auto landscape = record("wide", "office");
    landscape.devmode.orientation = 1;
    landscape.devmode.paper_size = 0;
    write_file(path(text("job.bin")), QByteArray::fromStdString(setup_bytes({landscape})));
    manager_.report_printer_id = text("wide");
    manager_.report_setup_file = path(text("job.bin"));
    ASSERT_EQ(manager_.print_rpt_pdffile(nullptr), 1) << error().toStdString();
    EXPECT_FALSE(QFile::exists(path(text("job.bin"))));
    const QByteArray info = run(text("pdfinfo"), {manager_.result_pdf_file}).out;
    EXPECT_TRUE(info.contains("841.89 x 595") || info.contains("842 x 595")) << info.toStdString();
    EXPECT_EQ(page_count(manager_.result_pdf_file), 2);
    EXPECT_EQ(pdf_words(manager_.result_pdf_file).filter(text("page")).size(), 2);
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(RealPdf, theMarginsCountTwiceInPdfModeAndOnceElse) {
    report(1);
    auto wide = record("laser", "office");
    wide.margins = {1, 1, 1, 1};
    setup_ = QByteArray::fromStdString(setup_bytes({wide}));
    const auto left_of_page1 = [this](const QString& pdf) {
        const QString boxes =
            QString::fromUtf8(run(text("pdftotext"), {text("-bbox"), pdf, text("-")}).out);
        return QRegularExpression(text("xMin=\"([\\d.]+)\"[^>]*>page1"))
            .match(boxes)
            .captured(1)
            .toDouble();
    };
    manager_.pdf_mode = false;
    ASSERT_EQ(serve(), 1) << error().toStdString();
    // Behind the printer's own margin of half an inch.
    EXPECT_NEAR(left_of_page1(testsupport::make_pdf(out())), 36 + 72, 4);
    manager_.pdf_mode = true;
    ASSERT_EQ(serve(), 1) << error().toStdString();
    EXPECT_NEAR(left_of_page1(out()), 72 + 72, 4);
}

TEST_F(RealPdf, thePageRangeOfTheRecordLimitsNothing) {
    report(3);
    auto second = record("laser", "office");
    second.devmode.from_page = second.devmode.to_page = 2;
    setup_ = QByteArray::fromStdString(setup_bytes({second}));
    manager_.pdf_mode = true;
    ASSERT_EQ(serve(), 1) << error().toStdString();
    EXPECT_EQ(page_count(out()), 3);
}

TEST_F(RealPdf, aGenericPrinterInPdfModeMakesAPdfOfPlainText) {
    report(1);
    setup_ = QByteArray::fromStdString(setup_bytes({record("plain", "Generic / Text")}));
    manager_.pdf_mode = true;
    mark("DRAFT", 0, 0);
    ASSERT_EQ(serve("plain"), 1) << error().toStdString();
    // The page twice, as the report was indexed before it was saved, and one that follows.
    EXPECT_EQ(page_count(out()), 3);
    EXPECT_EQ(pdf_words(out()).count(text("DRAFT")), 3);
    EXPECT_EQ(pdf_words(out()).count(text("page1")), 2);
}

TEST_F(RealPdf, theResultCanBeReadByWhoeverMayReadTheUsersFiles) {
    report(1);
    manager_.pdf_mode = true;
    const std::unique_ptr<QPainter> painter(
        manager_.create_printer("office", setup_record("x").devmode));
    ASSERT_TRUE(painter);
    EXPECT_TRUE(painter->end());
    EXPECT_EQ(QFile::permissions(text("/tmp/korvo.ps")) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
    const mode_t mask = ::umask(022);
    ASSERT_EQ(manager_.create_pdffile(), 1) << error().toStdString();
    ::umask(mask);
    EXPECT_TRUE(QFile::permissions(manager_.result_pdf_file) & QFile::ReadOther);
}

TEST_F(RealPdf, aDirectoryWhoseNameIsAPatternIsOneAllTheSame) {
    report(1);
    manager_.pdf_mode = true;
    ASSERT_TRUE(QDir(work_.path()).mkdir(text("100%d it's $(touch ran)")));
    ASSERT_TRUE(QDir::setCurrent(path(text("100%d it's $(touch ran)"))));
    mark("DRAFT", 0, 0);
    ASSERT_EQ(serve(), 1) << error().toStdString();
    EXPECT_TRUE(pdf_words(out()).contains(text("DRAFT")));
    EXPECT_EQ(QDir::current().entryList(QDir::Files), QStringList());
}

TEST_F(RealPdf, hostileNamesAreNamesAndNothingMore) {
    report(1);
    manager_.pdf_mode = true;
    make_form("FORMWORD");
    const QString form = manager_.form_file;
    for (const char* name : {"-dash.ps", "a b.ps", "$(touch ran).ps", "q'\"`touch ran`.ps",
                             "line\nbreak.ps", "@args", "%d.ps"}) {
        manager_.form_file = text(name) + text(".form");
        ASSERT_TRUE(QFile::copy(form, path(manager_.form_file)));
        write_file(path(text("job.bin")), setup_);
        EXPECT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, text(name), path(text("job.bin")),
                                                {}, {}),
                  1)
            << name << ": " << error().toStdString();
        const QStringList words = pdf_words(path(text(name)));
        EXPECT_TRUE(words.contains(text("page1"))) << name;
        EXPECT_TRUE(words.contains(text("FORMWORD"))) << name;
    }
    EXPECT_FALSE(QFile::exists(path(text("ran"))));
}

TEST_F(RealPdf, aNameThatGhostscriptTakesForAPipeIsRefusedAndTheEarlierFileStays) {
    report(1);
    manager_.pdf_mode = true;
    for (const char* name : {"%pipe%touch${IFS}ran", "|touch ran"}) {
        write_file(path(text(name)), "earlier");
        write_file(path(text("job.bin")), setup_);
        EXPECT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, text(name), path(text("job.bin")),
                                                {}, {}),
                  0);
        EXPECT_TRUE(error().startsWith(text("'ps2pdf './"))) << error().toStdString();
        EXPECT_EQ(read(text(name)), "earlier");
    }
    EXPECT_FALSE(QFile::exists(path(text("ran"))));
}
