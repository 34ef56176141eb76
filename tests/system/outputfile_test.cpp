#include "tests/support/scratch.h"

#include <printman/system/outputfile.h>

#include <QIODevice>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <thread>

using printman::OutputFile;

namespace {

QString error; // of the last failure

bool note(const printman::Result& result) {
    if (!result.ok())
        error = result.error();
    return result.ok();
}

bool commit(OutputFile& file) {
    return note(file.commit());
}

bool open(OutputFile& file, const std::string& path) {
    return note(file.open(QString::fromStdString(path)));
}

bool write(OutputFile& file, const std::string& bytes) {
    return note(file.write(bytes.data(), static_cast<qint64>(bytes.size())));
}

int inode_type(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & S_IFMT) : 0;
}

} // namespace

TEST(OutputFile, isThereOnlyWhenItIsComplete) {
    const Scratch scratch;
    OutputFile file;
    ASSERT_TRUE(open(file, scratch.path("out")));
    EXPECT_TRUE(write(file, "some "));
    EXPECT_TRUE(write(file, "text"));
    EXPECT_FALSE(scratch.names().contains(QStringLiteral("out")));
    EXPECT_TRUE(commit(file));
    EXPECT_EQ(scratch.read("out"), "some text");
    EXPECT_EQ(scratch.names().size(), 1);
}

TEST(OutputFile, anEarlierFileStaysWholeUntilThen) {
    const Scratch scratch;
    scratch.write("earlier", "out");
    OutputFile file;
    ASSERT_TRUE(open(file, scratch.path("out")));
    EXPECT_TRUE(write(file, std::string(100000, 'x')));
    EXPECT_EQ(scratch.read("out"), "earlier");
    EXPECT_TRUE(commit(file));
    EXPECT_EQ(scratch.read("out"), std::string(100000, 'x'));
    EXPECT_EQ(scratch.names().size(), 1);
}

TEST(OutputFile, whatIsDiscardedOrForgottenLeavesNothing) {
    const Scratch scratch;
    scratch.write("earlier", "out");
    OutputFile file;
    ASSERT_TRUE(open(file, scratch.path("out")));
    write(file, "new");
    file.discard();
    EXPECT_EQ(file.device(), nullptr);
    EXPECT_FALSE(write(file, "more"));
    {
        OutputFile forgotten;
        ASSERT_TRUE(open(forgotten, scratch.path("other")));
        write(forgotten, "new");
    }
    EXPECT_EQ(scratch.read("out"), "earlier");
    EXPECT_EQ(scratch.names().size(), 1);
}

TEST(OutputFile, isWrittenThroughItsDeviceToo) {
    const Scratch scratch;
    OutputFile file;
    EXPECT_EQ(file.device(), nullptr);
    ASSERT_TRUE(open(file, scratch.path("out")));
    file.device()->write("by the device");
    EXPECT_TRUE(commit(file));
    EXPECT_EQ(file.device(), nullptr);
    EXPECT_EQ(scratch.read("out"), "by the device");
}

TEST(OutputFile, canBeOpenedAgain) {
    const Scratch scratch;
    OutputFile file;
    ASSERT_TRUE(open(file, scratch.path("first")));
    write(file, "dropped");
    ASSERT_TRUE(open(file, scratch.path("second")));
    write(file, "kept");
    EXPECT_TRUE(commit(file));
    EXPECT_EQ(scratch.names(), QStringList{QStringLiteral("second")});
    EXPECT_FALSE(commit(file));
    EXPECT_FALSE(error.isEmpty());
}

TEST(OutputFile, aPathThatCannotBeOpenedIsReported) {
    const Scratch scratch;
    OutputFile file;
    EXPECT_FALSE(open(file, scratch.path("none/out")));
    EXPECT_EQ(error, QStringLiteral("No such file or directory"));
    EXPECT_EQ(file.device(), nullptr);
    EXPECT_FALSE(open(file, scratch.path(".")));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_FALSE(open(file, ""));
    EXPECT_FALSE(error.isEmpty());
    // Whoever runs the test, root as nobody included, may not write here.
    ASSERT_EQ(::chmod(scratch.path(".").c_str(), 0500), 0);
    {
        const WithoutPrivileges nobody;
        EXPECT_FALSE(open(file, scratch.path("out")));
        EXPECT_FALSE(error.isEmpty());
    }
    ::chmod(scratch.path(".").c_str(), 0700);
}

