#include "tests/support/namelock.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace testsupport {

namespace {

/// Opens the file, making it when there is none; -1 with errno when that fails.
int open_lock(const char* path) {
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_CLOEXEC;
    for (;;) {
        // Without O_CREAT first: where others can write, the system may refuse that for their
        // files.
        int fd = ::open(path, flags);
        if (fd >= 0 || errno != ENOENT)
            return fd;
        fd = ::open(path, flags | O_CREAT | O_EXCL, 0644);
        if (fd >= 0) {
            ::fchmod(fd, 0644);
            return fd;
        }
        if (errno != EEXIST)
            return -1;
    }
}

/// Whether the name is still that of the file: someone may have cleaned up meanwhile.
bool is_still(const char* path, int fd) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(fd, &opened) == 0 && ::lstat(path, &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

} // namespace

NameLock::NameLock(const char* path) {
    for (;;) {
        fd_ = open_lock(path);
        if (fd_ < 0)
            break;
        while (::flock(fd_, LOCK_EX) != 0 && errno == EINTR)
            continue;
        if (is_still(path, fd_))
            return;
        release();
    }
    ADD_FAILURE() << path << " cannot be locked: " << std::strerror(errno);
}

NameLock::~NameLock() {
    release();
}

void NameLock::release() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

} // namespace testsupport
