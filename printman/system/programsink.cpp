#include <printman/system/childstatus.h>
#include <printman/system/externaltool.h>
#include <printman/system/outputsink.h>

#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace printman {

namespace {

/// While it lives, this thread's writes to a reader that is gone are errors and no signals.
class PipeSignalGuard {
public:
    PipeSignalGuard() {
        sigset_t pending;
        ::sigpending(&pending);
        was_pending_ = ::sigismember(&pending, SIGPIPE);
        ::sigemptyset(&pipe_);
        ::sigaddset(&pipe_, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &pipe_, &old_);
    }
    ~PipeSignalGuard() {
        const timespec at_once = {};
        if (!was_pending_)
            ::sigtimedwait(&pipe_, nullptr, &at_once);
        ::pthread_sigmask(SIG_SETMASK, &old_, nullptr);
    }
    PipeSignalGuard(const PipeSignalGuard&) = delete;
    PipeSignalGuard& operator=(const PipeSignalGuard&) = delete;

private:
    bool was_pending_;
    sigset_t pipe_;
    sigset_t old_;
};

constexpr int write_patience = 60 * 1000; // milliseconds
constexpr int end_patience = 300 * 1000;
constexpr int leave_patience = 2 * 1000;
constexpr int end_poll = 10;
constexpr int question_interval = 50;

class ProgramSink : public OutputSink {
public:
    ProgramSink(QString program, QStringList arguments, std::function<bool()> goes_on)
        : program_(std::move(program)), arguments_(std::move(arguments)),
          goes_on_(std::move(goes_on)) {}
    ~ProgramSink() override { ProgramSink::discard(); }

    bool open() override;
    bool alive() override;
    bool write(std::string_view bytes) override;
    bool close() override;
    void discard() override;

private:
    bool start(int input);
    bool has_ended();
    bool judge();
    bool wait_for_room();
    bool wait_for_end(int patience);
    bool is_stopped();
    void kill();

    QString program_;
    QStringList arguments_;
    std::function<bool()> goes_on_;
    std::unique_ptr<ChildStatusGuard> guard_;
    int pipe_ = -1;
    pid_t child_ = 0;
    bool is_fed_ = false;
    bool stopped_ = false;
    bool ended_ = false;
    bool lost_ = false;
    int status_ = 0;
};

bool ProgramSink::open() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return fail(qt_error_string(errno));
    guard_ = std::make_unique<ChildStatusGuard>();
    const bool started = start(ends[0]);
    ::close(ends[0]);
    if (!started) {
        ::close(ends[1]);
        guard_.reset();
        return false;
    }
    pipe_ = ends[1];
    ::fcntl(pipe_, F_SETFL, O_NONBLOCK);
    return true;
}