TEST(OutputFile, aFullDiskIsReportedByTheCommitAtTheLatest) {
    OutputFile file;
    ASSERT_TRUE(open(file, "/dev/full"));
    write(file, "few bytes wait in a buffer");
    EXPECT_FALSE(commit(file));
    EXPECT_EQ(error, QStringLiteral("No space left on device"));
    ASSERT_TRUE(open(file, "/dev/full"));
    const std::string large(1000000, 'x');
    for (int i = 0; i < 3; ++i)
        write(file, large);
    EXPECT_FALSE(write(file, large));
    EXPECT_FALSE(commit(file));
    EXPECT_EQ(error, QStringLiteral("No space left on device"));
    EXPECT_EQ(inode_type("/dev/full"), S_IFCHR);
}

TEST(OutputFile, aFailureOfTheDeviceFailsTheCommit) {
    OutputFile file;
    ASSERT_TRUE(open(file, "/dev/full"));
    file.device()->write(QByteArray(1000000, 'x'));
    EXPECT_FALSE(commit(file));
    EXPECT_FALSE(error.isEmpty());
}

TEST(OutputFile, aPipeIsWrittenDirectly) {
    const Scratch scratch;
    const std::string path = scratch.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&received, &scratch] { received = scratch.read("pipe"); });
    OutputFile file;
    EXPECT_TRUE(open(file, path));
    EXPECT_TRUE(write(file, "through the pipe"));
    EXPECT_TRUE(commit(file));
    reader.join();
    EXPECT_EQ(received, "through the pipe");
    EXPECT_EQ(inode_type(path), S_IFIFO);
}

TEST(OutputFile, aDeviceNodeIsNeverReplaced) {
    OutputFile file;
    ASSERT_TRUE(open(file, "/dev/null"));
    EXPECT_TRUE(write(file, "x"));
    EXPECT_TRUE(commit(file));
    EXPECT_EQ(inode_type("/dev/null"), S_IFCHR);
}

TEST(OutputFile, aLinkKeepsPointingToTheFileThatIsReplaced) {
    const Scratch scratch;
    scratch.write("earlier", "target");
    ASSERT_EQ(symlink("target", scratch.path("middle").c_str()), 0);
    ASSERT_EQ(symlink(scratch.path("middle").c_str(), scratch.path("link").c_str()), 0);
    OutputFile file;
    ASSERT_TRUE(open(file, scratch.path("link")));
    write(file, "new");
    EXPECT_EQ(scratch.read("target"), "earlier");
    EXPECT_TRUE(commit(file));
    EXPECT_EQ(scratch.read("target"), "new");
    EXPECT_EQ(inode_type(scratch.path("link")), S_IFLNK);
    EXPECT_EQ(inode_type(scratch.path("middle")), S_IFLNK);
    EXPECT_EQ(inode_type(scratch.path("target")), S_IFREG);
}

TEST(OutputFile, aLinkToNothingGetsItsTarget) {
    const Scratch scratch;
    ASSERT_EQ(symlink("later", scratch.path("link").c_str()), 0);
    OutputFile file;
    ASSERT_TRUE(open(file, scratch.path("link")));
    write(file, "new");
    EXPECT_TRUE(commit(file));
    EXPECT_EQ(scratch.read("later"), "new");
    EXPECT_EQ(inode_type(scratch.path("link")), S_IFLNK);
}

TEST(OutputFile, aLoopOfLinksIsRefused) {
    const Scratch scratch;
    ASSERT_EQ(symlink("b", scratch.path("a").c_str()), 0);
    ASSERT_EQ(symlink("a", scratch.path("b").c_str()), 0);
    OutputFile file;
    EXPECT_FALSE(open(file, scratch.path("a")));
    EXPECT_EQ(inode_type(scratch.path("a")), S_IFLNK);
    EXPECT_EQ(inode_type(scratch.path("b")), S_IFLNK);
}

TEST(OutputFile, aStreamThatTheShellRedirectedToAFileIsAppendedTo) {
    const Scratch scratch;
    scratch.write("log\n", "log");
    const int fd = ::open(scratch.path("log").c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    ASSERT_GE(fd, 0);
    OutputFile file;
    ASSERT_TRUE(open(file, "/dev/fd/" + std::to_string(fd)));
    write(file, "more");
    EXPECT_TRUE(commit(file));
    EXPECT_EQ(scratch.read("log"), "log\nmore");
    struct stat opened {};
    struct stat named {};
    fstat(fd, &opened);
    stat(scratch.path("log").c_str(), &named);
    EXPECT_EQ(opened.st_ino, named.st_ino);
    close(fd);
}

TEST(OutputFile, keepsTheModeOfTheFileThatItReplaces) {
    const Scratch scratch;
    const std::string path = scratch.write("earlier", "out");
    chmod(path.c_str(), 0640);
    OutputFile file;
    ASSERT_TRUE(open(file, path));
    write(file, "new");
    EXPECT_TRUE(commit(file));
    struct stat status {};
    stat(path.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}
