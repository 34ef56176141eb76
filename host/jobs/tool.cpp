#include "host/jobs/tool.h"

#include "host/cli/console.h"
#include "host/jobs/interrupt.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace host {

namespace {

constexpr qsizetype max_kept = 4096;
constexpr qsizetype max_quoted = 200;
constexpr int poll_milliseconds = 50;

/// Reads what the tool wrote, so that it never waits for us, and keeps the beginning.
void drain(QProcess& process, QByteArray& said) {
    const QByteArray more = process.readAll();
    said += more.left(max_kept - said.size());
}

/// The default handling of SIGCHLD for a while: where it is ignored no one learns how a child
/// ended.
class StatusesMeanwhile {
public:
    StatusesMeanwhile() {
        sigaction(SIGCHLD, nullptr, &before_);
        if (before_.sa_handler == SIG_IGN)
            std::signal(SIGCHLD, SIG_DFL);
    }
    ~StatusesMeanwhile() {
        if (before_.sa_handler == SIG_IGN)
            sigaction(SIGCHLD, &before_, nullptr);
    }
    StatusesMeanwhile(const StatusesMeanwhile&) = delete;
    StatusesMeanwhile& operator=(const StatusesMeanwhile&) = delete;

private:
    struct sigaction before_ {};
};

void end_group(QProcess& process) {
    const auto group = static_cast<pid_t>(process.processId());
    if (group > 0)
        ::kill(-group, SIGKILL);
    process.waitForFinished();
}

} // namespace

QByteArray first_words(const QByteArray& said) {
    QByteArray words;
    bool is_explained = false;
    for (const QByteArray& line : said.split('\n')) {
        const QByteArray more = line.trimmed();
        if (more.isEmpty() || more.startsWith("printman: "))
            continue;
        const bool goes_on = words.endsWith(':');
        const bool explains = is_explained && line.startsWith(' ');
        if (!words.isEmpty() && !goes_on && !explains)
            break;
        words += (words.isEmpty() ? "" : explains ? ": " : " ") + more;
        if (explains)
            break;
        is_explained = goes_on;
    }
    return words.left(max_quoted);
}

QByteArray describe(const ToolEnd& end) {
    QByteArray text = end.name + (end.killed ? " was ended by signal " : " failed with status ") +
                      QByteArray::number(end.status);
    const QByteArray words = first_words(end.said);
    return words.isEmpty() ? text : text + ": " + words;
}

Outcome run_tool(const QString& path, const QStringList& arguments, const QString& directory,
                 const std::function<bool()>& goes_on) {
    const StatusesMeanwhile known;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setWorkingDirectory(directory);
    process.setChildProcessModifier([] {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    const QByteArray name = QFile::encodeName(QFileInfo(path).fileName());
    process.start(path, arguments);
    if (!process.waitForStarted(-1))
        return Outcome::failure(name +
                                " cannot be run: " + QFile::encodeName(process.errorString()));
    QByteArray said;
    while (!process.waitForFinished(poll_milliseconds) && process.state() != QProcess::NotRunning) {
        drain(process, said);
        if (interrupted() || (goes_on && !goes_on())) {
            end_group(process);
            return Outcome::failure("interrupted");
        }
    }
    drain(process, said);
    const bool killed = process.exitStatus() == QProcess::CrashExit;
    if (!killed && process.exitCode() == 0)
        return Outcome::success();
    return Outcome::failure(
        describe({.name = name, .status = process.exitCode(), .killed = killed, .said = said}));
}

} // namespace host
