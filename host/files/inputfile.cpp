#include "host/files/inputfile.h"

#include "host/files/paths.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

/// 0 for a regular file, or errno.
int check_regular(int fd) {
    struct stat status {};
    if (::fstat(fd, &status) != 0)
        return errno;
    return S_ISREG(status.st_mode) ? 0 : S_ISDIR(status.st_mode) ? EISDIR : ESPIPE;
}

} // namespace

int open_regular_file(const QByteArray& path, QFile& file) {
    const int fd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0)
        return errno;
    int error = check_regular(fd);
    if (error == 0 &&
        !file.open(fd, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        error = EIO;
    if (error != 0)
        ::close(fd);
    return error;
}

Outcome open_input(const QByteArray& path, QFile& file, const QByteArray& named) {
    const int error = open_regular_file(path, file);
    if (error == ESPIPE)
        return Outcome::failure(named + ": Not a regular file; it is read more than once");
    if (error != 0)
        return Outcome::failure(named + ": " + std::strerror(error));
    return file.size() > 0 ? Outcome::success() : Outcome::failure(named + ": The file is empty");
}

Outcome open_input(const QByteArray& path, QFile& file) {
    return open_input(path, file, path);
}

Outcome check_input(const QByteArray& path, const QByteArray& named) {
    QFile file;
    return open_input(path, file, named);
}

Outcome check_input(const QByteArray& path) {
    return check_input(path, path);
}

Outcome check_output(const QByteArray& in, const QByteArray& out) {
    if (out.isEmpty())
        return Outcome::wrong_usage("the name of the output file is empty");
    if (same_file(in, out))
        return Outcome::wrong_usage(out + " is both input and output");
    return Outcome::success();
}

Outcome read_all(const QByteArray& path, qsizetype limit, QByteArray& bytes) {
    constexpr qsizetype piece_size = 1 << 16;
    const int fd = ::open(path.constData(), O_RDONLY | O_NOCTTY | O_CLOEXEC);
    QByteArray piece(piece_size, '\0');
    bytes.clear();
    ssize_t size = fd < 0 ? -1 : 1;
    while (size > 0 && bytes.size() <= limit) {
        size = ::read(fd, piece.data(), static_cast<size_t>(piece_size));
        bytes += piece.left(std::max<ssize_t>(0, size));
    }
    const int error = errno;
    if (fd >= 0)
        ::close(fd);
    if (size < 0)
        return Outcome::failure(path + ": " + std::strerror(error));
    if (bytes.isEmpty())
        return Outcome::failure(path + ": The file is empty");
    return bytes.size() <= limit ? Outcome::success()
                                 : Outcome::failure(path + ": The file is too large");
}

} // namespace host
