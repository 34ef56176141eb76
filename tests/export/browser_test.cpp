#include "tests/support/scratch.h"
#include "tests/support/tools.h"

#include <printman/export/browser.h>
#include <printman/toolkit/psprinter.h>

#include <QFile>
#include <QPainter>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

using printman::show_in_browser;
using testsupport::EnvironmentGuard;
using testsupport::read_file;
using testsupport::write_script;

namespace {

QStringList warnings;

void record_warning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtWarningMsg)
        warnings << text;
}

/// A browser that writes down its arguments, and what it finds in the file; a current directory of
/// the test's own; and the process's signals as they were afterwards.
class Browser : public testing::Test {
protected:
    Browser() {
        write_script(tool("dlwbrw"), "printf '%s\\n' $# \"$@\" > " + record("args") +
                                         "\n/bin/cat \"$1\" > " + record("page") + '\n');
        warnings.clear();
        old_handler_ = qInstallMessageHandler(record_warning);
        ::sigaction(SIGCHLD, nullptr, &old_action_);
        enter("work");
    }
    ~Browser() override {
        wait_for_browsers();
        qInstallMessageHandler(old_handler_);
        ::sigaction(SIGCHLD, &old_action_, nullptr);
        EXPECT_EQ(::fchdir(home_), 0);
        ::close(home_);
    }

    QString tool(const char* name) const { return tools_.filePath(QString::fromLatin1(name)); }
    QByteArray record(const char* name) const { return QFile::encodeName(tool(name)); }

    /// Makes a directory and goes there.
    void enter(const QByteArray& name) {
        directory_ = QFile::encodeName(scratch_.path()) + '/' + name;
        ASSERT_EQ(::mkdir(directory_.constData(), 0700), 0);
        ASSERT_EQ(::chdir(directory_.constData()), 0);
    }

    QByteArray paste_file() const { return directory_ + "/printman0001.html"; }
    QByteArray content() const { return read_file(QFile::decodeName(paste_file())); }
    QStringList here() const {
        return QDir(QStringLiteral("."))
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    /// Makes a file that of the user whom WithoutPrivileges stands for.
    static void give_away(const QByteArray& path) {
        const uid_t user = ::geteuid() == 0 ? 65534 : ::geteuid();
        ASSERT_EQ(::chown(path.constData(), user, static_cast<gid_t>(-1)), 0);
    }

    /// Lets that user go to the directory, but make no file in it.
    void close_directory() const {
        ASSERT_EQ(::chmod(QFile::encodeName(scratch_.path()).constData(), 0711), 0);
        ASSERT_EQ(::chmod(directory_.constData(), 0555), 0);
    }
    void open_directory() const { ASSERT_EQ(::chmod(directory_.constData(), 0700), 0); }

    /// What the browser was called with; empty when none was started.
    QByteArray arguments() const {
        wait_for_browsers();
        return read_file(tool("args"));
    }

    /// Where SIGCHLD is ignored, this waits for the last child to end and then finds none.
    static void wait_for_browsers() {
        EXPECT_EQ(::waitpid(-1, nullptr, 0), -1);
        EXPECT_EQ(errno, ECHILD);
    }

    const QStringList only_file_{QStringLiteral("printman0001.html")};
    QTemporaryDir tools_;
    QTemporaryDir scratch_;
    QByteArray directory_;
    EnvironmentGuard search_{"PATH", QFile::encodeName(tools_.path())};
    int home_ = ::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    QtMessageHandler old_handler_ = nullptr;
    struct sigaction old_action_ = {};
};

} // namespace

TEST_F(Browser, getsTheTextInAFileOfTheCurrentDirectory) {
    EXPECT_EQ(show_in_browser(QString::fromLatin1("<b>caf\xe9</b>\n100%1")).error(), QString());
    EXPECT_EQ(arguments(), "1\n" + paste_file() + '\n');
    EXPECT_EQ(read_file(tool("page")), "<b>caf\xc3\xa9</b>\n100%1");
    EXPECT_EQ(here(), only_file_);
    EXPECT_TRUE(warnings.isEmpty());
}

TEST_F(Browser, nothingToPasteIsWarnedOfAndNothingElseHappens) {
    EXPECT_FALSE(show_in_browser(QString()).error().isEmpty());
    EXPECT_FALSE(show_in_browser(QStringLiteral("")).error().isEmpty());
    EXPECT_EQ(warnings, QStringList(2, QStringLiteral("No data to paste!")));
    EXPECT_EQ(arguments(), "");
    EXPECT_TRUE(here().isEmpty());
}

