#include "host/jobs/clipboardjob.h"

#include "host/jobs/jobreport.h"
#include "host/jobs/openreport.h"

#include <printman/printman.h>

#include <QFile>

namespace host {

Outcome copy_report_text(const QByteArray& report, JobWatch& watch) {
    CPrintMan manager;
    Outcome opened = open_report(manager, report);
    if (!opened.ok())
        return opened;
    watch_pages(manager, watch);
    manager.save_allto_clipboard();
    return manager.last_job_ok() ? Outcome::success()
                                 : Outcome::failure(QFile::encodeName(manager.last_job_error()));
}

} // namespace host
