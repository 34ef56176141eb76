#pragma once

#include <printman/printer/prtsetup.h>

#include <QFont>

#include <optional>

class QWidget;

namespace printman {

/// A point size that a font can have: what is not 1 to 2000 is 12 or 2000.
int job_point_size(int point_size);

/// The report font that a printer's record says. A weight outside 0 to 99 is normal.
QFont report_font(const FontInfo& info);

/// Lets the user choose the report's font, starting with Courier New, light, 12 points.
///
/// @param parent of the dialog; may be null
/// @return none when it was cancelled, or went with @p parent
std::optional<QFont> choose_report_font(QWidget* parent);

} // namespace printman
