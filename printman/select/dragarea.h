#pragma once

#include <printman/report/reportbuffer.h>

#include <QPoint>
#include <QRect>

#include <array>

namespace printman {

class PageUnits;

/// The rectangles, in logical units, that a drag of the mouse covers in a page's flow of text: the
/// rest of the first line, the lines between, the start of the last line. The left-most and the
/// right-most of the two points bound it, whatever the direction; those not needed are null.
///
/// The first line's rectangle reaches one column beyond the page, the middle one does not.
///
/// @param from,to places on the page image, in its pixels
/// @param margin  pixels about the sheet
/// @param units   as the page was painted
/// @param columns of the page
std::array<QRect, 3> drag_area(QPoint from, QPoint to, int margin, const PageUnits& units,
                               int columns);

} // namespace printman
