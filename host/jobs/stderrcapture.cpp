#include "host/jobs/stderrcapture.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace host {

namespace {

constexpr qsizetype max_kept = 4096;

int visible_stderr = STDERR_FILENO;

} // namespace

StderrCapture::StderrCapture() {
    captured_ = ::memfd_create("errors", MFD_CLOEXEC);
    visible_ = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (captured_ >= 0 && visible_ >= 0 && ::dup2(captured_, STDERR_FILENO) >= 0)
        visible_stderr = visible_;
}

StderrCapture::~StderrCapture() {
    if (captured_ >= 0 && visible_ >= 0) {
        visible_stderr = STDERR_FILENO;
        ::dup2(visible_, STDERR_FILENO);
    }
    for (const int fd : {captured_, visible_}) {
        if (fd >= 0)
            ::close(fd);
    }
}

QByteArray StderrCapture::text() const {
    QByteArray bytes(max_kept, '\0');
    const ssize_t size = ::pread(captured_, bytes.data(), max_kept, 0);
    bytes.truncate(size < 0 ? 0 : size);
    return bytes;
}

int StderrCapture::visible_fd() {
    return visible_stderr;
}

} // namespace host
