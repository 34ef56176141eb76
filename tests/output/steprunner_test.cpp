#include "tests/support/scratch.h"
#include "tests/support/tools.h"

#include <printman/output/steprunner.h>

#include <QDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace printman;
using testsupport::write_file;

namespace {

using Kind = PdfStep::Kind;

class Steps : public testing::Test {
protected:
    QString path(const char* name) const { return QString::fromStdString(scratch_.path(name)); }
    std::string read(const char* name) const { return scratch_.read(name); }

    PdfStep make(const QByteArray& command, const char* name) const {
        return {Kind::run, command, {}, path(name)};
    }
    PdfStep put(Kind kind, const char* from, const char* to) const {
        return {kind, {}, path(from), path(to)};
    }
    QByteArray echo(const char* words, const char* name) const {
        return QByteArray("echo ") + words + " >" + path(name).toLocal8Bit();
    }

    QString run(const std::vector<PdfStep>& steps, const QStringList& fresh = {}) {
        testing::internal::CaptureStderr();
        QString failure = StepRunner(
                              control_, [this] { return watermark_; }, fresh)
                              .run(steps)
                              .error();
        told_ = testing::internal::GetCapturedStderr();
        return failure;
    }

    Scratch scratch_;
    JobControl control_;
    Result watermark_;
    std::string told_;
};

} // namespace

TEST_F(Steps, areDoneInOrder) {
    EXPECT_EQ(run({make(echo("one", "a"), "a"), put(Kind::rename, "a", "b"),
                   make("cat " + path("b").toLocal8Bit() + " >" + path("c").toLocal8Bit(), "c"),
                   put(Kind::move, "c", "d"), put(Kind::remove, "b", "")}),
              QString());
    EXPECT_EQ(scratch_.names(), QStringList{QStringLiteral("d")});
    EXPECT_EQ(read("d"), "one\n");
    EXPECT_EQ(told_, "");
}

TEST_F(Steps, aFailedOneIsToldOnceAndTheOthersGoOn) {
    EXPECT_EQ(run({make("exit 4", "a"), make(echo("two", "b"), "b")}),
              QStringLiteral("'exit 4' failed with status 4"));
    EXPECT_EQ(told_, "printman: 'exit 4' failed with status 4\n");
    EXPECT_EQ(scratch_.names(), QStringList{QStringLiteral("b")});
}

TEST_F(Steps, nothingStaleOrHalfIsTakenForAResult) {
    scratch_.write("stale", "a");
    EXPECT_NE(run({make("true", "a"), put(Kind::rename, "a", "b")}), QString());
    EXPECT_EQ(scratch_.names(), QStringList());
    EXPECT_NE(run({make(echo("half", "a") + "; exit 1", "a"), put(Kind::move, "a", "b")}),
              QString());
    EXPECT_EQ(scratch_.names(), QStringList());
    EXPECT_NE(run({make(echo("%PDF-1.4 and no end", "a"), "a")}), QString());
    EXPECT_EQ(scratch_.names(), QStringList());
}

TEST_F(Steps, anEarlierResultStaysWhenItsPartWasNotMade) {
    scratch_.write("earlier", "result");
    run({make("exit 1", "a"), put(Kind::move, "a", "result")});
    EXPECT_EQ(read("result"), "earlier");
}

TEST_F(Steps, aToolThatIsKilledIsTold) {
    EXPECT_EQ(run({make("kill -KILL $$", "a")}),
              QStringLiteral("'kill -KILL $$' was ended by signal 9"));
}

TEST_F(Steps, anInterruptLeavesOnlyTheRemoving) {
    scratch_.write("x", "scratch");
    run({make("kill -INT $$", "a"), make(echo("two", "b"), "b"), put(Kind::remove, "scratch", "")});
    EXPECT_EQ(scratch_.names(), QStringList());
}

TEST_F(Steps, aMissingToolIsNamedAndWhatAnEarlierJobLeftIsNotTaken) {
    const testsupport::EnvironmentGuard nothing("PATH", "/nowhere");
    scratch_.write("stale", "a");
    EXPECT_EQ(run({make("pdftk x", "a")}),
              QStringLiteral("pdftk is not installed; the Debian package pdftk-java has it"));
    EXPECT_EQ(scratch_.names(), QStringList());
}

TEST_F(Steps, aLinkAtAScratchNameIsNotWrittenThrough) {
    scratch_.write("precious", "other");
    ASSERT_EQ(::symlink(scratch_.path("other").c_str(), scratch_.path("a").c_str()), 0);
    EXPECT_EQ(run({make(echo("new", "a"), "a")}), QString());
    EXPECT_EQ(read("other"), "precious");
    EXPECT_EQ(read("a"), "new\n");
}

