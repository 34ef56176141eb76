#include <printman/system/filelock.h>

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace printman {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds poll_interval(50);
constexpr mode_t lock_file_mode = 0644;

enum class Found { locked, busy, vanished, unusable };

/// How long a lock is waited for.
class Wait {
public:
    Wait(FileLock::Timeout timeout, JobControl& control)
        : deadline_(Clock::now() + timeout), control_(control) {}

    /// Waits a moment.
    ///
    /// @return whether to try again
    bool once_more() {
        if (Clock::now() >= deadline_)
            return false;
        if (!control_.keep_going(JobStage::waiting))
            return false;
        std::this_thread::sleep_for(poll_interval);
        return true;
    }

    /// Why the lock of @p name was not taken.
    Result failure(const QString& name) const {
        return control_.is_canceled()
                   ? Result::canceled()
                   : Result::file_failure(name, QStringLiteral("is in use by another print job"));
    }

private:
    Clock::time_point deadline_;
    JobControl& control_;
};

/// Opens the lock file, making it when there is none.
///
/// @return -1 with errno: ENOENT when it should be tried again, else it cannot be used
int open_lock_file(const char* path) {
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;
    // Without O_CREAT first: where others can write, the system may refuse that for their files.
    int fd = ::open(path, flags);
    if (fd >= 0 || errno != ENOENT)
        return fd;
    fd = ::open(path, flags | O_CREAT | O_EXCL, lock_file_mode);
    if (fd >= 0)
        ::fchmod(fd, lock_file_mode);
    else if (errno == EEXIST || errno == ENOENT)
        errno = errno == EEXIST ? ENOENT : ENOTDIR;
    return fd;
}

/// Removes a link at the lock file's name.
///
/// @return whether it is gone
bool remove_link(const char* path) {
    struct stat status {};
    return ::lstat(path, &status) == 0 && S_ISLNK(status.st_mode) && ::unlink(path) == 0;
}

bool is_still(const char* path, int fd) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(fd, &opened) == 0 && ::lstat(path, &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

Found try_lock(int fd) {
    int result;
    do {
        result = ::flock(fd, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result == 0)
        return Found::locked;
    return errno == EWOULDBLOCK ? Found::busy : Found::unusable;
}

Found try_lock_file(const char* path, int& fd) {
    fd = open_lock_file(path);
    if (fd < 0 && errno == ELOOP && remove_link(path))
        return Found::vanished;
    if (fd < 0)
        return errno == ENOENT ? Found::vanished : Found::unusable;
    struct stat status {};
    Found found = Found::unusable;
    if (::fstat(fd, &status) == 0 && S_ISREG(status.st_mode))
        found = try_lock(fd);
    // Who cleans /tmp may have removed the name meanwhile; another process would lock a new file.
    if (found == Found::locked && !is_still(path, fd))
        found = Found::vanished;
    if (found != Found::locked) {
        ::close(fd);
        fd = -1;
    }
    return found;
}

/// @return the descriptor, -1 when it was not to be had in time or, at once, when @p unusable
int wait_for_lock_file(const QByteArray& path, Wait& wait, bool& unusable) {
    for (;;) {
        int fd = -1;
        const Found found = try_lock_file(path.constData(), fd);
        unusable = found == Found::unusable;
        if (found == Found::locked || unusable || !wait.once_more())
            return fd;
    }
}

} // namespace

FileLock::~FileLock() {
    release();
}

void FileLock::release() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

Result FileLock::take_file(const QByteArray& path, JobControl& control, Timeout timeout) {
    release();
    Wait wait(timeout, control);
    bool unusable = false;
    QByteArray name = path;
    fd_ = wait_for_lock_file(name, wait, unusable);
    if (unusable) {
        name += '.' + QByteArray::number(::geteuid());
        fd_ = wait_for_lock_file(name, wait, unusable);
    }
    if (fd_ >= 0)
        return {};
    const QString shown = QFile::decodeName(name);
    return unusable ? Result::file_failure(shown, QStringLiteral("cannot be locked"))
                    : wait.failure(shown);
}

Result FileLock::take_current_directory(JobControl& control, Timeout timeout) {
    release();
    fd_ = ::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    Wait wait(timeout, control);
    while (fd_ >= 0) {
        const Found found = try_lock(fd_);
        if (found == Found::locked)
            break;
        if (found == Found::unusable)
            release();
        if (found == Found::busy && !wait.once_more()) {
            release();
            return wait.failure(QStringLiteral("the current directory"));
        }
    }
    return {};
}

} // namespace printman
