#include "host/jobs/jobreport.h"

#include "host/files/paths.h"
#include "host/jobs/jobwatch.h"
#include "host/jobs/openreport.h"

#include <printman/printman.h>

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

namespace host {

JobReport::JobReport(const QByteArray& path)
    : named_(path), path_(path.isEmpty() ? path : absolute_path(path)) {
    if (named_.size() > max_report_name || path_.size() <= max_report_name)
        return;
    // A short relative name can have an absolute one that is too long for the library.
    fd_ = ::open(path.constData(), O_PATH | O_CLOEXEC);
    if (fd_ >= 0)
        path_ = "/proc/self/fd/" + QByteArray::number(fd_);
}

JobReport::~JobReport() {
    if (fd_ >= 0)
        ::close(fd_);
}

Outcome JobReport::open(CPrintMan& manager) const {
    return open_report(manager, path_, named_);
}

QString title_of(const QByteArray& report) {
    return QFileInfo(QFile::decodeName(report)).completeBaseName();
}

void watch_job(CPrintMan& manager, JobWatch& watch) {
    manager.set_progress([&manager, &watch](int done, int total) {
        switch (manager.job_stage()) {
        case printman::JobStage::tool:
            return watch.tool_works();
        case printman::JobStage::waiting:
            return watch.waits();
        default:
            return watch.pages_done(done, total);
        }
    });
}

} // namespace host
