#include "host/jobs/textjob.h"

#include "host/files/pendingfile.h"
#include "host/jobs/jobwatch.h"
#include "host/jobs/report.h"

#include <printman/printman.h>

#include <QFile>

namespace host {

Outcome make_text(const QByteArray& report, const QByteArray& out, JobWatch& watch) {
    // The library would write to another name.
    if (!is_text(out))
        return Outcome::failure("cannot write " + out +
                                ": The name is not valid in the locale's encoding");
    CPrintMan manager;
    Outcome opened = open_report(manager, report);
    if (!opened.ok())
        return opened;
    manager.set_progress([&watch](int done, int total) { return watch.pages_done(done, total); });
    if (manager.write_rpt_text(out.constData()) != 1)
        return Outcome::failure("cannot write " + out + ": " +
                                QFile::encodeName(manager.last_job_error()));
    return Outcome::success();
}

} // namespace host
