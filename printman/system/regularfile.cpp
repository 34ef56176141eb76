#include <printman/system/regularfile.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace printman {

namespace {

/// Closes the descriptor and leaves @p error in errno.
void close_with(int fd, int error) {
    ::close(fd);
    errno = error;
}

} // namespace

int open_regular_descriptor(const char* path, int access, off_t* size) {
    if (!path) {
        errno = EINVAL;
        return -1;
    }
    const int fd = ::open(path, access | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        return -1;
    struct stat status {};
    if (::fstat(fd, &status) != 0) {
        close_with(fd, errno);
        return -1;
    }
    if (!S_ISREG(status.st_mode)) {
        close_with(fd, S_ISDIR(status.st_mode) ? EISDIR : ESPIPE);
        return -1;
    }
    if (size)
        *size = status.st_size;
    return fd;
}

File open_regular_file(const char* path, off_t* size) {
    const int fd = open_regular_descriptor(path, O_RDONLY, size);
    if (fd < 0)
        return nullptr;
    File file(::fdopen(fd, "r"));
    if (!file)
        close_with(fd, errno);
    return file;
}

} // namespace printman
