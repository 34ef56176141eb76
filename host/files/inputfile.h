#pragma once

#include "host/files/outcome.h"

class QFile;

namespace host {

/// Opens a regular file for reading. A device or a pipe, which might be waited for or never end, is
/// refused.
///
/// @return 0, or errno: EISDIR for a directory, ESPIPE for anything else that is no regular file
int open_regular_file(const QByteArray& path, QFile& file);

/// The same for an input that must not be empty.
///
/// @param named what error messages call the file: the name by which the user knows it
Outcome open_input(const QByteArray& path, QFile& file, const QByteArray& named);
Outcome open_input(const QByteArray& path, QFile& file);

/// Whether open_input() would succeed, and why not.
Outcome check_input(const QByteArray& path, const QByteArray& named);
Outcome check_input(const QByteArray& path);

/// Whether @p out can be the output of a job that reads @p in: wrong usage when it has no name or
/// is the same file.
Outcome check_output(const QByteArray& in, const QByteArray& out);

/// Reads all of a file, which may be a pipe; an empty one, or one of more than @p limit bytes, is a
/// failure.
Outcome read_all(const QByteArray& path, qsizetype limit, QByteArray& bytes);

} // namespace host
