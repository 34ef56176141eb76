#pragma once

#include "host/files/outcome.h"

class CPrintMan;

namespace host {

/// Looks whether @p path is a file that can be read: says what it is instead when it is none.
Outcome check_input(const QByteArray& path);

/// What a report's name may hold; the library refuses a longer one.
inline constexpr qsizetype max_report_name = 255;

/// Hands the report file @p path to @p manager, which has its pages indexed afterwards.
///
/// @return why not, with the line where that helps; a report without page geometry is refused
Outcome open_report(CPrintMan& manager, const QByteArray& path);

/// The same; what is wrong is told of @p named, which is what the user calls the file.
Outcome open_report(CPrintMan& manager, const QByteArray& path, const QByteArray& named);

/// Looks whether @p out can be an output of a job that reads @p in.
Outcome check_output(const QByteArray& in, const QByteArray& out);

} // namespace host
