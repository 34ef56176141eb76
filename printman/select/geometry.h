#pragma once

#include <printman/printman_export.h>

#include <QRect>

/// The gap between two rectangles on a line: from the column after @p a to the first column of @p
/// b, as high as @p a. Its width is negative when @p b does not lie to the right of @p a.
PRINTMAN_EXPORT QRect merge_rect(const QRect& a, const QRect& b);
