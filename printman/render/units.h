#pragma once

#include <printman/printman_export.h>
#include <printman/toolkit/qpaintdevicemetrics.h>

/// Converts @p inches to device pixels of @p m across, cut toward zero.
///
/// @return 0 for 0.0, for a device without a width in millimetres and for what is no finite number;
///         what does not fit an int is cut to its limits
PRINTMAN_EXPORT int itopX(double inches, const QPaintDeviceMetrics& m);

/// The same downwards, from the device's height.
PRINTMAN_EXPORT int itopY(double inches, const QPaintDeviceMetrics& m);
