#include "host/jobs/clipboardjob.h"

#include "host/jobs/jobwatch.h"
#include "host/jobs/report.h"

#include <printman/printman.h>

#include <QFile>

namespace host {

Outcome copy_report_text(const QByteArray& report, JobWatch& watch) {
    CPrintMan manager;
    Outcome opened = open_report(manager, report);
    if (!opened.ok())
        return opened;
    manager.set_progress([&watch](int done, int total) { return watch.pages_done(done, total); });
    manager.save_allto_clipboard();
    return manager.last_job_ok() ? Outcome::success()
                                 : Outcome::failure(QFile::encodeName(manager.last_job_error()));
}

} // namespace host
