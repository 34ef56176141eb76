#include "host/files/pendingfile.h"

#include "host/files/paths.h"

#include <QRandomGenerator>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

/// The name that @p path leads to through its links, which need not exist; empty for a loop.
QByteArray follow_links(QByteArray path) {
    for (int depth = 0; depth < 40; ++depth) {
        std::array<char, 4096> buffer{};
        const ssize_t length = ::readlink(path.constData(), buffer.data(), buffer.size());
        if (length < 0)
            return path;
        const QByteArray link(buffer.data(), length);
        path = link.startsWith('/') ? link : directory_of(path) + '/' + link;
    }
    return {};
}

} // namespace

bool PendingFile::fail(int code) {
    error_ = "cannot write " + named_ + ": " + std::strerror(code);
    discard();
    return false;
}

bool PendingFile::open_directly(const QByteArray& path) {
    const int fd = ::open(path.constData(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (fd < 0)
        return fail(errno);
    if (!file_.open(fd, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return fail(EIO);
    }
    return true;
}

bool PendingFile::open_temporary(unsigned mode) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QByteArray name = directory_of(target_) + "/.printman-" +
                                QByteArray::number(QRandomGenerator::global()->generate64(), 36)
                                    .rightJustified(13, '0');
        const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (fd < 0 && errno == EEXIST)
            continue;
        if (fd < 0)
            return fail(errno);
        temporary_ = name;
        if (file_.open(fd, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
            return true;
        ::close(fd);
        return fail(EIO);
    }
    return fail(EEXIST);
}

Outcome PendingFile::open(const QByteArray& path, const QByteArray& named) {
    discard();
    error_.clear();
    named_ = named;
    return open_target(path) ? Outcome::success() : Outcome::failure(error_);
}

bool PendingFile::open_target(const QByteArray& path) {
    struct stat status {};
    // The links of a name such as /dev/stdout lead to no name: a pipe has none.
    const bool exists = ::stat(path.constData(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode))
        return fail(EISDIR);
    if (exists && !S_ISREG(status.st_mode))
        return open_directly(path);
    target_ = follow_links(path);
    if (target_.isEmpty())
        return fail(path.isEmpty() ? ENOENT : ELOOP);
    if (::stat(target_.constData(), &status) != 0)
        return errno == ENOENT && !target_.endsWith('/') ? open_temporary(0666) : fail(errno);
    if (::access(target_.constData(), W_OK) != 0)
        return fail(errno);
    if (!open_temporary(0600))
        return false;
    return ::fchmod(file_.handle(), status.st_mode & 07777) == 0 || fail(errno);
}

bool PendingFile::write(const QByteArray& bytes) {
    errno = 0;
    return file_.write(bytes) == bytes.size() || fail(errno != 0 ? errno : EIO);
}

Outcome PendingFile::append_file(const QString& name) {
    constexpr qint64 piece_size = 1 << 18;
    QFile file(name);
    const auto unreadable = [&file] {
        return Outcome::failure("cannot read the result back: " +
                                QFile::encodeName(file.errorString()));
    };
    if (!file.open(QIODevice::ReadOnly))
        return unreadable();
    while (!file.atEnd()) {
        const QByteArray piece = file.read(piece_size);
        if (piece.isEmpty())
            return unreadable();
        if (!write(piece))
            return Outcome::failure(error_);
    }
    return Outcome::success();
}

Outcome PendingFile::commit() {
    if (!file_.isOpen() && error_.isEmpty())
        fail(EBADF);
    return file_.isOpen() && finish() ? Outcome::success() : Outcome::failure(error_);
}

bool PendingFile::finish() {
    errno = 0;
    const bool written = file_.flush() && file_.error() == QFileDevice::NoError;
    if (!written)
        return fail(errno != 0 ? errno : EIO);
    if (!temporary_.isEmpty() && ::fsync(file_.handle()) != 0)
        return fail(errno);
    file_.close();
    if (file_.error() != QFileDevice::NoError)
        return fail(EIO);
    if (!temporary_.isEmpty() && ::rename(temporary_.constData(), target_.constData()) != 0)
        return fail(errno);
    temporary_.clear();
    return true;
}

void PendingFile::discard() {
    if (file_.isOpen())
        file_.close();
    if (!temporary_.isEmpty())
        ::unlink(temporary_.constData());
    temporary_.clear();
}

} // namespace host
