#include "tests/printer/setuprecords.h"
#include "tests/support/tools.h"

#include <printman/output/jobfont.h>
#include <printman/output/jobprinter.h>
#include <printman/output/watermark.h>
#include <printman/toolkit/legacyweight.h>
#include <printman/toolkit/pagesizes.h>
#include <printman/toolkit/psprinter.h>

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

using namespace printman;

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

FontInfo font_info(std::string_view family, int points, int weight) {
    FontInfo info{};
    set_text(info.log_font.face_name, family);
    info.point_size = points;
    info.log_font.weight = weight;
    return info;
}

QMarginsF margins_of(const PsPrinter& printer) {
    return printer.pageLayout().margins(QPageLayout::Inch);
}

} // namespace

TEST(ReportFont, isWhatTheRecordSays) {
    FontInfo info = font_info("Helvetica", 11, 75);
    info.log_font.italic = 1;
    info.log_font.underline = 1;
    info.log_font.strike_out = 1;
    const QFont font = report_font(info);
    EXPECT_EQ(font.family(), QStringLiteral("Helvetica"));
    EXPECT_EQ(font.pointSize(), 11);
    EXPECT_EQ(legacy_weight(font), 75);
    EXPECT_TRUE(font.italic() && font.underline() && font.strikeOut());
}

TEST(ReportFont, hasASizeAndAWeightWhateverTheRecordSays) {
    for (const int points : {0, -5, INT_MIN})
        EXPECT_EQ(report_font(font_info("Courier", points, 50)).pointSize(), 12);
    EXPECT_EQ(report_font(font_info("Courier", INT_MAX, 50)).pointSize(), 2000);
    for (const int weight : {-1, 100, 700, INT_MIN, INT_MAX})
        EXPECT_EQ(report_font(font_info("Courier", 10, weight)).weight(), QFont::Normal);
    EXPECT_EQ(legacy_weight(report_font(font_info("Courier", 10, 99))), 87);
    EXPECT_EQ(legacy_weight(report_font(font_info("Courier", 10, 0))), 0);
}

TEST(ReportFont, takesAFamilyThatFillsItsField) {
    EXPECT_EQ(report_font(font_info(std::string(128, 'F'), 10, 50)).family(), QString(128, u'F'));
    EXPECT_EQ(report_font(font_info("", 10, 50)).family(), QFont().family());
}

TEST(FieldText, isUtf8OrElseLatin1AndIsCutBetweenCharacters) {
    EXPECT_EQ(utf8_or_latin1("\xc3\xa4"), QStringLiteral("\u00e4"));
    EXPECT_EQ(utf8_or_latin1("\xe4"), QStringLiteral("\u00e4"));
    EXPECT_EQ(utf8_or_latin1_field(nullptr, 80), QString());
    EXPECT_EQ(utf8_or_latin1_field("abc", 3), QStringLiteral("ab"));
    EXPECT_EQ(utf8_or_latin1_field("abc", 4), QStringLiteral("abc"));
    EXPECT_EQ(utf8_or_latin1_field("a\xe2\x82\xac", 4), QStringLiteral("a"));
    EXPECT_EQ(utf8_or_latin1_field("a\xe2\x82\xac", 5), QStringLiteral("a\u20ac"));
    EXPECT_EQ(utf8_or_latin1_field("\xe4\xe4\xe4", 3), QStringLiteral("\u00e4\u00e4"));
}

TEST(IsGeneric, findsTheWordInAnyCase) {
    EXPECT_TRUE(is_generic(QStringLiteral("My GENERIC / Text")));
    EXPECT_TRUE(is_generic(QStringLiteral("generic")));
    EXPECT_FALSE(is_generic(QStringLiteral("gener ic")));
    EXPECT_FALSE(is_generic(QString()));
}

TEST(SetJob, setsNameSheetAndOneCopy) {
    PsPrinter printer;
    printer.setCopyCount(7);
    DLWDEVMODE devmode{};
    devmode.orientation = 1;
    devmode.paper_size = 2;
    devmode.from_page = 3;
    devmode.to_page = 5;
    set_job(printer, QStringLiteral("office"), devmode);
    EXPECT_EQ(printer.printerName(), QStringLiteral("office"));
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
    EXPECT_EQ(printer.pageLayout().pageSize().id(), QPageSize::Letter);
    EXPECT_EQ(printer.copyCount(), 1);
    EXPECT_EQ(printer.fromPage(), 3);
    EXPECT_EQ(printer.toPage(), 5);
}

