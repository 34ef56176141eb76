#include "tests/support/scratch.h"

#include <printman/system/filelock.h>

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace printman;
using namespace std::chrono_literals;

namespace {

class LockFile : public testing::Test {
protected:
    QByteArray name(const char* file = "lock") const {
        return QByteArray::fromStdString(scratch_.path(file));
    }

    /// Another process that holds the lock of the file until it is killed.
    pid_t holder() const {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            FileLock lock;
            JobControl control;
            const bool taken = lock.take_file(name(), control, 1s).ok();
            EXPECT_EQ(::write(ends[1], taken ? "y" : "n", 1), 1);
            ::pause();
        }
        char answer = 0;
        EXPECT_EQ(::read(ends[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        ::close(ends[0]);
        ::close(ends[1]);
        return child;
    }

    static void end(pid_t child) {
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    }

    Scratch scratch_;
    FileLock lock_;
    JobControl control_;
};

} // namespace

TEST_F(LockFile, isMadeForEveryoneAndStays) {
    const mode_t mask = ::umask(077);
    EXPECT_EQ(lock_.take_file(name(), control_).error(), QString());
    ::umask(mask);
    lock_.release();
    const QFileInfo file(QString::fromLocal8Bit(name()));
    EXPECT_TRUE(file.permission(QFile::ReadOther));
    EXPECT_FALSE(file.permission(QFile::WriteOther) || file.permission(QFile::WriteGroup));
    EXPECT_EQ(file.size(), 0);
}

TEST_F(LockFile, isWaitedForAndTakenWhenItsHolderDies) {
    const pid_t other = holder();
    const QString busy = lock_.take_file(name(), control_, 50ms).error();
    EXPECT_TRUE(busy.endsWith(QStringLiteral("is in use by another print job")))
        << busy.toStdString();
    end(other);
    EXPECT_EQ(lock_.take_file(name(), control_, 50ms).error(), QString());
}

TEST_F(LockFile, isWaitedForAsLongAsItsUserSaysSo) {
    const pid_t other = holder();
    int asked = 0;
    JobControl impatient([&asked](int, int) { return ++asked < 3; });
    EXPECT_EQ(lock_.take_file(name(), impatient, 1h).error(), QStringLiteral("canceled"));
    EXPECT_EQ(asked, 3);
    end(other);
    JobControl refusing([](int, int) { return false; });
    EXPECT_EQ(lock_.take_file(name(), refusing, 1h).error(), QString());
}

TEST_F(LockFile, thatIsAnotherUsersIsTakenAsItIs) {
    scratch_.write("whatever", "lock");
    ASSERT_EQ(::chmod(name().constData(), 0444), 0);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(name().constData(), 65534, 65534), 0);
    }
    EXPECT_EQ(lock_.take_file(name(), control_, 0ms).error(), QString());
    EXPECT_EQ(scratch_.read("lock"), "whatever");
    EXPECT_EQ(scratch_.names().size(), 1);
}

TEST_F(LockFile, thatItsOwnerKeepsToHimselfHasOneOfTheUsersOwnBesideIt) {
    ASSERT_EQ(::chmod(scratch_.path(".").c_str(), 0777), 0);
    scratch_.write("", "lock");
    ASSERT_EQ(::chmod(name().constData(), 0), 0);
    const WithoutPrivileges user;
    EXPECT_EQ(lock_.take_file(name(), control_, 0ms).error(), QString());
    EXPECT_EQ(scratch_.names().size(), 2);
    FileLock second;
    EXPECT_NE(second.take_file(name(), control_, 0ms).error(), QString());
}

TEST_F(LockFile, thatIsALinkIsReplacedAndWhatItNamesIsNotTouched) {
    ASSERT_EQ(::symlink(scratch_.path("other").c_str(), name().constData()), 0);
    EXPECT_EQ(lock_.take_file(name(), control_, 1s).error(), QString());
    EXPECT_FALSE(QFile::exists(QString::fromStdString(scratch_.path("other"))));
    EXPECT_FALSE(QFileInfo(QString::fromLocal8Bit(name())).isSymLink());
}

TEST_F(LockFile, thatIsNoFileIsNotWaitedFor) {
    ASSERT_EQ(::mkfifo(name().constData(), 0600), 0);
    EXPECT_EQ(lock_.take_file(name(), control_, 1s).error(), QString());
    FileLock second;
    EXPECT_NE(second.take_file(name(), control_, 0ms).error(), QString());
}

TEST_F(LockFile, thatCannotBeMadeIsToldAtOnce) {
    // Who waits is asked first.
    JobControl refusing([](int, int) { return false; });
    const QString why = lock_.take_file("/nowhere/lock", refusing, 1h).error();
    EXPECT_TRUE(why.startsWith(QStringLiteral("/nowhere/lock"))) << why.toStdString();
}

TEST_F(LockFile, thatWasRemovedMeanwhileIsMadeAnew) {
    EXPECT_EQ(lock_.take_file(name(), control_).error(), QString());
    ASSERT_EQ(::unlink(name().constData()), 0);
    FileLock second;
    EXPECT_EQ(second.take_file(name(), control_, 1s).error(), QString());
    EXPECT_TRUE(QFile::exists(QString::fromLocal8Bit(name())));
    FileLock third;
    EXPECT_NE(third.take_file(name(), control_, 0ms).error(), QString());
}

TEST_F(LockFile, isNotHeldByProgramsThatAreStarted) {
    EXPECT_EQ(lock_.take_file(name(), control_).error(), QString());
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl("/bin/sleep", "sleep", "3600", nullptr);
        ::_exit(1);
    }
    // The other end is closed when the child has become the program.
    ::close(ends[1]);
    char none = 0;
    EXPECT_EQ(::read(ends[0], &none, 1), 0);
    ::close(ends[0]);
    lock_.release();
    FileLock second;
    EXPECT_EQ(second.take_file(name(), control_, 1s).error(), QString());
    end(child);
}

TEST_F(LockFile, ofTheCurrentDirectoryIsItself) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(QString::fromStdString(scratch_.path("."))));
    EXPECT_EQ(lock_.take_current_directory(control_).error(), QString());
    FileLock second;
    EXPECT_EQ(second.take_current_directory(control_, 50ms).error(),
              QStringLiteral("the current directory: is in use by another print job"));
    EXPECT_EQ(scratch_.names(), QStringList());
    lock_.release();
    EXPECT_EQ(second.take_current_directory(control_, 50ms).error(), QString());
    QDir::setCurrent(before);
}