bool ProgramSink::start(int input) {
    std::vector<QByteArray> words{QFile::encodeName(program_)};
    for (const QString& argument : std::as_const(arguments_))
        words.push_back(QFile::encodeName(argument));
    std::vector<char*> argv;
    argv.reserve(words.size() + 1);
    for (QByteArray& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    // The spooler's word about its request number is not this program's output.
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const int error = ::posix_spawnp(&child_, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ||
           fail(QStringLiteral("cannot start %1: %2").arg(program_, qt_error_string(error)));
}

/// Takes the program's status when it has ended.
bool ProgramSink::has_ended() {
    if (ended_)
        return true;
    ChildStatusGuard::renew();
    pid_t pid;
    do {
        pid = ::waitpid(child_, &status_, WNOHANG);
    } while (pid < 0 && errno == EINTR);
    ended_ = pid != 0;
    lost_ = pid < 0;
    return ended_;
}

bool ProgramSink::judge() {
    if (lost_)
        return fail(QStringLiteral("the status of %1 was lost").arg(program_));
    if (WIFEXITED(status_) && WEXITSTATUS(status_) == 0)
        return true;
    const QString how = WIFSIGNALED(status_)
                            ? QStringLiteral("was killed by signal %1").arg(WTERMSIG(status_))
                            : QStringLiteral("failed with status %1").arg(WEXITSTATUS(status_));
    return fail(program_ + u' ' + how);
}

bool ProgramSink::alive() {
    if (!has_ended())
        return true;
    // A spooler that ends before the job does has not taken it, whatever its status says.
    return judge() && fail(program_ + QStringLiteral(" ended before it had the whole job"));
}

/// Whether the user has had enough.
bool ProgramSink::is_stopped() {
    stopped_ = stopped_ || (goes_on_ && !goes_on_());
    return stopped_;
}

bool ProgramSink::wait_for_room() {
    pollfd room = {pipe_, POLLOUT, 0};
    for (int waited = 0; waited < write_patience; waited += question_interval) {
        if (::poll(&room, 1, question_interval) > 0)
            return true;
        if (is_stopped())
            return fail(QStringLiteral("canceled"));
    }
    return fail(program_ + QStringLiteral(" takes nothing"));
}

/// Waits so many milliseconds for the program's end.
///
/// @return false when that is not long enough, or the user has had enough
bool ProgramSink::wait_for_end(int patience) {
    for (int waited = 0; !has_ended(); waited += end_poll) {
        if (waited >= patience || (waited > 0 && waited % question_interval == 0 && is_stopped()))
            return false;
        ::usleep(end_poll * 1000);
    }
    return true;
}

void ProgramSink::kill() {
    while (!has_ended()) {
        ::kill(child_, SIGKILL);
        ::usleep(1000);
    }
}

bool ProgramSink::write(std::string_view bytes) {
    const PipeSignalGuard quiet;
    is_fed_ = is_fed_ || !bytes.empty();
    while (!bytes.empty()) {
        const ssize_t n = ::write(pipe_, bytes.data(), bytes.size());
        if (n >= 0) {
            bytes.remove_prefix(static_cast<size_t>(n));
            continue;
        }
        const int error = errno;
        if (error == EAGAIN && !wait_for_room())
            return false;
        if (error == EPIPE) {
            // It has closed its input and ends now, with a status that says more.
            return wait_for_end(leave_patience) ? alive() : fail(qt_error_string(error));
        }
        if (error != EAGAIN && error != EINTR)
            return fail(qt_error_string(error));
    }
    return true;
}

bool ProgramSink::close() {
    ::close(pipe_);
    pipe_ = -1;
    wait_for_end(end_patience);
    kill();
    guard_.reset();
    return stopped_ ? fail(QStringLiteral("canceled")) : judge();
}

void ProgramSink::discard() {
    if (pipe_ < 0)
        return;
    // Once it has something it must not see the end of its input, or it would queue that.
    if (!is_fed_) {
        ::close(pipe_);
        goes_on_ = nullptr;
        wait_for_end(leave_patience);
    }
    kill();
    if (is_fed_)
        ::close(pipe_);
    pipe_ = -1;
    guard_.reset();
}

/// The spooler of a machine that has none.
class NoSpooler : public OutputSink {
public:
    bool open() override { return fail(tool_not_installed("lp")); }
    bool write(std::string_view /*bytes*/) override { return false; }
    bool close() override { return false; }
    void discard() override {}
};

} // namespace

std::unique_ptr<OutputSink> make_program_sink(const QString& program, const QStringList& arguments,
                                              const std::function<bool()>& goes_on) {
    return std::make_unique<ProgramSink>(program, arguments, goes_on);
}

std::unique_ptr<OutputSink> make_spooler_sink(const QString& printer, int copies, bool collate,
                                              const std::function<bool()>& goes_on) {
    QStringList arguments;
    const auto is_installed = [](const char16_t* program) {
        return !QStandardPaths::findExecutable(QString::fromUtf16(program)).isEmpty();
    };
    if (is_installed(u"lp")) {
        if (!printer.isEmpty())
            arguments << QStringLiteral("-d") << printer;
        if (copies > 1)
            arguments << QStringLiteral("-n") << QString::number(copies) << QStringLiteral("-o")
                      << QStringLiteral("collate=%1").arg(collate ? u"true" : u"false");
        return make_program_sink(QStringLiteral("lp"), arguments, goes_on);
    }
    if (!is_installed(u"lpr"))
        return std::make_unique<NoSpooler>();
    if (!printer.isEmpty())
        arguments << QStringLiteral("-P") << printer;
    if (copies > 1)
        arguments << QStringLiteral("-#%1").arg(copies);
    return make_program_sink(QStringLiteral("lpr"), arguments, goes_on);
}

} // namespace printman
