#pragma once

#include <QByteArray>

namespace host {

// Paths are bytes, as the system has them: a file name need not be text in any encoding.

/// @p path with the current directory before it, unless it is absolute.
QByteArray absolute_path(const QByteArray& path);

/// @p path less its last name: "." where it has no directory.
QByteArray directory_of(const QByteArray& path);

/// Makes the directory of @p path, and those above it.
///
/// @return false, with errno, on failure
bool make_directory_of(const QByteArray& path);

/// Whether @p path is text in the locale's encoding. The toolkit would open another file for a name
/// that is not.
bool is_text(const QByteArray& path);

/// The error message for a name that is not.
inline constexpr char not_text[] = "The name is not valid in the locale's encoding";

/// Whether both names lead to the same file.
bool same_file(const QByteArray& a, const QByteArray& b);

} // namespace host
