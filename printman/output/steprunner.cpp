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
CommandEnd run_step(const QByteArray& command, const std::function<bool()>& goes_on) {
    const bool is_tool = !package_of(command_tool(command)).isEmpty();
    return run_command(is_tool ? "exec " + command : command, goes_on);
}

QString copy_file(const QString& from, const QString& to) {
    QFile in(from);
    if (!in.open(QIODevice::ReadOnly))
        return in.errorString();
    OutputFile out;
    if (!out.open(to))
        return out.error();
    while (!in.atEnd()) {
        const QByteArray piece = in.read(copied_at_once);
        if (piece.isEmpty())
            return in.errorString();
        if (!out.write(piece.constData(), piece.size()))
            return out.error();
    }
    return out.commit() ? QString() : out.error();
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

QString move_file(const QString& from, const QString& to) {
    const FileState target(to);
    QString name = to;
    if (target.exists && S_ISLNK(target.status.st_mode))
        name = QFileInfo(to).canonicalFilePath();
    const FileState earlier(name);
    if (name.isEmpty() || (earlier.exists && !earlier.is_file()))
        return to + QStringLiteral(": is no file that can be replaced");
    const QByteArray source = QFile::encodeName(from);
    if (earlier.exists)
        ::chmod(source.constData(), earlier.status.st_mode & permissions);
    if (::rename(source.constData(), QFile::encodeName(name).constData()) == 0)
        return {};
    if (errno != EXDEV)
        return to + QStringLiteral(": ") + qt_error_string(errno);
    const QString why = copy_file(from, name);
    if (!why.isEmpty())
        return to + QStringLiteral(": ") + why;
    ::unlink(source.constData());
    return {};
}

StepRunner::StepRunner(MakeWatermark make_watermark, QStringList fresh,
                       std::function<bool()> goes_on)
    : make_watermark_(std::move(make_watermark)), fresh_(std::move(fresh)),
      goes_on_(std::move(goes_on)) {}

QString StepRunner::run(const std::vector<PdfStep>& steps) {
    failure_.clear();
    stopped_ = false;
    for (const PdfStep& step : steps)
        do_step(step);
    return failure_;
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
        note(make_watermark_ ? make_watermark_() : QString());
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

void StepRunner::note(const QString& why) {
    if (failure_.isEmpty())
        failure_ = why;
}

void StepRunner::tell(const QString& why) {
    tell_failure(why);
    note(one_line(why));
}

/// Makes the name that a tool is to write safe and its file empty.
bool StepRunner::prepare(const QString& name) {
    if (name.isEmpty() || fresh_.contains(name))
        return true;
    QString why;
    const int fd = create_scratch_file(QFile::encodeName(name), why);
    if (fd >= 0) {
        ::close(fd);
        return true;
    }
    tell(why);
    stopped_ = true;
    return false;
}

void StepRunner::run_tool(const PdfStep& step) {
    const QString missing = missing_tool(step.command);
    if (!missing.isEmpty()) {
        tell(missing);
        if (!step.to.isEmpty())
            remove_own(step.to);
        return;
    }
    if (!prepare(step.to))
        return;
    const CommandEnd end = run_step(step.command, goes_on_);
    const bool made = step.to.isEmpty() || is_made(step.to);
    if (end.ok() && made)
        return;
    if (end.is_stopped)
        note(canceled());
    else
        tell(end.ok()
                 ? u'\'' + QFile::decodeName(step.command) + QStringLiteral("' made no whole file")
                 : describe_failure(step.command, end));
    stopped_ = end.is_stopped || end.is_interrupted();
    if (!step.to.isEmpty())
        remove_own(step.to);
}

void StepRunner::rename(const PdfStep& step) {
    if (!is_made(step.from)) {
        note(step.from + QStringLiteral(": was not made"));
        return;
    }
    QString why = claim_scratch_name(QFile::encodeName(step.to));
    if (why.isEmpty() && ::rename(QFile::encodeName(step.from).constData(),
                                  QFile::encodeName(step.to).constData()) != 0)
        why = step.to + QStringLiteral(": ") + qt_error_string(errno);
    if (!why.isEmpty())
        tell(why);
}

void StepRunner::move(const PdfStep& step) {
    if (!is_made(step.from)) {
        note(step.from + QStringLiteral(": was not made"));
        return;
    }
    const QString why = move_file(step.from, step.to);
    if (!why.isEmpty())
        tell(why);
}

} // namespace printman
