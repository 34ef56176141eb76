#pragma once

#include <printman/printman_export.h>
#include <printman/toolkit/qpaintdevicemetrics.h>

/// Converts @p inches to horizontal device pixels of @p m, truncated toward zero.
///
/// @return 0 for a device without a width in millimetres and for a number that is not finite; the
///         result is clamped to the limits of int
PRINTMAN_EXPORT int itopX(double inches, const QPaintDeviceMetrics& m);

/// The same for vertical device pixels, by the device's height.
PRINTMAN_EXPORT int itopY(double inches, const QPaintDeviceMetrics& m);
