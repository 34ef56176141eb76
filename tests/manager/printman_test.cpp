#include "tests/manager/printmanfixture.h"

#include <printman/toolkit/psprinter.h>

#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <array>
#include <climits>
#include <cstring>

using testsupport::read_file;
using testsupport::write_file;

TEST_F(PrintMan, withoutAReportEveryCallReturnsAtOnce) {
    QImage image(20, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage before = image.copy();
    QPainter p(&image);
    const QRect window = p.window();
    EXPECT_EQ(manager_.get_columns(), 0);
    EXPECT_EQ(manager_.get_lines(), 0);
    for (int request = 0; request <= 4; ++request)
        EXPECT_EQ(manager_.get_rpt_page(request), 0) << request;
    char buffer[4] = {'k', 'e', 'e', 'p'};
    EXPECT_EQ(manager_.get_rpt_page(buffer, sizeof buffer, 1), 0);
    EXPECT_EQ(std::memcmp(buffer, "keep", 4), 0);
    EXPECT_EQ(manager_.get_rpt_page(nullptr, 10, 1), 0);
    EXPECT_EQ(manager_.set_logical_unit(&p, 0, 5, 5), 0);
    EXPECT_EQ(p.window(), window);
    EXPECT_EQ(manager_.print_page(&p), 0);
    EXPECT_EQ(manager_.print_page(nullptr), 0);
    EXPECT_EQ(manager_.set_logical_unit(nullptr, 0, 0, 0), 0);
    manager_.load_current_page();
    manager_.free_page_rows();
    manager_.free_escape_buffer();
    manager_.clear_escape_buffer();
    manager_.print_escape_field(0);
    manager_.printing_canceled();
    EXPECT_TRUE(manager_.page_row(0).isEmpty());
    p.end();
    EXPECT_EQ(image, before);
}

TEST_F(PrintMan, aFreshReportGetsANameInTmpdirAndIsMadeByItsFirstPage) {
    const int length = manager_.init_printman();
    EXPECT_GT(length, scratch_.path().size());
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(testhost::calls().contains(QStringLiteral("GetEnv(TMPDIR, dlwmenu.ini, env)")));
    const QByteArray page = "#!?PAGETOP 80,3\na\n#!?PAGEEND\n";
    manager_.add_rpt_page(page.constData(), static_cast<int>(page.size()));
    manager_.add_rpt_page(page.constData(), static_cast<int>(page.size()));
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(scratch_.filePath(files().first()).size(), length);
    EXPECT_TRUE(files().first().startsWith(QStringLiteral("rpt")));
    EXPECT_GT(files().first().mid(3).toInt(), 0);
    EXPECT_EQ(read_file(scratch_.filePath(files().first())), page + page);
    EXPECT_EQ(manager_.init_scr_buffer(7, 12), 0);
    EXPECT_EQ(manager_.get_page_count(), 2);
    int width = 0;
    int height = 0;
    manager_.get_scr_size(&width, &height);
    EXPECT_EQ(width, 7 * 80);
    EXPECT_EQ(height, 12 * 3);
}

TEST_F(PrintMan, twoFreshReportsAreTwoFiles) {
    CPrintMan other;
    manager_.init_printman();
    other.init_printman();
    manager_.add_rpt_page("a", 1);
    other.add_rpt_page("b", 1);
    EXPECT_EQ(files().size(), 2);
}

TEST_F(PrintMan, withoutTmpdirAFreshReportLiesInTheCurrentDirectory) {
    testhost::set("TMPDIR", "");
    const QString old = QDir::currentPath();
    QDir::setCurrent(scratch_.path());
    manager_.init_printman();
    manager_.add_rpt_page("a", 1);
    QDir::setCurrent(old);
    EXPECT_EQ(files().size(), 1);
}

TEST_F(PrintMan, namesThatDoNotFitAreRefused) {
    EXPECT_EQ(adopt(three_pages), 0);
    EXPECT_EQ(manager_.init_printman(QByteArray(256, 'x').constData()), -1);
    EXPECT_EQ(manager_.init_printman(nullptr), -1);
    EXPECT_EQ(manager_.get_page_count(), 3);
    EXPECT_EQ(manager_.get_rpt_page(2), 1);
    testhost::set("TMPDIR", QByteArray(250, 'd'));
    EXPECT_EQ(manager_.init_printman(), -1);
    EXPECT_EQ(manager_.get_rpt_page(2), 1);
    EXPECT_EQ(manager_.init_printman(QByteArray(255, 'x').constData()), -1);
    EXPECT_EQ(manager_.get_page_count(), 0);
}

TEST_F(PrintMan, anAdoptedReportIsIndexedAtOnce) {
    EXPECT_EQ(adopt(three_pages), 0);
    EXPECT_EQ(manager_.get_columns(), 10);
    EXPECT_EQ(manager_.get_lines(), 2);
    EXPECT_EQ(manager_.get_page_count(), 3);
    EXPECT_EQ(adopt("#!?PAGETOP 5,1\nx\n#!?PAGEEND\n"), 0);
    EXPECT_EQ(manager_.get_page_count(), 1);
}

TEST_F(PrintMan, pagesOfNoLinesAreToldApart) {
    EXPECT_EQ(adopt("#!?PAGETOP 80,0\nx\n#!?PAGEEND\n"), 1);
    EXPECT_EQ(manager_.get_lines(), 0);
    EXPECT_EQ(adopt("#!?PAGETOP 0,66\nx\n#!?PAGEEND\n"), 0);
    EXPECT_EQ(manager_.get_rpt_page(1), 0);
    // Geometry that is known from before is no geometry of this file.
    adopt(three_pages);
    EXPECT_EQ(manager_.get_scr_size(), 0);
    EXPECT_EQ(adopt("#!?PAGETOP 80,0\n"), 1);
    EXPECT_EQ(manager_.get_columns(), 0);
}

TEST_F(PrintMan, aReportThatIsNotThereFails) {
    EXPECT_EQ(manager_.init_printman(path("none").constData()), -1);
    EXPECT_EQ(manager_.get_columns(), 0);
    EXPECT_EQ(manager_.get_rpt_page(1), 0);
}

TEST_F(PrintMan, indexingAgainRepeatsThePages) {
    adopt(three_pages);
    EXPECT_EQ(manager_.init_scr_buffer(0, 0), 0);
    EXPECT_EQ(manager_.get_page_count(), 6);
    EXPECT_EQ(manager_.get_rpt_page(4), 1);
    EXPECT_EQ(manager_.page_row(0).first().text, QStringLiteral("three"));
    for (int i = 0; i < 3; ++i)
        manager_.get_rpt_page(3);
    EXPECT_EQ(manager_.get_cur_page(), 3);
    EXPECT_EQ(manager_.page_row(0).first().text, QStringLiteral("three"));
}

TEST_F(PrintMan, pageRequestsTurnAndLoad) {
    adopt(three_pages);
    const auto text = [this] { return manager_.page_row(0).value(0).text; };
    EXPECT_EQ(manager_.get_rpt_page(0), 1);
    EXPECT_TRUE(manager_.page_row(0).isEmpty());
    EXPECT_EQ(manager_.get_rpt_page(1), 1);
    EXPECT_EQ(text(), QStringLiteral("one"));
    EXPECT_EQ(manager_.check_rpt_page(3), 0);
    EXPECT_EQ(manager_.get_rpt_page(3), 0);
    EXPECT_EQ(manager_.get_rpt_page(2), 1);
    EXPECT_EQ(text(), QStringLiteral("two"));
    EXPECT_EQ(manager_.get_rpt_page(4), 1);
    EXPECT_EQ(text(), QStringLiteral("three"));
    EXPECT_EQ(manager_.check_rpt_page(2), 0);
    EXPECT_EQ(manager_.get_rpt_page(2), 0);
    EXPECT_EQ(manager_.get_cur_page(), 3);
    for (const int request : {-1, 5, 100}) {
        EXPECT_EQ(manager_.check_rpt_page(request), 0);
        EXPECT_EQ(manager_.get_rpt_page(request), 0);
    }
    EXPECT_EQ(manager_.get_rpt_page(0), 1);
    EXPECT_EQ(text(), QStringLiteral("three"));
}

TEST_F(PrintMan, readingIntoABufferLeavesTheItems) {
    adopt(three_pages);
    manager_.get_rpt_page(1);
    char buffer[20];
    EXPECT_EQ(manager_.get_rpt_page(buffer, sizeof buffer, 0), 0);
    EXPECT_EQ(manager_.get_rpt_page(buffer, sizeof buffer, 2), 1);
    EXPECT_STREQ(buffer, "two");
    EXPECT_EQ(manager_.get_cur_page(), 2);
    EXPECT_EQ(manager_.page_row(0).first().text, QStringLiteral("one"));
    EXPECT_EQ(manager_.get_rpt_page(buffer, -1, 1), 0);
}

TEST_F(PrintMan, theParserReadsTheLineReadLast) {
    // Without an end line the marker line stays in the line buffer.
    adopt("#!?PAGETOP 40,8\n\n\n\n#!?L12,10,8;text\n");
    manager_.get_rpt_page(1);
    manager_.clear_escape_buffer();
    int type = 0, start = 0, size = 0, datasize = 0;
    EXPECT_FALSE(manager_.find_escape_field(3, 12, 0, &type, &start, &size, &datasize));
    EXPECT_EQ(manager_.parse_escape_field(3, 3, 16), 9);
    ASSERT_TRUE(manager_.find_escape_field(3, 12, 0, &type, &start, &size, &datasize));
    EXPECT_EQ(type, 2);
    EXPECT_EQ(start, 12);
    EXPECT_EQ(size, 10);
    EXPECT_EQ(datasize, 8);
    EXPECT_EQ(manager_.parse_escape_field2(5, 4, 16, 4), 9);
    ASSERT_TRUE(manager_.find_escape_field(5, 12, 0, &type, nullptr, nullptr, nullptr));
    EXPECT_EQ(type, 4);
    EXPECT_EQ(manager_.parse_escape_field(3, 4, 16), 0);
    EXPECT_EQ(manager_.parse_escape_field(3, -1, 5000), 0);
}

TEST_F(PrintMan, escapeFieldsAreAddedFoundAndPrinted) {
    adopt("#!?PAGETOP 40,8\nx\n#!?PAGEEND\n");
    manager_.add_escape_field(2, 1, 5, 20, 0);
    manager_.add_escape_field(2, 3, 5, 8, 7);
    manager_.add_escape_field(2, 4, 5, 9, 9);
    manager_.add_escape_field(2, 2, 65536 + 9, 70000, -1);
    manager_.add_escape_field(-1, 2, 1, 1, 1);
    manager_.add_escape_field(8, 2, 1, 1, 1);
    int type = 0, start = 0, size = 0, datasize = 0;
    ASSERT_TRUE(manager_.find_escape_field(2, 5, 1, &type, &start, &size, &datasize));
    EXPECT_EQ(type, 3);
    ASSERT_TRUE(manager_.find_escape_field(2, 9, 0, &type, &start, &size, &datasize));
    EXPECT_EQ(size, 70000 - 65536);
    EXPECT_EQ(datasize, -1);
    manager_.add_escape_field(2, 2, 40, 1, 1);
    EXPECT_FALSE(manager_.find_escape_field(2, 40, 0, &type, &start, &size, &datasize));
    EXPECT_FALSE(manager_.find_escape_field(8, 1, 0, &type, &start, &size, &datasize));

    testing::internal::CaptureStderr();
    manager_.print_escape_field(2);
    manager_.print_escape_field(99);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "type=1 startcol=5 fldsize=20 datasize=0\ntype=3 startcol=5 fldsize=8 datasize=7\n"
              "type=4 startcol=5 fldsize=9 datasize=9\ntype=2 startcol=9 fldsize=4464 datasize=-1\n"
              "type=2 startcol=40 fldsize=1 datasize=1\n");
    manager_.free_escape_buffer();
    EXPECT_FALSE(manager_.find_escape_field(2, 5, 0, &type, &start, &size, &datasize));
    EXPECT_EQ(manager_.get_rpt_page(1), 1);
}

