#pragma once

#include <printman/printman_export.h>

#include <QPoint>
#include <QSize>
#include <QStringList>

#include <cstdint>

namespace printman {

/// A row of the zoom table.
struct ZoomRatio {
    int32_t ratio; ///< in percent; 0 ends the table
    char name[20]; ///< as the user sees it
};

/// The zoom table, in the order in which it is offered, terminated by a row with ratio 0.
PRINTMAN_EXPORT extern const ZoomRatio zoom_ratios[];

/// The names in the zoom table, in its order.
PRINTMAN_EXPORT QStringList zoom_names();

/// @return the ratio of the row whose name is exactly @p name; 0 if there is none
PRINTMAN_EXPORT int zoom_ratio(const char* name);

} // namespace printman

/// The area for a whole page in a view of size @p view: 30 pixels less in each direction.
PRINTMAN_EXPORT QSize get_preview_size(QSize view);

/// The position of a page of size @p page that is centred in a view of size @p view; halves are
/// truncated toward zero.
PRINTMAN_EXPORT QPoint get_preview_loc(QSize page, QSize view);
