#include "host/jobs/pdflayout.h"

#include <printman/render/units.h>
#include <printman/toolkit/psprinter.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

host::PageSetup setup_of(double size, bool exact, std::optional<host::PageMargins> margins = {}) {
    host::PageSetup setup;
    setup.font = host::report_font(QStringLiteral("Courier New"), size);
    setup.exact_size = exact;
    setup.margins = margins;
    return setup;
}

/// What a margin of the record comes to at the left and the top, in 1/600 inch, as the library
/// counts it.
QPointF counted(const host::PdfLayout& layout) {
    const MarginInfo& margins = layout.record.margins;
    const auto units = [](double inches) { return static_cast<unsigned>(inches * 600); };
    PsPrinter sheet;
    sheet.setPageSize(QPageSize(QPageSize::A4));
    sheet.setPageOrientation(layout.record.devmode.orientation == 1 ? QPageLayout::Landscape
                                                                    : QPageLayout::Portrait);
    sheet.setMargins(units(margins.top), units(margins.left), units(margins.bottom),
                     units(margins.right));
    QPointF once(units(margins.left), units(margins.top));
    if (layout.no_page_map)
        return once;
    const QPaintDeviceMetrics metrics(&sheet);
    return once + QPointF(itopX(margins.left, metrics), itopY(margins.top, metrics));
}

} // namespace

TEST(PdfLayout, marginsComeOutOnce) {
    for (const auto& margins :
         {host::PageMargins{}, host::PageMargins{.top = 2, .left = 1.25, .bottom = 1, .right = 1.5},
          host::PageMargins{.top = 5, .left = 3, .bottom = 5, .right = 4},
          host::PageMargins{.top = 0.005, .left = 0.333, .bottom = 0, .right = 0}}) {
        for (const bool exact : {false, true}) {
            host::PdfLayout layout;
            host::PageSetup setup = setup_of(6, exact, margins);
            setup.orientation = QPageLayout::Portrait;
            ASSERT_TRUE(host::lay_out(setup, 20, 10, layout).ok());
            EXPECT_EQ(layout.no_page_map, exact);
            const QPointF at = counted(layout);
            EXPECT_NEAR(at.x(), std::round(margins.left * 600), 2);
            EXPECT_NEAR(at.y(), std::round(margins.top * 600), 2);
            EXPECT_EQ(layout.corner,
                      QPointF(std::round(margins.left * 600), std::round(margins.top * 600)));
        }
    }
}

TEST(PdfLayout, usualMarginsAreThePrintersOwn) {
    host::PdfLayout layout;
    ASSERT_TRUE(host::lay_out(setup_of(12, false), 80, 66, layout).ok());
    EXPECT_EQ(layout.corner, QPointF(300, 200));
    EXPECT_NEAR(counted(layout).x(), 300, 1);
    EXPECT_NEAR(counted(layout).y(), 200, 1);
    ASSERT_TRUE(host::lay_out(setup_of(12, false), 132, 66, layout).ok());
    EXPECT_EQ(layout.record.devmode.orientation, 1);
    EXPECT_EQ(layout.corner, QPointF(200, 300));
}

TEST(PdfLayout, whatDoesNotFitIsMadeToFit) {
    host::PdfLayout layout;
    ASSERT_TRUE(host::lay_out(setup_of(1000, true), 80, 66, layout).ok());
    EXPECT_FALSE(layout.no_page_map);
    EXPECT_EQ(layout.record.font.point_size, 1000);
}

TEST(PdfLayout, fractionsOfPointsArePartsOfALargerSize) {
    host::PdfLayout layout;
    ASSERT_TRUE(host::lay_out(setup_of(7.5, true), 40, 20, layout).ok());
    EXPECT_FALSE(layout.no_page_map);
    EXPECT_EQ(layout.record.font.point_size, 75);
    EXPECT_GT(layout.record.margins.right, 1);
}

TEST(PdfLayout, theRecordDescribesAnOrdinaryPrinter) {
    host::PageSetup setup = setup_of(10, true);
    setup.font.setItalic(true);
    setup.font.setBold(true);
    setup.paper = 2;
    host::PdfLayout layout;
    ASSERT_TRUE(host::lay_out(setup, 80, 20, layout).ok());
    EXPECT_NE(layout.record.in_use, 0);
    EXPECT_STREQ(layout.record.printer_id, host::pdf_printer_id);
    EXPECT_EQ(QByteArray(layout.record.printer_name).toLower().indexOf("generic"), -1);
    EXPECT_EQ(layout.record.devmode.paper_size, 2);
    EXPECT_EQ(layout.record.font.point_size, 10);
    EXPECT_EQ(layout.record.font.log_font.weight, 75);
    EXPECT_EQ(layout.record.font.log_font.italic, 1);
    EXPECT_EQ(layout.record.font.log_font.underline, 0);
    EXPECT_NE(*layout.record.font.log_font.face_name, '\0');
}

TEST(PdfLayout, marginsWithoutRoomAreWrongUsage) {
    host::PdfLayout layout;
    EXPECT_EQ(
        host::lay_out(
            setup_of(12, false, host::PageMargins{.top = 6, .left = 0, .bottom = 6, .right = 0}),
            80, 66, layout)
            .status,
        host::Outcome::usage);
}

TEST(PdfLayout, aTurnedTextHasItsMiddleInTheCentre) {
    const auto expect_corner = [](double angle, QPointF corner) {
        const QPointF found = host::centred_corner({40, 20}, angle, {100, 100});
        EXPECT_NEAR(found.x(), corner.x(), 1e-9);
        EXPECT_NEAR(found.y(), corner.y(), 1e-9);
    };
    expect_corner(0, {80, 90});
    expect_corner(90, {90, 120});
    expect_corner(180, {120, 110});
    expect_corner(-90, {110, 80});
}
