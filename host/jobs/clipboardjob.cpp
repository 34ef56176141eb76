#include "host/jobs/clipboardjob.h"

#include "host/jobs/joberror.h"
#include "host/jobs/jobreport.h"
#include "host/jobs/openreport.h"

#include <printman/printman.h>

namespace host {

Outcome copy_report_text(const QByteArray& report, JobWatch& watch) {
    CPrintMan manager;
    Outcome opened = open_report(manager, report);
    if (!opened.ok())
        return opened;
    watch_job(manager, watch);
    manager.save_allto_clipboard();
    return job_outcome(manager.last_job());
}

} // namespace host
