#include "host/jobs/pdflayout.h"

#include "host/printers/recordfield.h"

#include <printman/render/units.h>
#include <printman/toolkit/legacyweight.h>
#include <printman/toolkit/pagesizes.h>
#include <printman/toolkit/psprinter.h>

#include <QFontInfo>
#include <QFontMetrics>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr int max_points = 2000;

/// Sides of a sheet, in device units.
struct Sides {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
};

QSizeF grid_of(const QFont& font, int columns, int lines, QPaintDevice& device) {
    const QFontMetrics metrics(font, &device);
    return {double{1} * columns * metrics.maxWidth(), double{1} * lines * metrics.height()};
}

/// A margin of the record that the library truncates to exactly @p units.
double record_margin(double units) {
    constexpr double within = 0.25;
    return (std::floor(std::max(0.0, units)) + within) / units_per_inch;
}

void set_margins(PsPrinter& sheet, const Sides& units) {
    const auto whole = [](double value) { return static_cast<unsigned>(std::max(0.0, value)); };
    sheet.setMargins(whole(units.top), whole(units.left), whole(units.bottom), whole(units.right));
}

Sides sheet_margins(const PsPrinter& sheet) {
    // In inches they would be rounded to hundredths.
    constexpr double points_per_inch = 72;
    const QMarginsF units =
        sheet.pageLayout().margins(QPageLayout::Point) * units_per_inch / points_per_inch;
    return {.top = std::round(units.top()),
            .left = std::round(units.left()),
            .bottom = std::round(units.bottom()),
            .right = std::round(units.right())};
}

/// The sheet margins that add up to @p wanted when the library applies them again around the text.
Sides halved(PsPrinter& sheet, const Sides& wanted) {
    Sides half{.top = wanted.top / 2,
               .left = wanted.left / 2,
               .bottom = wanted.bottom / 2,
               .right = wanted.right / 2};
    // Around the text, where the library takes the sheet's size in whole millimetres, device units
    // are not quite 1/600 inch.
    for (int round = 0; round < 4; ++round) {
        set_margins(sheet, half);
        const QPaintDeviceMetrics metrics(&sheet);
        const auto correct = [](double& side, double total, int again) {
            side += (total - std::floor(side) - again) / 2;
        };
        correct(half.top, wanted.top, itopY(record_margin(half.top), metrics));
        correct(half.bottom, wanted.bottom, itopY(record_margin(half.bottom), metrics));
        correct(half.left, wanted.left, itopX(record_margin(half.left), metrics));
        correct(half.right, wanted.right, itopX(record_margin(half.right), metrics));
    }
    set_margins(sheet, half);
    return half;
}

/// The font as a record. Its family is the one that the toolkit substitutes, as a record cannot ask
/// for a fixed-width font.
FontInfo font_record(const QFont& font, int points) {
    FontInfo info{};
    const QString family = QFontInfo(font).family();
    info.point_size = points;
    info.log_font.weight = printman::legacy_weight(font);
    info.log_font.italic = font.italic();
    info.log_font.underline = font.underline();
    info.log_font.strike_out = font.strikeOut();
    set_field(info.log_font.face_name, (family.isEmpty() ? font.family() : family).toUtf8());
    return info;
}

/// Sets the sheet's orientation, size and margins: wrong usage when the margins leave no room on
/// it.
Outcome set_sheet(PsPrinter& sheet, const PageSetup& setup, QSizeF grid) {
    const QPageSize paper = printman::page_size_of(setup.paper);
    const QPageLayout::Orientation orientation =
        setup.orientation.value_or(orientation_of(grid.toSize()));
    sheet.setPageSize(paper);
    sheet.setPageOrientation(orientation);
    if (!setup.margins)
        return Outcome::success();
    QSizeF inches = paper.size(QPageSize::Inch);
    if (orientation == QPageLayout::Landscape)
        inches.transpose();
    if (!leave_room(*setup.margins, inches))
        return Outcome::wrong_usage("the margins leave no room on the page");
    const auto units = [](double inch) { return std::round(inch * units_per_inch); };
    set_margins(sheet, {.top = units(setup.margins->top),
                        .left = units(setup.margins->left),
                        .bottom = units(setup.margins->bottom),
                        .right = units(setup.margins->right)});
    return Outcome::success();
}

} // namespace

Outcome lay_out(const PageSetup& setup, int columns, int lines, PdfLayout& layout) {
    PsPrinter sheet;
    const QSizeF grid = grid_of(setup.font, columns, lines, sheet);
    Outcome ready = set_sheet(sheet, setup, grid);
    if (!ready.ok())
        return ready;
    const QSizeF whole = sheet.pageLayout().fullRectPixels(sheet.resolution()).size();
    const QSizeF room(sheet.width(), sheet.height());
    Sides margins = sheet_margins(sheet);
    layout.corner = {margins.left, margins.top};
    layout.room = room;

    const double size = setup.font.pointSizeF();
    const bool exact =
        setup.exact_size && grid.width() <= room.width() && grid.height() <= room.height();
    layout.no_page_map = exact && size == std::floor(size);
    int points = std::clamp(static_cast<int>(std::lround(size)), 1, max_points);
    if (exact && !layout.no_page_map) {
        // A record has whole points. The page at ten times the font size is made to fit the area of
        // the page at its own size.
        points = std::clamp(static_cast<int>(std::lround(size * 10)), 1, max_points);
        QFont large = setup.font;
        large.setPointSize(points);
        const QSizeF area = (grid_of(large, columns, lines, sheet) * size / points).boundedTo(room);
        margins.right = whole.width() - margins.left - std::ceil(area.width());
        margins.bottom = whole.height() - margins.top - std::ceil(area.height());
    }
    const Sides kept = layout.no_page_map ? margins : halved(sheet, margins);
    layout.origin = {std::floor(kept.left), std::floor(kept.top)};

    layout.record = {};
    layout.record.in_use = 1;
    set_field(layout.record.printer_id, pdf_printer_id);
    set_field(layout.record.printer_name, "printman");
    layout.record.font = font_record(setup.font, points);
    layout.record.devmode.orientation =
        sheet.pageLayout().orientation() == QPageLayout::Landscape ? 1 : 0;
    layout.record.devmode.paper_size = setup.paper;
    layout.record.margins = {.top = record_margin(kept.top),
                             .bottom = record_margin(kept.bottom),
                             .left = record_margin(kept.left),
                             .right = record_margin(kept.right)};
    return Outcome::success();
}

QPointF centred_corner(QSizeF text, double angle, QPointF centre) {
    return centre - QTransform().rotate(-angle).map(QPointF(text.width() / 2, text.height() / 2));
}

} // namespace host
