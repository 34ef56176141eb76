#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>

namespace printman {

/// An advisory lock on a file or a directory, which other processes that ask for it wait for. It
/// ends with this object or with the process, and programs that are started do not have it.
class FileLock {
public:
    using Patience = std::chrono::milliseconds;
    static constexpr Patience usual_patience = std::chrono::minutes(3);

    /// Asked some twenty times a second while another process has the lock: false ends the wait.
    using GoesOn = std::function<bool()>;

    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Takes the lock of the lock file @p path, which stays afterwards, readable by everyone so
    /// that everyone can take it. No link is followed, and nothing is written. Where what stands
    /// there cannot be locked, such as a file that its owner keeps to himself, users have a lock
    /// file each, named @p path and the user's number: their processes still take turns.
    ///
    /// @return empty, or why it was not to be had in time
    QString take_file(const QByteArray& path, Patience patience = usual_patience,
                      const GoesOn& goes_on = {});

    /// Takes the lock of the current directory. One that cannot be locked, on a file system without
    /// locks say, is none to wait for.
    ///
    /// @return empty, or why it was not to be had in time
    QString take_current_directory(Patience patience = usual_patience, const GoesOn& goes_on = {});

    void release();

private:
    int fd_ = -1;
};

} // namespace printman
