#pragma once

#include "host/files/outcome.h"

class CPrintMan;

namespace host {

/// The longest name of a report file that the library takes, in bytes.
inline constexpr qsizetype max_report_name = 255;

/// Opens the report file @p path in @p manager, which indexes its pages. A report without page
/// geometry, or without a page, is a failure.
///
/// @param named what error messages call the file: the name by which the user knows it
Outcome open_report(CPrintMan& manager, const QByteArray& path, const QByteArray& named);
Outcome open_report(CPrintMan& manager, const QByteArray& path);

} // namespace host
