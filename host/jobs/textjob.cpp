#include "host/jobs/textjob.h"

#include "host/files/paths.h"
#include "host/jobs/joberror.h"
#include "host/jobs/jobreport.h"
#include "host/jobs/openreport.h"

#include <printman/printman.h>

#include <QFile>

namespace host {

Outcome make_text(const QByteArray& report, const QByteArray& out, JobWatch& watch) {
    if (!is_text(out))
        return Outcome::failure("cannot write " + out + ": " + not_text);
    CPrintMan manager;
    Outcome opened = open_report(manager, report);
    if (!opened.ok())
        return opened;
    watch_job(manager, watch);
    if (manager.write_rpt_text(out.constData()) != 1)
        return Outcome::failure("cannot write " + out + ": " +
                                job_outcome(manager.last_job()).message);
    return Outcome::success();
}

} // namespace host
