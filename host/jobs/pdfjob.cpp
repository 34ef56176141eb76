#include "host/jobs/pdfjob.h"

#include "host/files/inputfile.h"
#include "host/files/paths.h"
#include "host/files/pendingfile.h"
#include "host/jobs/jobdirectory.h"
#include "host/jobs/joberror.h"
#include "host/jobs/jobreport.h"
#include "host/jobs/jobwatch.h"
#include "host/jobs/pdflayout.h"
#include "host/jobs/stderrcapture.h"
#include "host/jobs/tool.h"
#include "host/printers/setupfile.h"

#include <printman/printman.h>

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <span>
#include <unistd.h>

namespace host {

namespace {

/// Whether the tools that the job needs are installed.
Outcome check_tools(const PdfSetup& setup) {
    Outcome tool = check_tool("ps2pdf", "ghostscript");
    if (tool.ok() && (setup.watermark || !setup.form.isEmpty()))
        tool = check_tool("pdftk", "pdftk-java");
    return tool;
}

constexpr char pdf_start[] = "%PDF-";

Outcome check_form(const QByteArray& form) {
    if (form.isEmpty())
        return Outcome::success();
    QFile file;
    Outcome readable = open_input(form, file);
    if (readable.ok() && file.read(qstrlen(pdf_start)) != pdf_start)
        return Outcome::failure(form + ": The form is not a PDF file");
    return readable;
}

/// Whether the file is a complete PDF, whatever the tools said.
Outcome check_pdf(const QString& name) {
    constexpr qint64 tail = 1024;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return Outcome::failure("cannot read the PDF back: " +
                                QFile::encodeName(file.errorString()));
    const bool starts = file.peek(qstrlen(pdf_start)) == pdf_start;
    file.seek(std::max<qint64>(0, file.size() - tail));
    return starts && file.read(tail).contains("%%EOF")
               ? Outcome::success()
               : Outcome::failure("ps2pdf produced an incomplete PDF file");
}

/// Whether this job lays the form, when the library is done: with a watermark in front the library
/// lays none.
bool form_comes_last(const PdfSetup& setup) {
    return !setup.form.isEmpty() && setup.watermark && setup.watermark->in_front;
}

/// Lays the form behind the PDF @p result.
Outcome lay_form(const JobDirectory& directory, const QString& result, JobWatch& watch) {
    const QString whole = directory.file(QStringLiteral("whole.pdf"));
    Outcome laid =
        run_tool(find_tool("pdftk"),
                 {result, QStringLiteral("background"), directory.file(QStringLiteral("form.pdf")),
                  QStringLiteral("output"), whole},
                 directory.path(), [&watch] { return watch.tool_works(); });
    if (laid.ok() && std::rename(QFile::encodeName(whole).constData(),
                                 QFile::encodeName(result).constData()) != 0)
        laid = Outcome::failure("pdftk produced no PDF file");
    return laid;
}

/// Has the library make the PDF @p result.
Outcome run_job(CPrintMan& manager, const PdfSetup& setup, const PdfLayout& layout,
                const QByteArray& form, const JobDirectory& directory, const QString& result) {
    // A name of which no part is an option, a device or a pattern to any tool.
    const QString form_name = directory.file(QStringLiteral("form.pdf"));
    if (!form.isEmpty() && ::symlink(form.constData(), QFile::encodeName(form_name)) != 0)
        return Outcome::failure(form + ": " + std::strerror(errno));
    const QString setup_file = directory.file(QStringLiteral("setup.bin"));
    Outcome written = write_setup_file(QFile::encodeName(setup_file), std::span(&layout.record, 1));
    if (!written.ok())
        return written;
    manager.pdf_mode = true;
    manager.form_file = form.isEmpty() || form_comes_last(setup) ? QString() : form_name;
    if (setup.watermark)
        set_watermark(manager, *setup.watermark, layout);
    const StderrCapture capture;
    manager.print_serverrpt_page(pdf_printer_id, 1, 1, layout.no_page_map, result, setup_file,
                                 QString(), QString());
    return job_outcome(manager.last_job(), capture.text());
}

} // namespace

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
    opened = pending.open(absolute_path(out), out);
    if (!opened.ok())
        return opened;
    manager.document_title = setup.page.title.isEmpty() ? title_of(report) : setup.page.title;
    watch_job(manager, watch);

    const QByteArray form = setup.form.isEmpty() ? setup.form : absolute_path(setup.form);
    JobDirectory directory;
    Outcome entered = directory.enter();
    if (!entered.ok())
        return entered;
    const QString result = directory.file(QStringLiteral("report.ps"));
    Outcome made = run_job(manager, setup, layout, form, directory, result);
    if (made.ok() && form_comes_last(setup))
        made = lay_form(directory, result, watch);
    if (made.ok())
        made = check_pdf(result);
    if (made.ok())
        made = pending.append_file(result);
    if (made.ok() && !watch.tool_works())
        made = Outcome::failure("interrupted");
    return made.ok() ? pending.commit() : made;
}

} // namespace host
