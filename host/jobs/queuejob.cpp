#include "host/jobs/queuejob.h"

#include "host/files/pendingfile.h"
#include "host/jobs/jobdirectory.h"
#include "host/jobs/jobwatch.h"
#include "host/jobs/tool.h"
#include "host/printers/setupfile.h"

#include <QFile>
#include <QStandardPaths>

#include <span>

namespace host {

namespace {

Outcome spool(const QString& path, const QByteArray& queue, JobWatch& watch,
              const QString& directory) {
    const auto found = [](const char16_t* name) {
        return QStandardPaths::findExecutable(QString::fromUtf16(name));
    };
    const QString lp = found(u"lp");
    const QString lpr = lp.isEmpty() ? found(u"lpr") : QString();
    if (lp.isEmpty() && lpr.isEmpty())
        return Outcome::failure("lp is not installed; the Debian package cups-client has it");
    const QString option = lp.isEmpty() ? QStringLiteral("-P") : QStringLiteral("-d");
    return run_tool(lp.isEmpty() ? lpr : lp, {option, QFile::decodeName(queue), path}, directory,
                    [&watch] { return watch.tool_works(); });
}

} // namespace

Outcome print_on_queue(const QByteArray& report, const ServerPrinter& printer, PrintSetup setup,
                       JobWatch& watch) {
    // A name that is relative means something else in the job's own directory.
    const QByteArray input = absolute_path(report);
    WorkPlace place;
    Outcome done = place.enter();
    if (!done.ok())
        return done;
    setup.printer = printer.setup.printer_id;
    setup.setup_file = place.file(QStringLiteral("printer.bin"));
    const QString pages = place.file(QStringLiteral("pages.ps"));
    done = write_setup_file(QFile::encodeName(setup.setup_file), std::span(&printer.setup, 1));
    if (done.ok())
        done = serve_report(input, QFile::encodeName(pages), setup, watch);
    return done.ok() ? spool(pages, printer.queue, watch, place.file(QString())) : done;
}

} // namespace host
