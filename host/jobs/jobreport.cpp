#include "host/jobs/jobreport.h"

#include "host/files/paths.h"
#include "host/jobs/jobwatch.h"
#include "host/jobs/openreport.h"

#include <printman/printman.h>

#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace host {

namespace {

/// Whether this process has a child, be it one that has ended and not been waited for.
bool has_child() {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

} // namespace

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

void watch_pages(CPrintMan& manager, JobWatch& watch) {
    manager.set_progress([&watch](int done, int total) { return watch.pages_done(done, total); });
}

void watch_job(CPrintMan& manager, JobWatch& watch) {
    // Before the first page the job waits for another one; after the last page has been reported,
    // the same numbers again mean that a tool is running, or that the job waits.
    manager.set_progress([&watch, last = -1](int done, int total) mutable {
        const bool again = done == total && last == done;
        last = done;
        if (done == 0 || (again && !has_child()))
            return watch.waits();
        return again ? watch.tool_works() : watch.pages_done(done, total);
    });
}

} // namespace host
