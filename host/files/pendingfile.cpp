#include "host/files/pendingfile.h"

#include <QRandomGenerator>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

/// The name that @p path leads to through its links, which need not exist; empty for a loop.
QByteArray behind_links(QByteArray path) {
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

QByteArray absolute_path(const QByteArray& path) {
    std::error_code error;
    const std::string directory = std::filesystem::current_path(error).native();
    return path.startsWith('/') ? path : QByteArray::fromStdString(directory) + '/' + path;
}

QByteArray directory_of(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    if (slash < 0)
        return ".";
    return slash == 0 ? QByteArray("/") : path.left(slash);
}

bool make_directory_of(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    if (slash <= 0)
        return true;
    for (qsizetype at = path.indexOf('/', 1); at >= 0 && at <= slash;
         at = path.indexOf('/', at + 1)) {
        if (::mkdir(path.left(at).constData(), 0777) != 0 && errno != EEXIST)
            return false;
    }
    return true;
}

bool is_text(const QByteArray& path) {
    return QFile::encodeName(QFile::decodeName(path)) == path;
}

bool same_file(const QByteArray& a, const QByteArray& b) {
    struct stat first {};
    struct stat second {};
    return ::stat(a.constData(), &first) == 0 && ::stat(b.constData(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

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

bool PendingFile::open_beside(unsigned mode) {
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QByteArray name = directory_of(target_) + "/.printman-" +
                                QByteArray::number(QRandomGenerator::global()->generate64(), 36)
                                    .rightJustified(13, '0');
        const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (fd < 0 && errno == EEXIST)
            continue;
        if (fd < 0)
            return fail(errno);
        beside_ = name;
        if (file_.open(fd, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
            return true;
        ::close(fd);
        return fail(EIO);
    }
    return fail(EEXIST);
}

bool PendingFile::open(const QByteArray& path, const QByteArray& named) {
    discard();
    named_ = named;
    struct stat status {};
    // The links of a name such as /dev/stdout lead to no name: a pipe has none.
    const bool exists = ::stat(path.constData(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode))
        return fail(EISDIR);
    if (exists && !S_ISREG(status.st_mode))
        return open_directly(path);
    target_ = behind_links(path);
    if (target_.isEmpty())
        return fail(path.isEmpty() ? ENOENT : ELOOP);
    if (::stat(target_.constData(), &status) != 0)
        return errno == ENOENT && !target_.endsWith('/') ? open_beside(0666) : fail(errno);
    if (::access(target_.constData(), W_OK) != 0)
        return fail(errno);
    if (!open_beside(0600))
        return false;
    return ::fchmod(file_.handle(), status.st_mode & 07777) == 0 || fail(errno);
}

bool PendingFile::write(const QByteArray& bytes) {
    errno = 0;
    return file_.write(bytes) == bytes.size() || fail(errno != 0 ? errno : EIO);
}

Outcome PendingFile::take_over(const QString& name) {
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
            return Outcome::failure(error());
    }
    return Outcome::success();
}

bool PendingFile::commit() {
    if (!file_.isOpen()) {
        if (error_.isEmpty())
            fail(EBADF);
        return false;
    }
    errno = 0;
    const bool written = file_.flush() && file_.error() == QFileDevice::NoError;
    if (!written)
        return fail(errno != 0 ? errno : EIO);
    if (!beside_.isEmpty() && ::fsync(file_.handle()) != 0)
        return fail(errno);
    file_.close();
    if (file_.error() != QFileDevice::NoError)
        return fail(EIO);
    if (!beside_.isEmpty() && ::rename(beside_.constData(), target_.constData()) != 0)
        return fail(errno);
    beside_.clear();
    return true;
}

void PendingFile::discard() {
    if (file_.isOpen())
        file_.close();
    if (!beside_.isEmpty())
        ::unlink(beside_.constData());
    beside_.clear();
}

} // namespace host
