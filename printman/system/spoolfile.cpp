#include <printman/system/spoolfile.h>

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace printman {

namespace {

int open_unnamed(const std::string& directory) {
    const int fd = ::open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (fd >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL))
        return fd;
    // Not every file system knows unnamed files.
    std::string name = directory + "/printman-XXXXXX";
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0)
        ::unlink(name.c_str());
    return named;
}

} // namespace

SpoolFile::~SpoolFile() {
    close();
}

Result SpoolFile::failure(int error) const {
    return Result::file_failure(name_, qt_error_string(error));
}

Result SpoolFile::open(const std::string& directory, const QString& name) {
    close();
    name_ = name.isEmpty() ? QFile::decodeName(directory.c_str()) : name;
    if (!directory.empty())
        fd_ = open_unnamed(directory);
    if (fd_ >= 0)
        return {};
    name_ = QDir::tempPath();
    fd_ = open_unnamed(QFile::encodeName(name_).toStdString());
    return fd_ < 0 ? failure(errno) : Result();
}

Result SpoolFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return failure(errno);
        bytes.remove_prefix(static_cast<size_t>(n));
    }
    return {};
}

Result SpoolFile::rewind() {
    return ::lseek(fd_, 0, SEEK_SET) < 0 ? failure(errno) : Result();
}

Result SpoolFile::read(char* buffer, size_t& size) {
    for (;;) {
        const ssize_t n = ::read(fd_, buffer, size);
        if (n >= 0) {
            size = static_cast<size_t>(n);
            return {};
        }
        if (errno != EINTR)
            return failure(errno);
    }
}

void SpoolFile::close() {
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

} // namespace printman
