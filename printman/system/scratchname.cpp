#include <printman/system/scratchname.h>

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace printman {

namespace {

constexpr int most_attempts = 10;

QString failure(const QByteArray& path, const QString& why) {
    return QFile::decodeName(path) + QStringLiteral(": ") + why;
}

QString failure(const QByteArray& path, int error) {
    return failure(path, qt_error_string(error));
}

/// Whether no such name is there afterwards.
bool remove_name(const QByteArray& path) {
    return ::unlink(path.constData()) == 0 || errno == ENOENT;
}

} // namespace

QString claim_scratch_name(const QByteArray& path, uid_t owner) {
    struct stat status {};
    if (::lstat(path.constData(), &status) != 0)
        return errno == ENOENT ? QString() : failure(path, errno);
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

QString claim_scratch_name(const QByteArray& path) {
    return claim_scratch_name(path, ::geteuid());
}

int create_scratch_file(const QByteArray& path, QString& error) {
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        error = claim_scratch_name(path);
        if (!error.isEmpty())
            return -1;
        // A name that comes back between these two calls makes the open fail, never be followed.
        int fd = -1;
        if (remove_name(path))
            fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                        S_IRUSR | S_IWUSR);
        if (fd >= 0)
            return fd;
        error = failure(path, errno);
        if (errno != EEXIST)
            return -1;
    }
    return -1;
}

} // namespace printman
