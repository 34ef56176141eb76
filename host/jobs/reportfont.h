#pragma once

#include <QFont>

namespace host {

/// A font whose characters all have one width, or the nearest that there is.
QFont report_font(const QString& family, double point_size);

/// The font of reports when none is chosen.
inline constexpr char default_family[] = "Courier New";

/// The default font of a page on the screen or in a picture, which has 10 points at 100 percent.
/// Its characters are as wide as their cells, to the pixel.
QFont screen_font(int percent = 100);

} // namespace host
