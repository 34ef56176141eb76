#pragma once

#include "host/files/outcome.h"

#include <QByteArray>
#include <QFile>

namespace host {

/// A file that the user named: it is written beside, under a name that no one else has, and takes
/// its name only when it is complete, so that an earlier file stays whole until then. A link is
/// followed and stays. What is no regular file (a device, a pipe) is written directly.
///
/// The new file has the earlier one's permissions, or what the umask leaves of rw-rw-rw-.
class PendingFile {
public:
    PendingFile() = default;
    ~PendingFile() { discard(); }
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    /// Opens @p path for writing. An earlier file must be writable.
    ///
    /// @return false on failure; error() then says why
    bool open(const QByteArray& path) { return open(path, path); }

    /// The same; errors are told of @p named, which is what the user calls the file.
    bool open(const QByteArray& path, const QByteArray& named);

    /// Appends @p bytes; false on failure.
    bool write(const QByteArray& bytes);

    /// Appends all of the file @p name.
    ///
    /// @return why not, of whichever of the two files
    Outcome take_over(const QString& name);

    /// Where to write instead; whoever does so looks at each result.
    QIODevice* device() { return &file_; }

    /// Completes the file under its name.
    ///
    /// @return false when anything could not be written; an earlier file is then as it was
    bool commit();

    /// Drops what was written.
    void discard();

    /// "cannot write PATH: reason" of the last failure.
    QByteArray error() const { return error_; }

private:
    bool fail(int code);
    bool open_directly(const QByteArray& path);
    bool open_beside(unsigned mode);

    QByteArray named_;  ///< as the user named it
    QByteArray target_; ///< what is replaced: the name behind all links
    QByteArray beside_; ///< empty when written directly
    QFile file_;
    QByteArray error_;
};

/// @p path with the current directory before it, unless it is absolute.
QByteArray absolute_path(const QByteArray& path);

/// @p path less its last name: "." where it has no directory.
QByteArray directory_of(const QByteArray& path);

/// Makes the directory of @p path, and those above it: false, with errno, on failure.
bool make_directory_of(const QByteArray& path);

/// Whether the toolkit can name the file: @p path is text in the locale's encoding.
bool is_text(const QByteArray& path);

/// Whether both names lead to the same file.
bool same_file(const QByteArray& a, const QByteArray& b);

} // namespace host
