#pragma once

#include "host/files/outcome.h"

#include <QByteArray>
#include <QFile>

namespace host {

/// A file that is written under a temporary name in the same directory and takes its own name only
/// when it is complete, so that an earlier file stays whole until then. A symbolic link is followed
/// and stays. A device or a pipe is written directly.
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
    /// @param named what error messages call the file: the name by which the user knows it
    Outcome open(const QByteArray& path, const QByteArray& named);
    Outcome open(const QByteArray& path) { return open(path, path); }

    /// Appends @p bytes; false on failure, which error() and commit() then report.
    bool write(const QByteArray& bytes);

    /// Appends all of the file @p name.
    Outcome append_file(const QString& name);

    /// Completes the file under its name. When anything could not be written, that is the failure,
    /// and an earlier file is as it was.
    Outcome commit();

    /// Drops what was written.
    void discard();

    /// "cannot write PATH: reason" of the last failure.
    QByteArray error() const { return error_; }

private:
    bool fail(int code);
    bool open_directly(const QByteArray& path);
    bool open_temporary(unsigned mode);
    bool open_target(const QByteArray& path);
    bool finish();

    QByteArray named_;
    QByteArray target_;    ///< what is replaced: the name that all links lead to
    QByteArray temporary_; ///< empty when written directly
    QFile file_;
    QByteArray error_;
};

} // namespace host
