#include "tests/support/scratch.h"

#include <printman/system/scratchname.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

using printman::claim_scratch_name;
using printman::create_scratch_file;

namespace {

class ScratchName : public testing::Test {
protected:
    std::string path(const std::string& name = "fixed") const { return scratch_.path(name); }
    QByteArray name() const { return QByteArray::fromStdString(path()); }

    mode_t inode_type() const {
        struct stat status {};
        return ::lstat(path().c_str(), &status) == 0 ? status.st_mode & S_IFMT : 0;
    }

    /// Creates the file and writes into it.
    bool create(const std::string& bytes) {
        int fd = -1;
        error_ = create_scratch_file(name(), fd).error();
        if (fd < 0)
            return false;
        EXPECT_EQ(::fcntl(fd, F_GETFD), FD_CLOEXEC);
        EXPECT_EQ(::write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        ::close(fd);
        return true;
    }

    Scratch scratch_;
    QString error_;
};

} // namespace

TEST_F(ScratchName, aFreeNameAndOnesOwnFileAreGranted) {
    EXPECT_EQ(claim_scratch_name(name()).error(), QString());
    scratch_.write("mine", "fixed");
    EXPECT_EQ(claim_scratch_name(name()).error(), QString());
    EXPECT_EQ(scratch_.read("fixed"), "mine");
}

TEST_F(ScratchName, aLinkIsRemovedAndWhatItNamesStays) {
    scratch_.write("precious", "other");
    ASSERT_EQ(::symlink(path("other").c_str(), path().c_str()), 0);
    EXPECT_EQ(claim_scratch_name(name()).error(), QString());
    EXPECT_EQ(scratch_.names(), QStringList{QStringLiteral("other")});
    EXPECT_EQ(scratch_.read("other"), "precious");
}

TEST_F(ScratchName, aLinkToNothingOrToADirectoryIsRemoved) {
    for (const char* target : {"nowhere", "/tmp", "fixed"}) {
        ASSERT_EQ(::symlink(target, path().c_str()), 0);
        EXPECT_EQ(claim_scratch_name(name()).error(), QString());
        EXPECT_EQ(inode_type(), 0U);
    }
    EXPECT_TRUE(scratch_.names().isEmpty());
}

TEST_F(ScratchName, aSecondNameOfOnesOwnFileIsRemoved) {
    scratch_.write("precious", "other");
    ASSERT_EQ(::link(path("other").c_str(), path().c_str()), 0);
    EXPECT_EQ(claim_scratch_name(name()).error(), QString());
    EXPECT_EQ(scratch_.names(), QStringList{QStringLiteral("other")});
}

TEST_F(ScratchName, anotherUsersFileIsRefusedAndStays) {
    scratch_.write("theirs", "fixed");
    const QString error = claim_scratch_name(name(), ::geteuid() + 1).error();
    EXPECT_EQ(error, QString::fromStdString(path()) + QStringLiteral(": belongs to another user"));
    EXPECT_EQ(scratch_.read("fixed"), "theirs");
}

TEST_F(ScratchName, aDirectoryAndAPipeAreRefusedAndStay) {
    ASSERT_EQ(::mkdir(path().c_str(), 0700), 0);
    EXPECT_FALSE(claim_scratch_name(name()).error().isEmpty());
    EXPECT_FALSE(create("x"));
    EXPECT_FALSE(error_.isEmpty());
    EXPECT_EQ(inode_type(), static_cast<mode_t>(S_IFDIR));
    ::rmdir(path().c_str());
    ASSERT_EQ(::mkfifo(path().c_str(), 0600), 0);
    EXPECT_FALSE(claim_scratch_name(name()).error().isEmpty());
    EXPECT_FALSE(create("x"));
    EXPECT_EQ(inode_type(), static_cast<mode_t>(S_IFIFO));
}

TEST_F(ScratchName, aDeviceIsRefused) {
    EXPECT_TRUE(claim_scratch_name("/dev/null").error().contains(QStringLiteral("no file")));
}

TEST_F(ScratchName, aNameThatCannotBeLookedAtIsRefused) {
    scratch_.write("file", "fixed");
    for (const QByteArray& bad : {name() + "/below", QByteArray(scratch_.path("none/x").c_str())}) {
        int fd = 0;
        EXPECT_FALSE(create_scratch_file(bad, fd).ok());
        EXPECT_EQ(fd, -1);
        EXPECT_FALSE(create_scratch_file(bad).ok());
    }
    EXPECT_TRUE(
        claim_scratch_name(name() + "/below").error().endsWith(QStringLiteral("Not a directory")));
}

TEST_F(ScratchName, aNewFileIsTheOwnersAlone) {
    const mode_t mask = ::umask(0);
    EXPECT_TRUE(create("text"));
    ::umask(mask);
    struct stat status {};
    ASSERT_EQ(::lstat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, static_cast<mode_t>(S_IFREG | 0600));
    EXPECT_EQ(scratch_.read("fixed"), "text");
}

TEST_F(ScratchName, anEarlierFileIsReplacedNotWrittenInto) {
    scratch_.write("an earlier, longer text", "fixed");
    ::chmod(path().c_str(), 0666);
    const int reader = ::open(path().c_str(), O_RDONLY | O_CLOEXEC);
    EXPECT_TRUE(create("new"));
    EXPECT_EQ(scratch_.read("fixed"), "new");
    // Whoever had the earlier file open does not get to see the new one.
    struct stat status {};
    ASSERT_EQ(::fstat(reader, &status), 0);
    EXPECT_EQ(status.st_size, 23);
    ::close(reader);
    ASSERT_EQ(::lstat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST_F(ScratchName, nothingIsWrittenThroughALink) {
    scratch_.write("precious", "other");
    ASSERT_EQ(::symlink(path("other").c_str(), path().c_str()), 0);
    EXPECT_TRUE(create("new"));
    EXPECT_EQ(scratch_.read("other"), "precious");
    EXPECT_EQ(scratch_.read("fixed"), "new");
    EXPECT_EQ(inode_type(), static_cast<mode_t>(S_IFREG));
    ::unlink(path().c_str());
    ASSERT_EQ(::symlink("dangling", path().c_str()), 0);
    EXPECT_TRUE(create("new"));
    EXPECT_FALSE(scratch_.names().contains(QStringLiteral("dangling")));
}

TEST_F(ScratchName, aDirectoryThatTakesNoFileIsTold) {
    ASSERT_EQ(::chmod(path(".").c_str(), 0500), 0);
    {
        const WithoutPrivileges nobody;
        EXPECT_FALSE(create("x"));
        EXPECT_FALSE(error_.isEmpty());
    }
    ::chmod(path(".").c_str(), 0700);
}