TEST_F(PrintMan, itemsCanBeAdded) {
    adopt(three_pages);
    manager_.get_rpt_page(1);
    manager_.add_stringitem(1, 2, 1, 3, 1, "\xe9x", 3);
    manager_.add_stringitem(2, 0, 0, 1, 1, "beyond", 2);
    manager_.add_stringitem(-1, 0, 0, 1, 1, "beyond", 2);
    manager_.add_stringitem(0, INT_MAX, INT_MIN, INT_MAX, INT_MIN, "far", 2);
    manager_.add_stringitem(0, 0, 0, 1, 1, nullptr, 2);
    ASSERT_EQ(manager_.page_row(1).size(), 1);
    const StringItem& item = manager_.page_row(1).first();
    EXPECT_EQ(item.cell, QRect(2, 1, 3, 1));
    EXPECT_EQ(item.text, QStringLiteral("éx"));
    EXPECT_EQ(item.align, 3);
    EXPECT_TRUE(item.spare.isNull());
    EXPECT_TRUE(item.source_text.isNull());
    EXPECT_TRUE(item.drawn.isNull());
    EXPECT_TRUE(manager_.page_row(2).isEmpty());
}

TEST_F(PrintMan, aPagePaintsOnAnImageAndOnAPrinter) {
    adopt(three_pages);
    manager_.get_rpt_page(3);
    manager_.get_rpt_page(1);
    QImage image(400, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    const QImage blank = image.copy();
    QPainter p(&image);
    EXPECT_EQ(manager_.set_logical_unit(&p, 0, 0, 0), 0);
    EXPECT_EQ(manager_.print_page(&p), 1);
    p.end();
    EXPECT_NE(image, blank);
    EXPECT_FALSE(manager_.page_row(0).first().drawn.isEmpty());

    PsPrinter printer;
    printer.setOutputFileName(scratch_.filePath(QStringLiteral("a.ps")));
    ASSERT_TRUE(p.begin(&printer));
    manager_.set_logical_unit(&p, 0, 0, 0);
    EXPECT_EQ(manager_.print_page(&p), 1);
    EXPECT_TRUE(p.end());
    EXPECT_TRUE(read_file(scratch_.filePath(QStringLiteral("a.ps"))).contains("(one)"));
}

TEST_F(PrintMan, pagesPaintOnAPdfWriter) {
    adopt(three_pages);
    const QString pdf = scratch_.filePath(QStringLiteral("a.pdf"));
    QPdfWriter writer(pdf);
    QPainter p(&writer);
    p.setFont(QFont(QStringLiteral("Liberation Mono"), 12));
    manager_.set_logical_unit(&p, 0, 0, 0);
    for (int page = manager_.get_rpt_page(1); page; page = manager_.get_rpt_page(2)) {
        if (manager_.get_cur_page() > 1)
            writer.newPage();
        EXPECT_EQ(manager_.print_page(&p), 1);
    }
    ASSERT_TRUE(p.end());
    EXPECT_EQ(testsupport::pdf_words(pdf).join(u' '), QStringLiteral("one two three"));
}

TEST_F(PrintMan, destructionLeavesTheReportFile) {
    {
        CPrintMan other;
        other.init_printman();
        other.add_rpt_page("x", 1);
        ASSERT_EQ(files().size(), 1);
        other.remove_file = scratch_.filePath(files().first());
    }
    EXPECT_EQ(files().size(), 1);
}

TEST_F(PrintMan, destructionRemovesTheFileThatTheHostNamed) {
    write_file(QString::fromLocal8Bit(path("gone")), "x");
    {
        CPrintMan other;
        other.remove_file = QString::fromLocal8Bit(path("gone"));
        other.remove_on_destroy = 1;
        EXPECT_EQ(files().size(), 1);
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(PrintMan, aNewManagerIsBlank) {
    EXPECT_EQ(manager_.get_cur_page(), 1);
    EXPECT_EQ(manager_.get_page_count(), 0);
    EXPECT_TRUE(manager_.remove_file.isNull());
    EXPECT_EQ(manager_.remove_on_destroy, 0);
    EXPECT_TRUE(manager_.last_job_ok());
}

TEST_F(PrintMan, theBufferOpensAndCloses) {
    EXPECT_EQ(manager_.open_rpt_buffer("r"), -1);
    adopt(three_pages);
    EXPECT_EQ(manager_.open_rpt_buffer(nullptr), -1);
    EXPECT_EQ(manager_.open_rpt_buffer(""), -1);
    EXPECT_EQ(manager_.open_rpt_buffer("r"), 0);
    EXPECT_EQ(manager_.close_rpt_buffer(), 0);
    EXPECT_EQ(manager_.close_rpt_buffer(), EOF);
}

TEST_F(PrintMan, thePrintDestinationIsCopiedWhole) {
    std::array<unsigned char, 416> bytes{};
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(i * 7 + 1);
    PrintDest dest;
    std::memcpy(&dest, bytes.data(), bytes.size());
    const auto kept = [this] {
        std::array<unsigned char, 416> copy{};
        std::memcpy(copy.data(), manager_.get_print_dest(), copy.size());
        return copy;
    };
    manager_.set_print_dest(dest);
    EXPECT_EQ(kept(), bytes);
    PrintDest other{};
    EXPECT_EQ(manager_.show_print_dest(other), 0);
    EXPECT_EQ(kept(), bytes);
}

TEST_F(PrintMan, theErrorHookHasNoEffect) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    manager_.printman_error("x");
    manager_.printman_error(nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(PrintMan, zoomNamesAndRatiosAreThoseOfTheTable) {
    EXPECT_EQ(manager_.zoom_ratio_names().size(), 6);
    EXPECT_EQ(manager_.zoom_ratio_id("150%"), 150);
    EXPECT_EQ(manager_.zoom_ratio_id("75%"), 0);
}

TEST_F(PrintMan, aReportThatShrinksIsNoHarm) {
    adopt(three_pages);
    manager_.get_rpt_page(1);
    write_file(QString::fromLocal8Bit(path("r.rpt")), "#!?PAGETOP 3000,2000\n");
    EXPECT_EQ(manager_.get_scr_size(), 0);
    manager_.load_current_page();
    manager_.get_rpt_page(2);
    manager_.get_rpt_page(4);
    QImage image(40, 40, QImage::Format_RGB32);
    QPainter p(&image);
    manager_.set_logical_unit(&p, 0, 0, 0);
    manager_.print_page(&p);
    p.end();
    QFile::remove(QString::fromLocal8Bit(path("r.rpt")));
    EXPECT_EQ(manager_.get_scr_size(), -1);
    EXPECT_EQ(manager_.get_rpt_page(1), 0);
    EXPECT_EQ(manager_.get_cur_page(), 1);
}