TEST_F(Browser, aLaterPasteReplacesTheFile) {
    EXPECT_TRUE(show_in_browser(QStringLiteral("the first and longer text")).ok());
    EXPECT_TRUE(show_in_browser(QStringLiteral("second")).ok());
    EXPECT_EQ(content(), "second");
    EXPECT_EQ(here(), only_file_);
}

TEST_F(Browser, aDirectorysNameIsNeverRun) {
    for (const char* name : {"a b", "it's", "$(touch x)", "`touch x`", "x;touch x", "a\nb", "-rf",
                             "\"", "%s%n", "\xe9", "&", "*"}) {
        QFile::remove(tool("args"));
        enter(name);
        EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
        EXPECT_EQ(arguments(), "1\n" + paste_file() + '\n');
        EXPECT_EQ(here(), only_file_);
        ::unlink(paste_file().constData());
        ::rmdir(directory_.constData());
    }
    EXPECT_FALSE(QFile::exists(scratch_.filePath(QStringLiteral("x"))));
}

TEST_F(Browser, aLinkIsReplacedAndNotFollowed) {
    const QString other = scratch_.filePath(QStringLiteral("other"));
    testsupport::write_file(other, "precious");
    ASSERT_EQ(::symlink(QFile::encodeName(other).constData(), paste_file().constData()), 0);
    EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    EXPECT_EQ(read_file(other), "precious");
    struct stat status {};
    ASSERT_EQ(::lstat(paste_file().constData(), &status), 0);
    EXPECT_EQ(status.st_mode, static_cast<mode_t>(S_IFREG | 0600));
}

TEST_F(Browser, aDirectoryThatTakesNoFileStopsSilently) {
    ASSERT_EQ(::chmod(directory_.constData(), 0500), 0);
    {
        const WithoutPrivileges nobody;
        EXPECT_TRUE(show_in_browser(QStringLiteral("text")).error().startsWith(u"cannot write "));
    }
    EXPECT_TRUE(warnings.isEmpty());
    EXPECT_EQ(arguments(), "");
    EXPECT_TRUE(here().isEmpty());
}

TEST_F(Browser, whereNoFileCanBeMadeOnesOwnIsWrittenAgain) {
    testsupport::write_file(QFile::decodeName(paste_file()), "an earlier and longer text");
    give_away(paste_file());
    close_directory();
    {
        const WithoutPrivileges nobody;
        EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    }
    open_directory();
    EXPECT_EQ(content(), "text");
    EXPECT_EQ(arguments(), "1\n" + paste_file() + '\n');
}

TEST_F(Browser, whereNoFileCanBeMadeNothingIsWrittenThroughALink) {
    const QByteArray other = QFile::encodeName(scratch_.filePath(QStringLiteral("other")));
    testsupport::write_file(QFile::decodeName(other), "precious");
    give_away(other);
    for (const auto make_link : {&::symlink, &::link}) {
        open_directory();
        ::unlink(paste_file().constData());
        ASSERT_EQ(make_link(other.constData(), paste_file().constData()), 0);
        close_directory();
        const WithoutPrivileges nobody;
        EXPECT_FALSE(show_in_browser(QStringLiteral("text")).error().isEmpty());
    }
    open_directory();
    EXPECT_EQ(read_file(QFile::decodeName(other)), "precious");
    EXPECT_EQ(arguments(), "");
}

TEST_F(Browser, aDirectoryOfThatNameStopsIt) {
    ASSERT_EQ(::mkdir(paste_file().constData(), 0700), 0);
    EXPECT_FALSE(show_in_browser(QStringLiteral("text")).error().isEmpty());
    EXPECT_EQ(arguments(), "");
    EXPECT_EQ(here(), only_file_);
}

TEST_F(Browser, aDirectoryThatIsGoneStopsIt) {
    ASSERT_EQ(::rmdir(directory_.constData()), 0);
    EXPECT_FALSE(show_in_browser(QStringLiteral("text")).error().isEmpty());
    EXPECT_EQ(arguments(), "");
}

TEST_F(Browser, aFullDiskLeavesTheEarlierFileAndStartsNothing) {
    testsupport::write_file(QFile::decodeName(paste_file()), "earlier");
    // A limit on the size of files stands for the end of the disk.
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto old_signal = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const QString error = show_in_browser(QString(100000, u'x')).error();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, old_signal);
    EXPECT_TRUE(error.contains(QStringLiteral("File too large"))) << error.toStdString();
    EXPECT_EQ(arguments(), "");
    EXPECT_EQ(content(), "earlier");
    EXPECT_EQ(here(), only_file_);
}

