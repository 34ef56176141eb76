#pragma once

#include <printman/result.h>

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

    /// Opens @p path for writing. Failures, here and below, do not name the file.
    Result open(const QString& path);

    /// The same for a name in bytes. Names that are not in the locale's encoding are refused: they
    /// would become the name of another file.
    Result open(const char* path);

    /// Where to write; null unless open.
    QIODevice* device() const { return device_.get(); }

    /// Appends @p size bytes: a failure once any write has failed.
    Result write(const char* data, qint64 size);

    /// Completes the file under its name: a failure when anything could not be written. An earlier
    /// file is then as it was.
    Result commit();

    /// Drops what was written; an earlier file stays.
    void discard();

private:
    void note_failure();

    std::unique_ptr<QIODevice> device_;
    Result result_; ///< the first failure since it was opened
};

} // namespace printman
