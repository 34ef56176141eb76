#include "host/jobs/queuejob.h"

#include "host/files/paths.h"
#include "host/jobs/jobdirectory.h"
#include "host/jobs/jobwatch.h"
#include "host/jobs/tool.h"
#include "host/printers/setupfile.h"

#include <QFile>

#include <span>

namespace host {

namespace {

Outcome spool(const QString& path, const QByteArray& queue, JobWatch& watch,
              const QString& directory) {
    const QString lp = find_tool("lp");
    const QString lpr = lp.isEmpty() ? find_tool("lpr") : QString();
    if (lp.isEmpty() && lpr.isEmpty())
        return check_tool("lp", "cups-client");
    const QString option = lp.isEmpty() ? QStringLiteral("-P") : QStringLiteral("-d");
    return run_tool(lp.isEmpty() ? lpr : lp, {option, QFile::decodeName(queue), path}, directory,
                    [&watch] { return watch.tool_works(); });
}

} // namespace

Outcome print_on_queue(const QByteArray& report, const ServerPrinter& printer, PrintSetup setup,
                       JobWatch& watch) {
    // A relative name means something else in the job's own directory.
    const QByteArray input = absolute_path(report);
    JobDirectory directory;
    Outcome done = directory.enter();
    if (!done.ok())
        return done;
    setup.printer = printer.setup.printer_id;
    setup.setup_file = directory.file(QStringLiteral("printer.bin"));
    const QString pages = directory.file(QStringLiteral("pages.ps"));
    done = write_setup_file(QFile::encodeName(setup.setup_file), std::span(&printer.setup, 1));
    if (done.ok())
        done = serve_report(input, QFile::encodeName(pages), setup, watch);
    return done.ok() ? spool(pages, printer.queue, watch, directory.path()) : done;
}

} // namespace host
