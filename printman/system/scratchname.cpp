#include <printman/system/scratchname.h>

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace printman {

namespace {

constexpr int max_attempts = 10;

Result failure(const QByteArray& path, const QString& reason) {
    return Result::file_failure(QFile::decodeName(path), reason);
}

Result failure(const QByteArray& path, int error) {
    return failure(path, qt_error_string(error));
}

/// Whether no such name is there afterwards.
bool remove_name(const QByteArray& path) {
    return ::unlink(path.constData()) == 0 || errno == ENOENT;
}

} // namespace

Result claim_scratch_name(const QByteArray& path, uid_t owner) {
    struct stat status {};
    if (::lstat(path.constData(), &status) != 0)
        return errno == ENOENT ? Result() : failure(path, errno);
    const bool is_link = S_ISLNK(status.st_mode);
    if (!is_link && !S_ISREG(status.st_mode))
        return failure(path, QStringLiteral("is in the way and is no file"));
    if (!is_link && status.st_uid != owner)
        return failure(path, QStringLiteral("belongs to another user"));
    // What is written to a file with two names would change under the other one, too.
    if ((is_link || status.st_nlink > 1) && !remove_name(path))
        return failure(path, errno);
    return {};
}

Result claim_scratch_name(const QByteArray& path) {
    return claim_scratch_name(path, ::geteuid());
}

Result create_scratch_file(const QByteArray& path, int& fd) {
    fd = -1;
    int error = 0;
    for (int attempt = 0; attempt < max_attempts && (attempt == 0 || error == EEXIST); ++attempt) {
        Result claimed = claim_scratch_name(path);
        if (!claimed.ok())
            return claimed;
        // A name that comes back between these two calls makes the open fail, never be followed.
        if (remove_name(path))
            fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                        S_IRUSR | S_IWUSR);
        if (fd >= 0)
            return {};
        error = errno;
    }
    return failure(path, error);
}

Result create_scratch_file(const QByteArray& path) {
    int fd = -1;
    Result created = create_scratch_file(path, fd);
    if (fd >= 0)
        ::close(fd);
    return created;
}

} // namespace printman
