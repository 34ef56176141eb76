#pragma once

#include <QByteArray>
#include <QString>

namespace printman {

/// A file that a job is about to replace, in steps that may fail: it comes back unless the job
/// succeeds. Meanwhile it has a second name, ".printman-" and a number, in its directory.
class FileBackup {
public:
    /// Keeps the file @p name, links followed; nothing when there is none.
    explicit FileBackup(const QString& name);

    /// Puts the file back, unless drop() was called.
    ~FileBackup();
    FileBackup(const FileBackup&) = delete;
    FileBackup& operator=(const FileBackup&) = delete;

    /// Why there is a file that cannot be kept, or one that must not be replaced; else empty.
    QString error() const { return error_; }

    /// Lets the kept file go: what has taken its place is good.
    void drop();

private:
    QString name_;
    QString second_;
    QString error_;
};

} // namespace printman
