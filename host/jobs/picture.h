#pragma once

#include "host/files/outcome.h"

namespace host {

/// What a picture shows.
struct PictureSetup {
    int page = 1;   ///< from 1
    int zoom = 100; ///< percent; at 100 the text has 10 points at 96 dots per inch
};

/// Makes the PNG file @p out from a page of the report file @p report: a sheet in the colours of
/// the settings, with a margin of 20 pixels and a thin black frame at its edge. On failure @p out
/// is as it was.
Outcome make_picture(const QByteArray& report, const QByteArray& out, const PictureSetup& setup);

} // namespace host
