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

constexpr int most_attempts = 10;

} // namespace

QString ScratchSet::create(const std::vector<Part>& parts, const std::function<bool()>& goes_on) {
    const QString directory = QDir::currentPath();
    if (directory.isEmpty() || !QDir::isAbsolutePath(directory))
        return QStringLiteral("the current directory is no longer there");
    FileLock lock;
    QString busy = lock.take_current_directory(FileLock::usual_patience, goes_on);
    if (!busy.isEmpty())
        return busy;
    int error = EEXIST;
    for (int attempt = 0; attempt < most_attempts && error == EEXIST; ++attempt) {
        names_.clear();
        for (const Part& part : parts)
            names_ << get_tmpfile(directory, QString::fromLatin1(part.prefix),
                                  QStringLiteral("pdf"));
        if (make_files(parts, error))
            return {};
    }
    return directory + QStringLiteral(": ") + qt_error_string(error);
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
