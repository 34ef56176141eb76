#include <printman/toolkit/pssink.h>

#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace printman {

namespace {

QString reason(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

class FileSink : public PsSink {
public:
    explicit FileSink(QString path) : path_(std::move(path)) {}

    bool open() override { return file_.open(path_) || fail(file_.error()); }
    bool write(std::string_view bytes) override {
        return file_.write(bytes.data(), static_cast<qint64>(bytes.size())) || fail(file_.error());
    }
    bool close() override { return file_.commit() || fail(file_.error()); }
    void discard() override { file_.discard(); }

private:
    QString path_;
    OutputFile file_;
};

/// While it lives, a child's end is told to this process, whatever the host did to SIGCHLD: where
/// the signal is ignored the system would reap the child and its status be lost.
class ChildStatusGuard {
public:
    ChildStatusGuard() {
        struct sigaction standard = {};
        standard.sa_handler = SIG_DFL;
        ::sigaction(SIGCHLD, nullptr, &old_);
        ignored_ = !(old_.sa_flags & SA_SIGINFO) && old_.sa_handler == SIG_IGN;
        if (ignored_)
            ::sigaction(SIGCHLD, &standard, nullptr);
    }
    ~ChildStatusGuard() {
        if (ignored_)
            ::sigaction(SIGCHLD, &old_, nullptr);
    }
    ChildStatusGuard(const ChildStatusGuard&) = delete;
    ChildStatusGuard& operator=(const ChildStatusGuard&) = delete;

private:
    struct sigaction old_ = {};
    bool ignored_ = false;
};

class ProgramSink : public PsSink {
public:
    ProgramSink(QString program, QStringList arguments)
        : program_(std::move(program)), arguments_(std::move(arguments)) {}
    ~ProgramSink() override { ProgramSink::discard(); }

    bool open() override;
    bool alive() override;
    bool write(std::string_view bytes) override;
    bool close() override;
    void discard() override;

private:
    bool start(int input);
    bool wait(int options);
    bool judge();

    QString program_;
    QStringList arguments_;
    std::unique_ptr<ChildStatusGuard> guard_;
    int socket_ = -1;
    pid_t child_ = 0;
    bool ended_ = false;
    int status_ = 0;
};

bool ProgramSink::open() {
    // A socket instead of a pipe: a write to a dead reader is then an error and no signal.
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return fail(reason(errno));
    ::shutdown(ends[0], SHUT_RD);
    guard_ = std::make_unique<ChildStatusGuard>();
    const bool started = start(ends[1]);
    ::close(ends[1]);
    if (!started) {
        ::close(ends[0]);
        guard_.reset();
        return false;
    }
    socket_ = ends[0];
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
    return error == 0 || fail(QStringLiteral("cannot start %1: %2").arg(program_, reason(error)));
}

/// Takes the program's status when it has ended.
bool ProgramSink::wait(int options) {
    if (!ended_) {
        pid_t pid;
        do {
            pid = ::waitpid(child_, &status_, options);
        } while (pid < 0 && errno == EINTR);
        ended_ = pid != 0;
    }
    return ended_;
}

bool ProgramSink::judge() {
    if (WIFEXITED(status_) && WEXITSTATUS(status_) == 0)
        return true;
    const QString how = WIFSIGNALED(status_)
                            ? QStringLiteral("was killed by signal %1").arg(WTERMSIG(status_))
                            : QStringLiteral("failed with status %1").arg(WEXITSTATUS(status_));
    return fail(program_ + u' ' + how);
}

bool ProgramSink::alive() {
    if (!wait(WNOHANG))
        return true;
    // A spooler that ends before the job does has not taken it, whatever its status says.
    return judge() && fail(program_ + QStringLiteral(" ended before it had the whole job"));
}

bool ProgramSink::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            const int error = errno;
            return alive() && fail(reason(error));
        }
        bytes.remove_prefix(static_cast<size_t>(n));
    }
    return true;
}

bool ProgramSink::close() {
    ::close(socket_);
    socket_ = -1;
    wait(0);
    guard_.reset();
    return judge();
}

void ProgramSink::discard() {
    if (socket_ < 0)
        return;
    // It must not see the end of its input, or it would queue what it has.
    if (!wait(WNOHANG)) {
        ::kill(child_, SIGKILL);
        wait(0);
    }
    ::close(socket_);
    socket_ = -1;
    guard_.reset();
}

} // namespace

std::unique_ptr<PsSink> make_file_sink(const QString& path) {
    return std::make_unique<FileSink>(path);
}

std::unique_ptr<PsSink> make_program_sink(const QString& program, const QStringList& arguments) {
    return std::make_unique<ProgramSink>(program, arguments);
}

std::unique_ptr<PsSink> make_spooler_sink(const QString& printer, int copies) {
    QStringList arguments;
    if (!QStandardPaths::findExecutable(QStringLiteral("lp")).isEmpty()) {
        if (!printer.isEmpty())
            arguments << QStringLiteral("-d") << printer;
        if (copies > 1)
            arguments << QStringLiteral("-n") << QString::number(copies);
        return make_program_sink(QStringLiteral("lp"), arguments);
    }
    if (!printer.isEmpty())
        arguments << QStringLiteral("-P") << printer;
    if (copies > 1)
        arguments << QStringLiteral("-#%1").arg(copies);
    return make_program_sink(QStringLiteral("lpr"), arguments);
}

} // namespace printman
