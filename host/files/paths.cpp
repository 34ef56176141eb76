#include "host/files/paths.h"

#include <QFile>

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

namespace host {

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

} // namespace host
