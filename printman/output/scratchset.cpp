#include <printman/output/scratchset.h>
#include <printman/printer/paths.h>
#include <printman/system/filelock.h>

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace printman {

namespace {

constexpr int max_attempts = 10;

} // namespace

Result ScratchSet::create(const std::vector<Part>& parts, JobControl& control) {
    const QString directory = QDir::currentPath();
    if (directory.isEmpty() || !QDir::isAbsolutePath(directory))
        return Result::failure(QStringLiteral("the current directory is no longer there"));
    FileLock lock;
    Result locked = lock.take_current_directory(control);
    if (!locked.ok())
        return locked;
    int error = EEXIST;
    for (int attempt = 0; attempt < max_attempts && error == EEXIST; ++attempt) {
        names_.clear();
        for (const Part& part : parts)
            names_ << get_tmpfile(directory, QString::fromLatin1(part.prefix),
                                  QString::fromLatin1(part.extension));
        if (make_files(parts, error))
            return {};
    }
    return Result::file_failure(directory, qt_error_string(error));
}

bool ScratchSet::make_files(const std::vector<Part>& parts, int& error) {
    for (size_t i = 0; i < parts.size(); ++i) {
        const QByteArray path = QFile::encodeName(names_.at(static_cast<qsizetype>(i)));
        const int fd = ::open(path.constData(),
                              O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, parts[i].mode);
        if (fd >= 0) {
            ::close(fd);
            continue;
        }
        error = errno;
        while (i > 0)
            ::unlink(QFile::encodeName(names_.at(static_cast<qsizetype>(--i))).constData());
        return false;
    }
    return true;
}

} // namespace printman
