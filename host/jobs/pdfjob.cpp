#include "host/jobs/pdfjob.h"

#include "host/cli/command.h"
#include "host/files/pendingfile.h"
#include "host/jobs/jobdirectory.h"
#include "host/jobs/joberror.h"
#include "host/jobs/jobreport.h"
#include "host/jobs/jobwatch.h"
#include "host/jobs/pdflayout.h"
#include "host/jobs/report.h"
#include "host/jobs/tool.h"
#include "host/printers/setupfile.h"

#include <printman/printman.h>

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <span>
#include <unistd.h>

namespace host {

namespace {

Outcome find_tool(const char* name, const char* package) {
    return QStandardPaths::findExecutable(QString::fromLatin1(name)).isEmpty()
               ? Outcome::failure(QByteArray(name) + " is not installed; the Debian package " +
                                  package + " has it")
               : Outcome::success();
}

/// Whether what the job needs is there.
Outcome check_tools(const PdfSetup& setup) {
    Outcome tool = find_tool("ps2pdf", "ghostscript");
    if (tool.ok() && (setup.watermark || !setup.form.isEmpty()))
        tool = find_tool("pdftk", "pdftk-java");
    return tool;
}

Outcome check_form(const QByteArray& form) {
    if (form.isEmpty())
        return Outcome::success();
    Outcome readable = check_input(form);
    if (!readable.ok())
        return readable;
    const int fd = ::open(form.constData(), O_RDONLY | O_CLOEXEC);
    QByteArray start(5, '\0');
    start.truncate(fd < 0 ? 0 : std::max<ssize_t>(0, ::read(fd, start.data(), 5)));
    const bool is_pdf = start == "%PDF-";
    ::close(fd);
    return is_pdf ? Outcome::success() : Outcome::failure(form + ": The form is not a PDF file");
}

/// Refuses what is no whole PDF, whatever the tools said of it.
Outcome check_pdf(const QString& name) {
    constexpr qint64 tail = 1024;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return Outcome::failure("cannot read the PDF back: " +
                                QFile::encodeName(file.errorString()));
    const bool starts = file.peek(5) == "%PDF-";
    file.seek(std::max<qint64>(0, file.size() - tail));
    return starts && file.read(tail).contains("%%EOF")
               ? Outcome::success()
               : Outcome::failure("ps2pdf made a file that is no whole PDF");
}

/// Whether the form is laid when the library is done: it lays none under a watermark in front.
bool form_comes_last(const PdfSetup& setup) {
    return !setup.form.isEmpty() && setup.watermark && setup.watermark->in_front;
}

/// Lays the form behind the PDF @p result.
Outcome lay_form(const WorkPlace& place, const QString& result, JobWatch& watch) {
    const QString whole = place.file(QStringLiteral("whole.pdf"));
    Outcome laid =
        run_tool(QStandardPaths::findExecutable(QStringLiteral("pdftk")),
                 {result, QStringLiteral("background"), place.file(QStringLiteral("form.pdf")),
                  QStringLiteral("output"), whole},
                 place.file(QString()), [&watch] { return watch.tool_works(); });
    if (laid.ok() && std::rename(QFile::encodeName(whole).constData(),
                                 QFile::encodeName(result).constData()) != 0)
        laid = Outcome::failure("pdftk made no PDF");
    return laid;
}

/// Makes the PDF @p result in the current directory, which is the job's own.
Outcome run_job(CPrintMan& manager, const PdfSetup& setup, const PdfLayout& layout,
                const QByteArray& form, const WorkPlace& place, const QString& result) {
    // The tools get names that mean nothing to them.
    const QString form_name = place.file(QStringLiteral("form.pdf"));
    if (!form.isEmpty() && ::symlink(form.constData(), QFile::encodeName(form_name)) != 0)
        return Outcome::failure(form + ": " + std::strerror(errno));
    const QString setup_file = place.file(QStringLiteral("setup.bin"));
    Outcome written = write_setup_file(QFile::encodeName(setup_file), std::span(&layout.record, 1));
    if (!written.ok())
        return written;
    manager.pdf_mode = true;
    manager.form_file = form.isEmpty() || form_comes_last(setup) ? QString() : form_name;
    if (setup.watermark)
        set_watermark(manager, *setup.watermark, layout);
    const HeldErrors errors;
    const int done = manager.print_serverrpt_page(pdf_printer_id, 1, 1, layout.no_page_map, result,
                                                  setup_file, QString(), QString());
    return job_outcome(manager, done == 1, errors, QFile::encodeName(result));
}

} // namespace

Outcome PdfSetup::read(const Arguments& arguments, PdfSetup& setup) {
    Outcome page = PageSetup::read(arguments, setup.page);
    if (!page.ok())
        return page;
    if (const auto form = arguments.value("form")) {
        if (form->isEmpty())
            return Outcome::wrong_usage("--form needs the name of a PDF file");
        setup.form = *form;
    }
    return Watermark::read(arguments, setup.watermark);
}

Outcome make_pdf(const QByteArray& report, const QByteArray& out, const PdfSetup& setup,
                 JobWatch& watch) {
    Outcome ready = check_tools(setup);
    if (ready.ok())
        ready = check_form(setup.form);
    if (!ready.ok())
        return ready;
    const JobReport input(report);
    CPrintMan manager;
    Outcome opened = input.open(manager);
    if (!opened.ok())
        return opened;
    PdfLayout layout;
    Outcome laid = lay_out(setup.page, manager.get_columns(), manager.get_lines(), layout);
    if (!laid.ok())
        return laid;
    PendingFile pending;
    if (!pending.open(absolute_path(out), out))
        return Outcome::failure(pending.error());
    manager.document_title = setup.page.title.isEmpty() ? title_of(report) : setup.page.title;
    watch_job(manager, watch);

    const QByteArray form = setup.form.isEmpty() ? setup.form : absolute_path(setup.form);
    WorkPlace place;
    Outcome entered = place.enter();
    if (!entered.ok())
        return entered;
    const QString result = place.file(QStringLiteral("report.ps"));
    Outcome made = run_job(manager, setup, layout, form, place, result);
    if (made.ok() && form_comes_last(setup))
        made = lay_form(place, result, watch);
    if (made.ok())
        made = check_pdf(result);
    if (made.ok())
        made = pending.take_over(result);
    if (made.ok() && !watch.tool_works())
        made = Outcome::failure("interrupted");
    if (!made.ok())
        return made;
    return pending.commit() ? Outcome::success() : Outcome::failure(pending.error());
}

} // namespace host
