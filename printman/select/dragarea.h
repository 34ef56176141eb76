#pragma once

#include <printman/report/reportbuffer.h>

#include <QPoint>
#include <QRect>

#include <array>

namespace printman {

class PageUnits;

/// The rectangles, in logical units, that a drag of the mouse covers in a page's flow of text: the
/// rest of the first line, the lines between, the start of the last line. They extend from the
/// left-most to the right-most of the two points, whatever the drag's direction. Rectangles that
/// are not needed are null.
///
/// The first line's rectangle extends one column beyond the page, the middle one does not.
///
/// @param from,to places on the page image, in its pixels
/// @param margin  pixels around the sheet
/// @param units   those in which the page was painted
/// @param columns columns of the page
std::array<QRect, 3> drag_area(QPoint from, QPoint to, int margin, const PageUnits& units,
                               int columns);

} // namespace printman
