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

constexpr int write_timeout = 60 * 1000; // milliseconds
constexpr int end_timeout = 300 * 1000;
constexpr int leave_timeout = 2 * 1000;
constexpr int end_poll = 10;
constexpr int question_interval = 50;

Result system_failure(int error) {
    return Result::failure(qt_error_string(error));
}

class ProgramSink : public OutputSink {
public:
    ProgramSink(QString program, QStringList arguments, std::shared_ptr<JobControl> control)
        : program_(std::move(program)), arguments_(std::move(arguments)),
          control_(std::move(control)) {}
    ~ProgramSink() override { ProgramSink::discard(); }

    Result open() override;
    Result check() override;
    Result write(std::string_view bytes) override;
    Result close() override;
    void discard() override;

private:
    Result start(int input);
    bool has_ended();
    Result failure(const QString& end) const;
    Result judge() const;
    Result wait_for_room();
    bool wait_for_end(int timeout);
    void kill();

    QString program_;
    QStringList arguments_;
    std::shared_ptr<JobControl> control_;
    std::unique_ptr<ChildStatusGuard> guard_;
    int pipe_ = -1;
    pid_t child_ = 0;
    bool is_fed_ = false;
    bool is_canceled_ = false;
    bool ended_ = false;
    bool lost_ = false;
    int status_ = 0;
};

Result ProgramSink::open() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return system_failure(errno);
    guard_ = std::make_unique<ChildStatusGuard>();
    Result started = start(ends[0]);
    ::close(ends[0]);
    if (!started.ok()) {
        ::close(ends[1]);
        guard_.reset();
        return started;
    }
    pipe_ = ends[1];
    ::fcntl(pipe_, F_SETFL, O_NONBLOCK);
    return {};
}

Result ProgramSink::start(int input) {
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
    if (error == 0)
        return {};
    const QString reason = qt_error_string(error);
    return Result::tool_failure(program_, QStringLiteral("cannot be started: ") + reason,
                                QStringLiteral("cannot start %1: %2").arg(program_, reason));
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

Result ProgramSink::failure(const QString& end) const {
    return Result::tool_failure(program_, end, program_ + u' ' + end);
}

/// What the end of the program, which it has reached, means for the job.
Result ProgramSink::judge() const {
    if (lost_)
        return Result::failure(QStringLiteral("the status of %1 was lost").arg(program_));
    if (WIFEXITED(status_) && WEXITSTATUS(status_) == 0)
        return {};
    return failure(WIFSIGNALED(status_)
                       ? QStringLiteral("was killed by signal %1").arg(WTERMSIG(status_))
                       : QStringLiteral("failed with status %1").arg(WEXITSTATUS(status_)));
}

Result ProgramSink::check() {
    if (!has_ended())
        return {};
    // A spooler that ends before the job does has not taken it, whatever its status says.
    Result end = judge();
    return end.ok() ? failure(QStringLiteral("ended before it had the whole job")) : end;
}

Result ProgramSink::wait_for_room() {
    pollfd room = {pipe_, POLLOUT, 0};
    for (int waited = 0; waited < write_timeout; waited += question_interval) {
        if (::poll(&room, 1, question_interval) > 0)
            return {};
        if (!control_->keep_going(JobStage::tool))
            return Result::canceled();
    }
    return failure(QStringLiteral("takes nothing"));
}

/// Waits so many milliseconds for the program's end.
///
/// @return false when that is not long enough, or the job is canceled
bool ProgramSink::wait_for_end(int timeout) {
    for (int waited = 0; !has_ended(); waited += end_poll) {
        if (waited >= timeout)
            return false;
        const bool asks = waited > 0 && waited % question_interval == 0;
        is_canceled_ = is_canceled_ || (asks && !control_->keep_going(JobStage::tool));
        if (is_canceled_)
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

Result ProgramSink::write(std::string_view bytes) {
    const PipeSignalGuard quiet;
    is_fed_ = is_fed_ || !bytes.empty();
    while (!bytes.empty()) {
        const ssize_t n = ::write(pipe_, bytes.data(), bytes.size());
        if (n >= 0) {
            bytes.remove_prefix(static_cast<size_t>(n));
            continue;
        }
        const int error = errno;
        if (error == EAGAIN) {
            Result room = wait_for_room();
            if (!room.ok())
                return room;
        } else if (error == EPIPE) {
            // It has closed its input and ends now, with a status that says more.
            return wait_for_end(leave_timeout) ? check() : system_failure(error);
        } else if (error != EINTR) {
            return system_failure(error);
        }
    }
    return {};
}

Result ProgramSink::close() {
    ::close(pipe_);
    pipe_ = -1;
    wait_for_end(end_timeout);
    kill();
    guard_.reset();
    return is_canceled_ ? Result::canceled() : judge();
}

void ProgramSink::discard() {
    if (pipe_ < 0)
        return;
    // Once it has something it must not see the end of its input, or it would queue that.
    if (!is_fed_) {
        ::close(pipe_);
        control_ = std::make_shared<JobControl>();
        wait_for_end(leave_timeout);
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
    Result open() override { return Result::failure(tool_not_installed("lp")); }
    Result write(std::string_view /*bytes*/) override { return open(); }
    Result close() override { return open(); }
    void discard() override {}
};

} // namespace

std::unique_ptr<OutputSink> make_program_sink(const QString& program, const QStringList& arguments,
                                              std::shared_ptr<JobControl> control) {
    return std::make_unique<ProgramSink>(program, arguments, std::move(control));
}

std::unique_ptr<OutputSink> make_spooler_sink(const QString& printer, int copies, bool collate,
                                              std::shared_ptr<JobControl> control) {
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
        return make_program_sink(QStringLiteral("lp"), arguments, std::move(control));
    }
    if (!is_installed(u"lpr"))
        return std::make_unique<NoSpooler>();
    if (!printer.isEmpty())
        arguments << QStringLiteral("-P") << printer;
    if (copies > 1)
        arguments << QStringLiteral("-#%1").arg(copies);
    return make_program_sink(QStringLiteral("lpr"), arguments, std::move(control));
}

} // namespace printman
