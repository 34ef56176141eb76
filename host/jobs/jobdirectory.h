#pragma once

#include "host/files/outcome.h"
#include "host/jobs/scopedvariable.h"

#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace host {

/// A working directory of a job's own, under TMPDIR: the library chooses names in the current
/// directory, and there no other job of anyone meets them. While it lives the process works there,
/// and TMPDIR is that directory, so that nothing stays of a tool that is ended; afterwards both are
/// what they were, and the directory is gone with all that is in it.
class WorkPlace {
public:
    WorkPlace() = default;
    ~WorkPlace();
    WorkPlace(const WorkPlace&) = delete;
    WorkPlace& operator=(const WorkPlace&) = delete;

    /// Makes the directory and goes there. Names that are relative mean something else from then
    /// on.
    Outcome enter();

    /// The absolute name of a file there.
    QString file(const QString& name) const { return directory_->filePath(name); }

private:
    std::unique_ptr<QTemporaryDir> directory_;
    int before_ = -1;
    std::optional<VariableMeanwhile> tools_scratch_;
};

} // namespace host
