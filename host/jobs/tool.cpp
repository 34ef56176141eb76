#include "host/jobs/tool.h"

#include "host/jobs/interrupt.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace host {

namespace {

constexpr qsizetype max_kept = 4096;
constexpr qsizetype max_quoted = 200;
constexpr int poll_milliseconds = 50;

/// Reads all of the tool's output, so that it is never blocked, and keeps the beginning.
void drain(QProcess& process, QByteArray& output) {
    const QByteArray more = process.readAll();
    output += more.left(max_kept - output.size());
}

/// Gives SIGCHLD its default handling for a while: where it is ignored, exit statuses are lost.
class ScopedChildStatuses {
public:
    ScopedChildStatuses() {
        sigaction(SIGCHLD, nullptr, &earlier_);
        if (earlier_.sa_handler == SIG_IGN)
            std::signal(SIGCHLD, SIG_DFL);
    }
    ~ScopedChildStatuses() {
        if (earlier_.sa_handler == SIG_IGN)
            sigaction(SIGCHLD, &earlier_, nullptr);
    }
    ScopedChildStatuses(const ScopedChildStatuses&) = delete;
    ScopedChildStatuses& operator=(const ScopedChildStatuses&) = delete;

private:
    struct sigaction earlier_ {};
};

void kill_group(QProcess& process) {
    const auto group = static_cast<pid_t>(process.processId());
    if (group > 0)
        ::kill(-group, SIGKILL);
    process.waitForFinished();
}

} // namespace

QString find_tool(const char* name) {
    return QStandardPaths::findExecutable(QString::fromLatin1(name));
}

Outcome check_tool(const char* name, const char* package) {
    return find_tool(name).isEmpty()
               ? Outcome::failure(QByteArray(name) + " is not installed; the Debian package " +
                                  package + " has it")
               : Outcome::success();
}

QByteArray first_words(const QByteArray& output) {
    QByteArray words;
    bool follows_colon = false; // the last line that was taken does
    for (const QByteArray& line : output.split('\n')) {
        const QByteArray more = line.trimmed();
        if (more.isEmpty() || more.startsWith("printman: "))
            continue;
        const bool continues = words.endsWith(':');
        const bool explains = follows_colon && line.startsWith(' ');
        if (!words.isEmpty() && !continues && !explains)
            break;
        words += (words.isEmpty() ? "" : explains ? ": " : " ") + more;
        if (explains)
            break;
        follows_colon = continues;
    }
    return words.left(max_quoted);
}

QByteArray describe(const ToolResult& result) {
    QByteArray text = result.name +
                      (result.killed ? " was ended by signal " : " failed with status ") +
                      QByteArray::number(result.status);
    const QByteArray words = first_words(result.output);
    return words.isEmpty() ? text : text + ": " + words;
}

Outcome run_tool(const QString& path, const QStringList& arguments, const QString& directory,
                 const std::function<bool()>& keep_going) {
    const ScopedChildStatuses statuses;
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
    QByteArray output;
    while (!process.waitForFinished(poll_milliseconds) && process.state() != QProcess::NotRunning) {
        drain(process, output);
        if (interrupted() || (keep_going && !keep_going())) {
            kill_group(process);
            return Outcome::failure("interrupted");
        }
    }
    drain(process, output);
    const bool killed = process.exitStatus() == QProcess::CrashExit;
    if (!killed && process.exitCode() == 0)
        return Outcome::success();
    return Outcome::failure(
        describe({.name = name, .status = process.exitCode(), .killed = killed, .output = output}));
}

} // namespace host
