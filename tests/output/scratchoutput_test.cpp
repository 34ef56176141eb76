#include "tests/support/scratch.h"

#include <printman/output/scratchset.h>
#include <printman/system/filebackup.h>
#include <printman/toolkit/psprinter.h>

#include <QFileInfo>
#include <QPainter>
#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace printman;

namespace {

class ScratchOutput : public testing::Test {
protected:
    QString path(const char* name) const { return QString::fromStdString(scratch_.path(name)); }
    QString fixed() const { return path("fixed.ps"); }

    /// Paints a page: whether the job succeeded.
    bool paint() {
        QPainter p;
        if (!p.begin(&printer_))
            return false;
        p.drawText(100, 100, QStringLiteral("x"));
        return p.end() && printer_.printerState() != QPrinter::Error;
    }

    Scratch scratch_;
    PsPrinter printer_;
};

} // namespace

TEST_F(ScratchOutput, ofAPrinterIsTheUsersAloneAndReplacesALink) {
    scratch_.write("precious", "other");
    ASSERT_EQ(::symlink("other", scratch_.path("fixed.ps").c_str()), 0);
    const mode_t mask = ::umask(0);
    printer_.setScratchFileName(fixed());
    EXPECT_TRUE(paint());
    ::umask(mask);
    EXPECT_EQ(scratch_.read("other"), "precious");
    EXPECT_EQ(scratch_.read("fixed.ps").substr(0, 4), "%!PS");
    EXPECT_FALSE(QFileInfo(fixed()).isSymLink());
    EXPECT_EQ(QFile::permissions(fixed()) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
    EXPECT_EQ(printer_.outputFileName(), fixed());
}

TEST_F(ScratchOutput, thatIsInTheWayIsAnErrorWithAWord) {
    ASSERT_EQ(::mkdir(scratch_.path("fixed.ps").c_str(), 0700), 0);
    printer_.setScratchFileName(fixed());
    EXPECT_FALSE(paint());
    EXPECT_TRUE(printer_.errorString().endsWith(QStringLiteral("is in the way and is no file")));
}

TEST_F(ScratchOutput, ofAnAbortedJobIsGone) {
    printer_.setScratchFileName(fixed());
    QPainter p(&printer_);
    EXPECT_TRUE(QFile::exists(fixed()));
    printer_.abort();
    p.end();
    EXPECT_EQ(scratch_.names(), QStringList());
}

TEST_F(ScratchOutput, isForgottenWithTheNextOutputFile) {
    scratch_.write("target", "other");
    ASSERT_EQ(::symlink("other", scratch_.path("fixed.ps").c_str()), 0);
    printer_.setScratchFileName(path("first.ps"));
    printer_.setOutputFileName(fixed());
    EXPECT_TRUE(paint());
    EXPECT_EQ(scratch_.read("other").substr(0, 4), "%!PS");
}

TEST(FileBackup, comesBackUnlessItIsDropped) {
    const Scratch scratch;
    const QString name = QString::fromStdString(scratch.write("earlier", "file"));
    {
        const FileBackup kept(name);
        EXPECT_EQ(kept.result().error(), QString());
        ASSERT_TRUE(QFile::remove(name));
        scratch.write("broken", "file");
    }
    EXPECT_EQ(scratch.read("file"), "earlier");
    {
        FileBackup kept(name);
        ASSERT_TRUE(QFile::remove(name));
        scratch.write("better", "file");
        kept.drop();
    }
    EXPECT_EQ(scratch.read("file"), "better");
    EXPECT_EQ(scratch.names(), QStringList{QStringLiteral("file")});
}

TEST(FileBackup, thatWasNotTouchedHasOneNameAfterwards) {
    const Scratch scratch;
    { const FileBackup kept(QString::fromStdString(scratch.write("earlier", "file"))); }
    EXPECT_EQ(scratch.read("file"), "earlier");
    EXPECT_EQ(scratch.names(), QStringList{QStringLiteral("file")});
}

TEST(FileBackup, isNoneWhereThereIsNoFile) {
    const Scratch scratch;
    EXPECT_EQ(FileBackup(QString::fromStdString(scratch.path("none"))).result().error(), QString());
    EXPECT_EQ(FileBackup(QString()).result().error(), QString());
    EXPECT_EQ(FileBackup(QStringLiteral("/dev/null")).result().error(),
              QStringLiteral("/dev/null: is no file that can be replaced"));
    EXPECT_EQ(scratch.names(), QStringList());
}

TEST(ScratchSet, makesNewEmptyFilesInTheCurrentDirectory) {
    const Scratch scratch;
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(QString::fromStdString(scratch.path("."))));
    const mode_t mask = ::umask(022);
    JobControl control;
    ScratchSet first;
    ScratchSet second;
    EXPECT_EQ(first.create({{"kv", "pdf", 0600}, {"cp", "pdf", 0666}}, control).error(), QString());
    EXPECT_EQ(second.create({{"kv", "out", 0600}}, control).error(), QString());
    ::umask(mask);
    EXPECT_EQ(scratch.names().size(), 3);
    EXPECT_NE(first.name(0), second.name(0));
    EXPECT_TRUE(first.name(0).endsWith(QStringLiteral(".pdf")));
    EXPECT_TRUE(second.name(0).endsWith(QStringLiteral(".out")));
    EXPECT_TRUE(QFileInfo(first.name(1)).fileName().startsWith(QStringLiteral("cp")));
    EXPECT_EQ(QFileInfo(first.name(1)).size(), 0);
    EXPECT_TRUE(QFile::permissions(first.name(1)) & QFile::ReadOther);
    EXPECT_FALSE(QFile::permissions(first.name(0)) & QFile::ReadOther);
    QDir::setCurrent(before);
}

TEST(ScratchSet, leavesNothingWhereNotAllCanBeMade) {
    const Scratch scratch;
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(QString::fromStdString(scratch.path("."))));
    ScratchSet set;
    const std::string long_name(300, 'x');
    JobControl control;
    EXPECT_FALSE(set.create({{"kv", "pdf", 0600}, {long_name.c_str(), "pdf", 0600}}, control).ok());
    EXPECT_EQ(scratch.names(), QStringList());
    QDir::setCurrent(before);
}
