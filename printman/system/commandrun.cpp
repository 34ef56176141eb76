#include <printman/system/childstatus.h>
#include <printman/system/commandrun.h>
#include <printman/system/externaltool.h>
#include <printman/text.h>

#include <QFile>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace printman {

namespace {

constexpr int shell_missing = 127;
constexpr int shell_signal_base = 128; // a shell's status for a command that a signal ended
constexpr int milliseconds = 1000;     // in the unit of usleep
constexpr int between_looks = 5;       // milliseconds
constexpr int looks_per_question = 10;

/// While it lives, no handler of the host takes the status of a child away.
class ChildSignalHold {
public:
    ChildSignalHold() {
        sigset_t child;
        ::sigemptyset(&child);
        ::sigaddset(&child, SIGCHLD);
        ::pthread_sigmask(SIG_BLOCK, &child, &old_);
    }
    ~ChildSignalHold() { ::pthread_sigmask(SIG_SETMASK, &old_, nullptr); }
    ChildSignalHold(const ChildSignalHold&) = delete;
    ChildSignalHold& operator=(const ChildSignalHold&) = delete;

    const sigset_t& old() const { return old_; }

private:
    sigset_t old_;
};

/// Becomes the shell. Only what is safe between fork and exec.
[[noreturn]] void become_shell(const char* command, pid_t parent, const sigset_t& mask,
                               bool own_group) {
    if (own_group)
        ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(shell_missing);
    ::pthread_sigmask(SIG_SETMASK, &mask, nullptr);
    const int nothing = ::open("/dev/null", O_RDONLY);
    if (nothing > STDIN_FILENO) {
        ::dup2(nothing, STDIN_FILENO);
        ::close(nothing);
    }
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    ::execl("/bin/sh", "sh", "-c", command, nullptr);
    ::_exit(shell_missing);
}

/// What waitpid answers, whatever signals come meanwhile.
pid_t wait_for(pid_t child, int& status, int options) {
    pid_t ended;
    do {
        ended = ::waitpid(child, &status, options);
    } while (ended < 0 && errno == EINTR);
    return ended;
}

/// Waits for the child, a process group of its own, until @p control says to stop.
pid_t watch(pid_t child, int& status, JobControl& control, bool& is_canceled) {
    for (int look = 1;; ++look) {
        const pid_t ended = wait_for(child, status, WNOHANG);
        if (ended != 0)
            return ended;
        if (look % looks_per_question == 0 && !control.keep_going(JobStage::tool)) {
            is_canceled = true;
            // It may not have come to its group yet.
            ::kill(child, SIGKILL);
            ::kill(-child, SIGKILL);
            return wait_for(child, status, 0);
        }
        ::usleep(between_looks * milliseconds);
    }
}

} // namespace

int CommandResult::ending_signal() const {
    const int told = status - shell_signal_base;
    return signal == 0 && told >= 1 && told < SIGRTMIN ? told : signal;
}

bool CommandResult::is_interrupted() const {
    return ending_signal() == SIGINT || ending_signal() == SIGQUIT;
}

CommandResult run_command(const QByteArray& command, JobControl* control) {
    CommandResult result;
    const ChildStatusGuard guard;
    const ChildSignalHold hold;
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0)
        become_shell(command.constData(), parent, hold.old(), control != nullptr);
    if (child < 0) {
        result.error = QStringLiteral("cannot be started: ") + qt_error_string(errno);
        return result;
    }
    int status = 0;
    if (control)
        ::setpgid(child, child);
    const pid_t ended =
        control ? watch(child, status, *control, result.is_canceled) : wait_for(child, status, 0);
    if (ended < 0)
        result.error = QStringLiteral("ended with a status that was lost");
    else if (WIFSIGNALED(status))
        result.signal = WTERMSIG(status);
    else
        result.status = WEXITSTATUS(status);
    return result;
}

Result command_failure(const QByteArray& command, const CommandResult& result) {
    if (result.is_canceled)
        return Result::canceled();
    QString end = result.error;
    if (end.isEmpty()) {
        const int signal = result.ending_signal();
        end = signal != 0 ? QStringLiteral("was ended by signal %1").arg(signal)
                          : QStringLiteral("failed with status %1").arg(result.status);
    }
    return tool_failure(command, end);
}

Result tool_failure(const QByteArray& command, const QString& end) {
    const QString line = u'\'' + QFile::decodeName(command) + QStringLiteral("' ") + end;
    return Result::tool_failure(QFile::decodeName(command_tool(command)), one_line(end),
                                one_line(line));
}

void report_failure(const QString& error) {
    DLWErrorWin(("printman: " + QFile::encodeName(one_line(error))).constData());
}

} // namespace printman
