#pragma once

#include <printman/progress.h>
#include <printman/result.h>

#include <QByteArray>

#include <chrono>

namespace printman {

/// An advisory lock on a file or a directory, which other processes that ask for it wait for. It
/// ends with this object or with the process, and programs that are started do not have it.
class FileLock {
public:
    using Timeout = std::chrono::milliseconds;
    static constexpr Timeout usual_timeout = std::chrono::minutes(3);

    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Takes the lock of the lock file @p path, which stays afterwards, readable by everyone so
    /// that everyone can take it. No link is followed, and nothing is written. Where what stands
    /// there cannot be locked, such as a file that its owner keeps to himself, users have a lock
    /// file each, named @p path and the user's number: their processes still take turns.
    ///
    /// @param control asked some twenty times a second while another process has the lock
    Result take_file(const QByteArray& path, JobControl& control, Timeout timeout = usual_timeout);

    /// Takes the lock of the current directory, likewise. A directory that cannot be locked, on a
    /// file system without locks say, is not waited for.
    Result take_current_directory(JobControl& control, Timeout timeout = usual_timeout);

    void release();

private:
    int fd_ = -1;
};

} // namespace printman
