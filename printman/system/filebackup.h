#pragma once

#include <printman/result.h>

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

    /// A failure when there is a file that cannot be backed up, or one that must not be replaced.
    const Result& result() const { return result_; }

    /// Deletes the backup; the new file is valid.
    void drop();

private:
    QString name_;
    QString second_;
    Result result_;
};

} // namespace printman
