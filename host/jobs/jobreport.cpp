#include "host/jobs/jobreport.h"

#include "host/files/pendingfile.h"
#include "host/jobs/jobwatch.h"
#include "host/jobs/report.h"

#include <printman/printman.h>

#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace host {

namespace {

/// Whether a process of ours runs, or has ended and waits to be collected.
bool has_child() {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
}

} // namespace

JobReport::JobReport(const QByteArray& path)
    : named_(path), path_(path.isEmpty() ? path : absolute_path(path)) {
    if (named_.size() > max_report_name || path_.size() <= max_report_name)
        return;
    // Deep below the root a short name has a long absolute one, which the library does not take.
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
    // Before the first page the job waits for another one; after the last page has been told, the
    // same again means that a tool works, or that the job waits.
    manager.set_progress([&watch, last = -1](int done, int total) mutable {
        const bool again = done == total && last == done;
        last = done;
        if (done == 0 || (again && !has_child()))
            return watch.waits();
        return again ? watch.tool_works() : watch.pages_done(done, total);
    });
}

} // namespace host