TEST_F(Steps, whatIsNotOnesOwnStopsTheJobAndStays) {
    scratch_.write("theirs", "b");
    const bool is_root = ::geteuid() == 0;
    if (is_root) {
        ASSERT_EQ(::chown(scratch_.path("b").c_str(), 65534, 65534), 0);
    }
    ASSERT_EQ(::mkdir(scratch_.path("a").c_str(), 0700), 0);
    for (const char* name : {"a", "b"}) {
        const QString failure = run({make(echo("new", name), name), make(echo("two", "c"), "c"),
                                     put(Kind::remove, name, "")});
        const bool is_refused = name == std::string_view("a") || is_root;
        EXPECT_EQ(failure.startsWith(path(name)), is_refused) << failure.toStdString();
        EXPECT_EQ(QFile::exists(path("c")), !is_refused);
    }
    EXPECT_TRUE(QFileInfo(path("a")).isDir());
    EXPECT_EQ(read("b"), is_root ? "theirs" : "");
}

TEST_F(Steps, whatToolsWriteIsTheUsersAlone) {
    const mode_t mask = ::umask(0);
    EXPECT_EQ(run({make(echo("new", "a"), "a")}), QString());
    ::umask(mask);
    EXPECT_EQ(QFile::permissions(path("a")) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
}

TEST_F(Steps, aFileThatWasMadeForTheJobKeepsItsPermissions) {
    scratch_.write("", "a");
    ASSERT_EQ(::chmod(scratch_.path("a").c_str(), 0644), 0);
    EXPECT_EQ(run({make(echo("new", "a"), "a")}, {path("a")}), QString());
    EXPECT_TRUE(QFile::permissions(path("a")) & QFile::ReadOther);
}

TEST_F(Steps, aWatermarkThatFailsFailsTheJobWithoutBeingToldTwice) {
    watermark_ = Result::failure(QStringLiteral("no paint"));
    EXPECT_EQ(run({{Kind::make_watermark, {}, {}, path("w")}, make(echo("x", "a"), "a")}),
              QStringLiteral("no paint"));
    EXPECT_EQ(told_, "");
    EXPECT_EQ(read("a"), "x\n");
}

TEST_F(Steps, aFileThatBecomesTooLargeIsAFailure) {
    const QString failure =
        run({make("ulimit -f 1; exec head -c 100000 /dev/zero >" + path("a").toLocal8Bit(), "a")});
    EXPECT_TRUE(failure.endsWith(QStringLiteral("was ended by signal 25")))
        << failure.toStdString();
    EXPECT_EQ(scratch_.names(), QStringList());
}

TEST(MoveFile, followsALinkAndKeepsThePermissionsOfTheFileThere) {
    const Scratch scratch;
    scratch.write("old", "target");
    ASSERT_EQ(::chmod(scratch.path("target").c_str(), 0640), 0);
    ASSERT_EQ(::symlink("target", scratch.path("link").c_str()), 0);
    const QString link = QString::fromStdString(scratch.path("link"));
    EXPECT_EQ(move_file(QString::fromStdString(scratch.write("new", "from")), link).error(),
              QString());
    EXPECT_EQ(scratch.read("target"), "new");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(QFile::permissions(link) & QFile::ReadGroup, QFile::ReadGroup);
    EXPECT_EQ(scratch.names().size(), 2);
}

TEST(MoveFile, refusesWhatIsNoFile) {
    const Scratch scratch;
    const QString from = QString::fromStdString(scratch.write("new", "from"));
    EXPECT_TRUE(move_file(from, QStringLiteral("/dev/null"))
                    .error()
                    .startsWith(QStringLiteral("/dev/null: ")));
    EXPECT_FALSE(move_file(from, QString::fromStdString(scratch.path("."))).ok());
    ASSERT_EQ(::symlink("loop", scratch.path("loop").c_str()), 0);
    EXPECT_FALSE(move_file(from, QString::fromStdString(scratch.path("loop"))).ok());
    EXPECT_EQ(scratch.read("from"), "new");
}

TEST(MoveFile, copiesFromOneFileSystemToAnother) {
    const Scratch scratch;
    const QString from = QStringLiteral("/dev/shm/printman-move-%1").arg(::getpid());
    write_file(from, QByteArray(1 << 20, 'x'));
    const QString to = QString::fromStdString(scratch.path("to"));
    EXPECT_EQ(move_file(from, to).error(), QString());
    EXPECT_EQ(QFileInfo(to).size(), 1 << 20);
    EXPECT_FALSE(QFile::exists(from));
}