TEST_F(Browser, aCommandOf255BytesIsTheLongest) {
    const qsizetype rest = 255 - (QByteArray("dlwbrw ") + paste_file()).size() - 1;
    ASSERT_GT(rest, 0);
    enter("work/" + QByteArray(rest, 'd'));
    EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    EXPECT_EQ(arguments(), "1\n" + paste_file() + '\n');
    QFile::remove(tool("args"));
    enter("work/" + QByteArray(rest + 1, 'd'));
    EXPECT_FALSE(show_in_browser(QStringLiteral("text")).error().isEmpty());
    EXPECT_EQ(warnings.size(), 1);
    EXPECT_EQ(arguments(), "");
    EXPECT_TRUE(here().isEmpty());
}

TEST_F(Browser, isNotWaitedForAndLeavesNoZombie) {
    const QByteArray fifo = record("gate");
    ASSERT_EQ(::mkfifo(fifo.constData(), 0600), 0);
    write_script(tool("dlwbrw"), "/bin/cat " + fifo + " > " + record("args") + '\n');
    EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    struct sigaction now {};
    ::sigaction(SIGCHLD, nullptr, &now);
    EXPECT_EQ(now.sa_handler, SIG_IGN);
    // It runs and has not ended.
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), 0);
    testsupport::write_file(tool("gate"), "ended");
    EXPECT_EQ(arguments(), "ended");
}

TEST_F(Browser, thatEndsWhileTheSpoolerIsWaitedForLeavesNoZombie) {
    const QByteArray gate = record("gate");
    ASSERT_EQ(::mkfifo(gate.constData(), 0600), 0);
    // The shell that was started may have become the browser, or wait for it.
    write_script(tool("dlwbrw"), "p=$$; [ $PPID = " + QByteArray::number(::getpid()) +
                                     " ] || p=$PPID\necho $p > " + record("pid") + "\n/bin/cat " +
                                     gate + " > " + record("args") + '\n');
    write_script(tool("lp"), "/bin/cat > " + record("job") + "\necho > " + gate + "\nread p < " +
                                 record("pid") +
                                 "\nuntil /bin/grep -q State:.Z /proc/$p/status"
                                 "; do [ -d /proc/$p ] || exit 1; done\n");
    EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    PsPrinter printer;
    printer.setPrinterName(QStringLiteral("queue"));
    QPainter p(&printer);
    p.drawRect(0, 0, 100, 100);
    EXPECT_TRUE(p.end()) << printer.errorString().toStdString();
    EXPECT_FALSE(read_file(tool("job")).isEmpty());
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(Browser, thatEndedWhileTheHostCountedItsChildrenIsClearedAwayByTheNext) {
    const QByteArray gate = record("gate");
    ASSERT_EQ(::mkfifo(gate.constData(), 0600), 0);
    write_script(tool("dlwbrw"), "/bin/cat " + gate + '\n');
    EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    std::signal(SIGCHLD, SIG_DFL);
    testsupport::write_file(tool("gate"), "end");
    siginfo_t ended = {};
    ASSERT_EQ(::waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT), 0);
    write_script(tool("dlwbrw"), "");
    EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    EXPECT_EQ(::waitpid(ended.si_pid, nullptr, WNOHANG), -1);
}

TEST_F(Browser, hasItsSignalsAsUsual) {
    write_script(tool("dlwbrw"), "/bin/grep SigIgn /proc/self/status > " + record("args") + '\n');
    const auto old_pipe = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    const QByteArray ignored = arguments().mid(QByteArray("SigIgn:").size()).trimmed();
    std::signal(SIGPIPE, old_pipe);
    const quint64 both = (1ULL << (SIGCHLD - 1)) | (1ULL << (SIGPIPE - 1));
    bool is_number = false;
    EXPECT_EQ(ignored.toULongLong(&is_number, 16) & both, 0U);
    EXPECT_TRUE(is_number);
}

TEST_F(Browser, aMissingBrowserIsNoticedByNobody) {
    QFile::remove(tool("dlwbrw"));
    EXPECT_EQ(show_in_browser(QStringLiteral("text")).error(), QString());
    EXPECT_EQ(content(), "text");
}
