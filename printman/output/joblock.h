#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace printman {

/// An advisory lock on a file or a directory, which other processes that ask for it wait for. It
/// ends with this object or with the process, and programs that are started do not have it.
class JobLock {
public:
    using Patience = std::chrono::milliseconds;
    static constexpr Patience usual_patience = std::chrono::minutes(3);

    /// Asked some twenty times a second while another process has the lock: false ends the wait.
    using GoesOn = std::function<bool()>;

    JobLock() = default;
    ~JobLock();
    JobLock(const JobLock&) = delete;
    JobLock& operator=(const JobLock&) = delete;

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

/// The right to the fixed names in /tmp, which all processes take in turn. All jobs of this process
/// share it; it is held until the last of them has let it go.
class TmpNames {
public:
    /// Does nothing when this one holds it already.
    ///
    /// @return empty, or why it was not to be had in time
    QString take(const JobLock::GoesOn& goes_on = {});

    void release() { lock_.reset(); }
    bool is_held() const { return lock_ != nullptr; }

private:
    std::shared_ptr<JobLock> lock_;
};

/// Lets the fixed names go when it ends.
class NamesInUse {
public:
    explicit NamesInUse(TmpNames& names) : names_(names) {}
    ~NamesInUse() { names_.release(); }
    NamesInUse(const NamesInUse&) = delete;
    NamesInUse& operator=(const NamesInUse&) = delete;

private:
    TmpNames& names_;
};

/// The turn of a job that lets events be handled while it works: another one that is started from
/// there would write to the same files.
class JobTurn {
public:
    JobTurn();
    ~JobTurn();
    JobTurn(const JobTurn&) = delete;
    JobTurn& operator=(const JobTurn&) = delete;

    /// Whether there was no other job when this one began.
    bool is_first() const { return is_first_; }

private:
    bool is_first_;
};

/// What a job answers whose turn it is not.
QString busy_printing();

} // namespace printman
