#pragma once

#include "host/files/outcome.h"
#include "host/jobs/scopedvariable.h"

#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace host {

/// A temporary working directory of a job, under the directory that the setting TMPDIR names. The
/// library chooses file names in the current directory; in this one no other job's files are in the
/// way.
///
/// From enter() until the object is destroyed it is the current directory, and TMPDIR names it, so
/// that a tool that is killed leaves nothing behind. Then both are restored, and the directory is
/// removed with all its files.
class JobDirectory {
public:
    JobDirectory() = default;
    ~JobDirectory();
    JobDirectory(const JobDirectory&) = delete;
    JobDirectory& operator=(const JobDirectory&) = delete;

    /// Creates the directory and makes it the current one: relative names mean something else from
    /// then on.
    Outcome enter();

    /// The absolute name of a file in the directory.
    QString file(const QString& name) const { return directory_->filePath(name); }

    /// The name of the directory, as enter() made it.
    QString path() const { return directory_->path(); }

private:
    std::unique_ptr<QTemporaryDir> directory_;
    int earlier_ = -1; ///< the earlier current directory
    std::optional<ScopedVariable> tools_scratch_;
};

} // namespace host
