#include <printman/output/pdfcommands.h>
#include <printman/output/steprunner.h>
#include <printman/system/commandrun.h>
#include <printman/system/externaltool.h>
#include <printman/system/outputfile.h>
#include <printman/system/scratchname.h>

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace printman {

namespace {

constexpr qint64 pdf_tail = 1024; // within which a PDF's end mark stands
constexpr qint64 copied_at_once = 1 << 18;
constexpr mode_t permissions = 07777;

struct FileState {
    // First, as the other one's initialiser fills it.
    struct stat status {};
    bool exists = false;

    explicit FileState(const QString& name)
        : exists(::lstat(QFile::encodeName(name).constData(), &status) == 0) {}
    bool is_file() const { return exists && S_ISREG(status.st_mode); }
};

/// A tool takes the place of the shell, so that its own end is known and it ends with this process.
/// Without a progress function it stays in this process's group: the terminal's interrupt ends it.
CommandResult run_step(const QByteArray& command, JobControl& control) {
    const bool is_tool = !package_of(command_tool(command)).isEmpty();
    return run_command(is_tool ? "exec " + command : command,
                       control.is_watched() ? &control : nullptr);
}

Result copy_file(const QString& from, const QString& to) {
    QFile in(from);
    if (!in.open(QIODevice::ReadOnly))
        return Result::failure(in.errorString());
    OutputFile out;
    Result copied = out.open(to);
    while (copied.ok() && !in.atEnd()) {
        const QByteArray piece = in.read(copied_at_once);
        if (piece.isEmpty())
            return Result::failure(in.errorString());
        copied = out.write(piece.constData(), piece.size());
    }
    return copied.ok() ? out.commit() : copied;
}

Result not_made(const QString& name) {
    return Result::file_failure(name, QStringLiteral("was not made"));
}

} // namespace

bool is_made(const QString& name) {
    if (!FileState(name).is_file())
        return false;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
        return false;
    if (file.peek(5) != "%PDF-")
        return true;
    file.seek(std::max<qint64>(0, file.size() - pdf_tail));
    return file.read(pdf_tail).contains("%%EOF");
}

void remove_own(const QString& name) {
    const FileState state(name);
    const bool is_link = state.exists && S_ISLNK(state.status.st_mode);
    if (is_link || (state.is_file() && state.status.st_uid == ::geteuid()))
        ::unlink(QFile::encodeName(name).constData());
}

Result move_file(const QString& from, const QString& to) {
    const FileState target(to);
    QString name = to;
    if (target.exists && S_ISLNK(target.status.st_mode))
        name = QFileInfo(to).canonicalFilePath();
    const FileState earlier(name);
    if (name.isEmpty() || (earlier.exists && !earlier.is_file()))
        return Result::file_failure(to, QStringLiteral("is no file that can be replaced"));
    const QByteArray source = QFile::encodeName(from);
    if (earlier.exists)
        ::chmod(source.constData(), earlier.status.st_mode & permissions);
    if (::rename(source.constData(), QFile::encodeName(name).constData()) == 0)
        return {};
    if (errno != EXDEV)
        return Result::file_failure(to, qt_error_string(errno));
    const Result copied = copy_file(from, name);
    if (!copied.ok())
        return Result::file_failure(to, copied.error());
    ::unlink(source.constData());
    return {};
}

StepRunner::StepRunner(JobControl& control, MakeWatermark make_watermark, QStringList fresh)
    : control_(control), make_watermark_(std::move(make_watermark)), fresh_(std::move(fresh)) {}

Result StepRunner::run(const std::vector<PdfStep>& steps) {
    result_ = {};
    stopped_ = false;
    for (const PdfStep& step : steps)
        do_step(step);
    return result_;
}

void StepRunner::do_step(const PdfStep& step) {
    if (step.kind == PdfStep::Kind::remove) {
        remove_own(step.from);
        return;
    }
    if (stopped_)
        return;
    switch (step.kind) {
    case PdfStep::Kind::run:
        run_tool(step);
        break;
    case PdfStep::Kind::make_watermark:
        note(make_watermark_ ? make_watermark_() : Result());
        break;
    case PdfStep::Kind::rename:
        rename(step);
        break;
    case PdfStep::Kind::move:
        move(step);
        break;
    case PdfStep::Kind::remove:
        break;
    }
}

void StepRunner::note(const Result& step) {
    if (result_.ok())
        result_ = step;
}

void StepRunner::report(const Result& step) {
    if (!step.ok() && !step.is_canceled())
        report_failure(step.error());
    note(step);
}

/// Makes the name that a tool is to write safe and its file empty.
bool StepRunner::prepare(const QString& name) {
    if (name.isEmpty() || fresh_.contains(name))
        return true;
    const Result created = create_scratch_file(QFile::encodeName(name));
    report(created);
    stopped_ = !created.ok();
    return created.ok();
}

void StepRunner::run_tool(const PdfStep& step) {
    const QString missing = missing_tool(step.command);
    if (!missing.isEmpty()) {
        report(Result::failure(missing));
        if (!step.to.isEmpty())
            remove_own(step.to);
        return;
    }
    if (!prepare(step.to))
        return;
    const CommandResult command = run_step(step.command, control_);
    const bool made = step.to.isEmpty() || is_made(step.to);
    if (command.ok() && made)
        return;
    report(command.ok() ? tool_failure(step.command, QStringLiteral("produced an incomplete file"))
                        : command_failure(step.command, command));
    stopped_ = command.is_canceled || command.is_interrupted();
    if (!step.to.isEmpty())
        remove_own(step.to);
}

void StepRunner::rename(const PdfStep& step) {
    if (!is_made(step.from)) {
        note(not_made(step.from));
        return;
    }
    Result renamed = claim_scratch_name(QFile::encodeName(step.to));
    if (renamed.ok() && ::rename(QFile::encodeName(step.from).constData(),
                                 QFile::encodeName(step.to).constData()) != 0)
        renamed = Result::file_failure(step.to, qt_error_string(errno));
    report(renamed);
}

void StepRunner::move(const PdfStep& step) {
    if (is_made(step.from))
        report(move_file(step.from, step.to));
    else
        note(not_made(step.from));
}

} // namespace printman