TEST(SetJob, leavesTheSheetWhereTheRecordSaysNone) {
    PsPrinter printer;
    printer.setPageSize(page_size_of(2));
    printer.setPageOrientation(QPageLayout::Landscape);
    DLWDEVMODE devmode{};
    for (const int unknown : {-1, 2000, INT_MIN, INT_MAX}) {
        devmode.orientation = devmode.paper_size = unknown;
        devmode.from_page = unknown;
        devmode.to_page = -unknown / 2;
        set_job(printer, QString(), devmode);
        EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
        EXPECT_EQ(printer.pageLayout().pageSize().id(), QPageSize::Letter);
    }
}

TEST(SetSheet, dropsMarginsThatAreTooWideForTheNewPaper) {
    PsPrinter printer;
    set_sheet_margins(printer, {.left = 3, .right = 3, .top = 3, .bottom = 3});
    set_sheet(printer, 0, 13);
    EXPECT_GT(printer.width(), 800);
    EXPECT_GT(printer.height(), 1100);
}

TEST(Margins, areSetInInchesOfTheSheetAsItIsTurned) {
    PsPrinter printer;
    set_sheet(printer, 1, 0);
    set_sheet_margins(printer, usable_margins({0.25, 0.5, 0.75, 1.5}));
    const QMarginsF margins = margins_of(printer);
    EXPECT_NEAR(margins.top(), 0.25, 0.01);
    EXPECT_NEAR(margins.bottom(), 0.5, 0.01);
    EXPECT_NEAR(margins.left(), 0.75, 0.01);
    EXPECT_NEAR(margins.right(), 1.5, 0.01);
}

TEST(Margins, thatAreNoNumbersOrNegativeAreNone) {
    for (const double bad : {std::nan(""), infinite, -infinite, -1.0}) {
        const PageMargins margins = usable_margins({bad, bad, bad, bad});
        EXPECT_EQ(margins.left + margins.right + margins.top + margins.bottom, 0.0);
        PsPrinter printer;
        set_sheet_margins(printer, margins);
        EXPECT_EQ(margins_of(printer), QMarginsF());
    }
}

TEST(Margins, thatAreHugeStayNumbersAndLeaveTheSheet) {
    PsPrinter printer;
    const QMarginsF before = margins_of(printer);
    set_sheet_margins(printer, usable_margins({1e300, 1e9, 5e6, 7e6}));
    EXPECT_EQ(margins_of(printer), before);
    set_sheet_margins(printer,
                      {.left = infinite, .right = -1, .top = std::nan(""), .bottom = 1e18});
    EXPECT_GT(printer.width(), 1000);
}

TEST(Margins, thatLeaveNoRoomOnThePageAreNone) {
    const PageMargins kept =
        margins_within({.left = 4, .right = 4, .top = 2, .bottom = 2}, QSizeF(8, 11));
    EXPECT_EQ(kept.left + kept.right, 0.0);
    EXPECT_EQ(kept.top + kept.bottom, 4.0);
    EXPECT_EQ(margins_within({.left = 0, .right = 0, .top = 2, .bottom = 12}, QSizeF(8, 11)).bottom,
              0.0);
}

TEST(FindPrinter, readsTheRecordWithTextsThatFillTheirFields) {
    const QTemporaryDir scratch;
    const QString file = scratch.filePath(QStringLiteral("PRTSETUP.BIN"));
    SetupRecord full = setup_record("full");
    set_text(full.printer_name, std::string(128, 'p'));
    testsupport::write_file(file, QByteArray::fromStdString(setup_bytes({full})));
    const auto found = find_printer(file, "full");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->name, QString(127, u'p'));
    EXPECT_EQ(found->devmode.paper_size, 2);
    EXPECT_FALSE(find_printer(file, "other"));
    EXPECT_FALSE(find_printer(file, nullptr));
    EXPECT_FALSE(find_printer(QString(), "full"));
}
