#pragma once

#include "host/files/outcome.h"

namespace host {

/// Makes the PNG file @p out of one page of the report file @p report: a sheet in the colours of
/// the settings, its text of 10 points times @p zoom percent at 96 dots per inch, with 20 pixels
/// around it and a thin black frame at its edge.
///
/// @param page from 1
Outcome make_picture(const QByteArray& report, const QByteArray& out, int page, int zoom);

} // namespace host
