#include <printman/system/filebackup.h>
#include <printman/system/freename.h>

#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <unistd.h>

namespace printman {

FileBackup::FileBackup(const QString& name) {
    const QFileInfo named(name);
    if (!named.exists())
        return;
    if (!named.isFile()) {
        result_ = Result::file_failure(name, QStringLiteral("is no file that can be replaced"));
        return;
    }
    name_ = named.canonicalFilePath();
    second_ = random_free_name(QFileInfo(name_).absolutePath() + QStringLiteral("/.printman-"),
                               QString());
    // Not every file system knows second names.
    if (::link(QFile::encodeName(name_).constData(), QFile::encodeName(second_).constData()) == 0)
        return;
    QFile file(name_);
    if (!file.copy(second_)) {
        result_ = Result::file_failure(name, file.errorString());
        second_.clear();
    }
}

FileBackup::~FileBackup() {
    if (second_.isEmpty())
        return;
    const QByteArray second = QFile::encodeName(second_);
    // Nothing happens when both still name the same file.
    if (std::rename(second.constData(), QFile::encodeName(name_).constData()) == 0)
        ::unlink(second.constData());
}

void FileBackup::drop() {
    if (!second_.isEmpty())
        QFile::remove(second_);
    second_.clear();
}

} // namespace printman
