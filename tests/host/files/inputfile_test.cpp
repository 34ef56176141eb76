#include "host/files/inputfile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

namespace {

class InputFile : public testing::Test {
protected:
    QByteArray path(const char* name) const {
        return QFile::encodeName(directory_.path()) + '/' + name;
    }

    QByteArray write(const char* name, const QByteArray& bytes) const {
        QFile file(QFile::decodeName(path(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        return path(name);
    }

    /// What check_input() says of the file that the user calls "x".
    static QByteArray problem(const QByteArray& path) {
        return host::check_input(path, "x").message;
    }

    QTemporaryDir directory_;
};

} // namespace

TEST_F(InputFile, onlyARegularFileIsOpened) {
    QFile file;
    EXPECT_EQ(host::open_regular_file(write("file", "bytes"), file), 0);
    EXPECT_EQ(file.readAll(), "bytes");
    QFile other;
    EXPECT_EQ(host::open_regular_file(path("missing"), other), ENOENT);
    EXPECT_EQ(host::open_regular_file(QFile::encodeName(directory_.path()), other), EISDIR);
    EXPECT_EQ(host::open_regular_file("/dev/null", other), ESPIPE);
    ASSERT_EQ(::mkfifo(path("pipe").constData(), 0600), 0);
    EXPECT_EQ(host::open_regular_file(path("pipe"), other), ESPIPE);
    EXPECT_FALSE(other.isOpen());
}

TEST_F(InputFile, isReportedByTheNameThatTheUserKnows) {
    EXPECT_EQ(problem(write("file", "bytes")), "");
    EXPECT_EQ(problem(write("empty", "")), "x: The file is empty");
    EXPECT_EQ(problem(path("missing")), "x: No such file or directory");
    EXPECT_EQ(problem("/"), "x: Is a directory");
    EXPECT_EQ(problem("/dev/null"), "x: Not a regular file; it is read more than once");
}

TEST_F(InputFile, isNoOutput) {
    const QByteArray in = write("in", "bytes");
    EXPECT_TRUE(host::check_output(in, path("out")).ok());
    EXPECT_EQ(host::check_output(in, directory_.path().toLocal8Bit() + "/./in").status,
              host::Outcome::usage);
    EXPECT_EQ(host::check_output(in, "").status, host::Outcome::usage);
}

TEST_F(InputFile, isReadUpToALimit) {
    QByteArray bytes = "earlier";
    EXPECT_TRUE(host::read_all(write("file", "12345"), 5, bytes).ok());
    EXPECT_EQ(bytes, "12345");
    EXPECT_EQ(host::read_all(path("file"), 4, bytes).message,
              path("file") + ": The file is too large");
    EXPECT_EQ(host::read_all("/dev/zero", 100000, bytes).message,
              "/dev/zero: The file is too large");
    EXPECT_EQ(host::read_all("/dev/null", 4, bytes).message, "/dev/null: The file is empty");
    EXPECT_EQ(host::read_all(path("missing"), 4, bytes).message,
              path("missing") + ": No such file or directory");
}
