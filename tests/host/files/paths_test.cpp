#include "host/files/paths.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>

TEST(HostPaths, aRelativeNameIsBelowTheCurrentDirectory) {
    EXPECT_EQ(host::absolute_path("/a/b"), "/a/b");
    EXPECT_EQ(host::absolute_path("b"), QFile::encodeName(QDir::currentPath()) + "/b");
}

TEST(HostPaths, theDirectoryIsWhatComesBeforeTheLastName) {
    EXPECT_EQ(host::directory_of("/a/b"), "/a");
    EXPECT_EQ(host::directory_of("/a/"), "/a");
    EXPECT_EQ(host::directory_of("/a"), "/");
    EXPECT_EQ(host::directory_of("a/b"), "a");
    EXPECT_EQ(host::directory_of("a"), ".");
}

TEST(HostPaths, allMissingDirectoriesAreMade) {
    const QTemporaryDir scratch;
    const QByteArray top = QFile::encodeName(scratch.path());
    EXPECT_TRUE(host::make_directory_of(top + "/a/b/c"));
    EXPECT_TRUE(QDir(scratch.filePath(QStringLiteral("a/b"))).exists());
    EXPECT_FALSE(QDir(scratch.filePath(QStringLiteral("a/b/c"))).exists());
    EXPECT_TRUE(host::make_directory_of(top + "/a/b/c"));
    EXPECT_TRUE(host::make_directory_of("name"));
    EXPECT_FALSE(host::make_directory_of("/dev/null/a/b"));
    EXPECT_EQ(errno, ENOTDIR);
}

TEST(HostPaths, namesOfOneFileAreTheSame) {
    const QTemporaryDir scratch;
    const QByteArray top = QFile::encodeName(scratch.path());
    EXPECT_TRUE(host::same_file(top, top + "/."));
    EXPECT_FALSE(host::same_file(top, "/"));
    EXPECT_FALSE(host::same_file(top + "/missing", top + "/missing"));
}
