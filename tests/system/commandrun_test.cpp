#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <printman/system/commandrun.h>

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace printman;
using testsupport::EnvironmentGuard;

namespace {

/// Puts another handling of a signal in place while it lives.
class SignalHandling {
public:
    SignalHandling(int signal, void (*handler)(int)) : signal_(signal) {
        struct sigaction action = {};
        action.sa_handler = handler;
        ::sigaction(signal, &action, &old_);
    }
    ~SignalHandling() { ::sigaction(signal_, &old_, nullptr); }
    SignalHandling(const SignalHandling&) = delete;
    SignalHandling& operator=(const SignalHandling&) = delete;

    bool is_now(void (*handler)(int)) const {
        struct sigaction now = {};
        ::sigaction(signal_, nullptr, &now);
        return now.sa_handler == handler;
    }

private:
    int signal_;
    struct sigaction old_;
};

void reap_everything(int /*signal*/) {
    while (::waitpid(-1, nullptr, WNOHANG) > 0)
        continue;
}

void nothing(int /*signal*/) {}

} // namespace

TEST(RunCommand, knowsTheStatus) {
    EXPECT_TRUE(run_command("true").ok());
    const CommandResult result = run_command("exit 7");
    EXPECT_FALSE(result.ok());
    const Result failure = command_failure("exit 7", result);
    EXPECT_EQ(failure.error(), QStringLiteral("'exit 7' failed with status 7"));
    EXPECT_EQ(failure.tool(), QStringLiteral("exit"));
    EXPECT_EQ(failure.tool_end(), QStringLiteral("failed with status 7"));
}

TEST(RunCommand, knowsTheSignal) {
    const CommandResult result = run_command("kill -9 $$");
    EXPECT_FALSE(result.ok());
    EXPECT_FALSE(result.is_interrupted());
    EXPECT_EQ(command_failure("kill", result).error(),
              QStringLiteral("'kill' was ended by signal 9"));
    EXPECT_TRUE(run_command("kill -INT $$").is_interrupted());
    EXPECT_TRUE(run_command("exit 130").is_interrupted());
}

TEST(RunCommand, readsASignalFromTheStatusOfAShell) {
    const auto end = [](int status) {
        CommandResult result;
        result.status = status;
        return command_failure("ps2pdf a b", result).tool_end();
    };
    EXPECT_EQ(end(137), QStringLiteral("was ended by signal 9"));
    EXPECT_EQ(end(129), QStringLiteral("was ended by signal 1"));
    EXPECT_EQ(end(159), QStringLiteral("was ended by signal 31"));
    EXPECT_EQ(end(128), QStringLiteral("failed with status 128"));
    EXPECT_EQ(end(170), QStringLiteral("failed with status 170"));
    EXPECT_EQ(end(255), QStringLiteral("failed with status 255"));
}

TEST(RunCommand, knowsTheStatusWhereTheHostIgnoresItsChildren) {
    const SignalHandling ignored(SIGCHLD, SIG_IGN);
    EXPECT_EQ(run_command("exit 3").status, 3);
    EXPECT_TRUE(ignored.is_now(SIG_IGN));
}

TEST(RunCommand, knowsTheStatusWhereTheHostTakesThoseOfAllChildren) {
    const SignalHandling reaping(SIGCHLD, reap_everything);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(run_command("exit 3").status, 3);
    EXPECT_TRUE(reaping.is_now(reap_everything));
}

TEST(RunCommand, leavesAnInterruptToTheHost) {
    const SignalHandling handled(SIGINT, nothing);
    EXPECT_TRUE(run_command("kill -INT $PPID; exit 0").ok());
    EXPECT_TRUE(handled.is_now(nothing));
    // What the host handles, the command does not ignore.
    EXPECT_EQ(run_command("kill -INT $$; exit 0").signal, SIGINT);
}

TEST(RunCommand, givesNoInputAndNoOtherDescriptors) {
    const int lock = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ASSERT_GE(lock, 0);
    const QByteArray number = QByteArray::number(lock);
    EXPECT_FALSE(run_command("[ -e /proc/self/fd/" + number + " ]").ok());
    ::close(lock);
    EXPECT_FALSE(run_command("read line").ok());
}

TEST(RunCommand, putsWhatTheCommandSaysOnStandardError) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    run_command("echo said");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "said\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(RunCommand, endsTheCommandWithThisProcess) {
    const QTemporaryDir scratch;
    const QByteArray mark = scratch.filePath(QStringLiteral("mark")).toLocal8Bit();
    const pid_t child = ::fork();
    if (child == 0) {
        run_command("echo $$ >" + mark + "; exec sleep 3600");
        ::_exit(0);
    }
    QByteArray number;
    ASSERT_TRUE(testsupport::poll_until([&] {
        number = testsupport::read_file(QString::fromLocal8Bit(mark));
        return number.endsWith('\n');
    }));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(testsupport::process_ends(number));
}

TEST(ReportFailure, writesOneLineThatTellsTheTerminalNothing) {
    testing::internal::CaptureStderr();
    report_failure(QStringLiteral("a\nb\x1b[2Jc\td"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "printman: a b?[2Jc d\n");
}

TEST(RunCommand, endsWithAllThatItStartedWhenItIsCanceled) {
    const QTemporaryDir scratch;
    const QString mark = scratch.filePath(QStringLiteral("mark"));
    JobControl control([&mark](int, int) { return !QFile::exists(mark); });
    // The shell waits for its child: a command that is waited for hangs.
    const CommandResult result = run_command(
        "sleep 3600 & echo $! >" + QFile::encodeName(mark + QStringLiteral(".new")) + "; mv " +
            QFile::encodeName(mark + QStringLiteral(".new ") + mark) + "; wait",
        &control);
    EXPECT_TRUE(result.is_canceled);
    EXPECT_FALSE(result.ok());
    EXPECT_TRUE(command_failure("sleep", result).is_canceled());
    EXPECT_EQ(control.stage(), JobStage::tool);
    const QByteArray child = testsupport::read_file(mark);
    EXPECT_GT(child.trimmed().toInt(), 0);
    EXPECT_TRUE(testsupport::process_ends(child));
}

TEST(RunCommand, goesOnUntilItIsCanceled) {
    const QTemporaryDir scratch;
    const QString mark = scratch.filePath(QStringLiteral("mark"));
    int asked = 0;
    // It ends when it has been asked for some time whether it may go on.
    JobControl control([&](int, int) {
        if (++asked == 3)
            testsupport::write_file(mark, "");
        return true;
    });
    EXPECT_EQ(
        run_command("until [ -e " + QFile::encodeName(mark) + " ]; do sleep 0.01; done; exit 7",
                    &control)
            .status,
        7);
}
