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

/// The zoom table, in the order in which it is offered, ended by a row with ratio 0.
PRINTMAN_EXPORT extern const ZoomRatio zoom_ratios[];

/// The names of the zoom table in its order.
PRINTMAN_EXPORT QStringList zoom_names();

/// @return the ratio of the row whose name is exactly @p name, or 0
PRINTMAN_EXPORT int zoom_ratio(const char* name);

} // namespace printman

/// The area that a whole page may take in a view of size @p view: 30 pixels less each way.
PRINTMAN_EXPORT QSize get_preview_size(QSize view);

/// Where a page of size @p page stands centred in a view of size @p view; halves are cut toward
/// zero.
PRINTMAN_EXPORT QPoint get_preview_loc(QSize page, QSize view);
