#pragma once

#include <QString>

#include <memory>

class QIODevice;

namespace printman {

/// A file that the user named: it is written beside and takes its name only when it is complete, so
/// that an earlier file stays whole until then. What is no regular file (a device, a pipe) is
/// written directly; a named pipe is waited for until somebody reads from it.
class OutputFile {
public:
    OutputFile();
    ~OutputFile();

    /// Opens @p path for writing.
    ///
    /// @return false when it cannot be opened; error() then says why
    bool open(const QString& path);

    /// The same for a name in bytes. Names that are not in the locale's encoding are refused: they
    /// would become the name of another file.
    bool open(const char* path);

    /// Where to write; null unless open.
    QIODevice* device() const { return device_.get(); }

    /// Appends @p size bytes.
    ///
    /// @return false once any write has failed
    bool write(const char* data, qint64 size);

    /// Completes the file under its name.
    ///
    /// @return false when anything could not be written; an earlier file is then as it was
    bool commit();

    /// Drops what was written; an earlier file stays.
    void discard();

    /// The reason of the last failure in one line, without the file's name.
    QString error() const { return error_; }

private:
    void note_failure();

    std::unique_ptr<QIODevice> device_;
    QString error_;
    bool failed_ = false;
};

} // namespace printman
