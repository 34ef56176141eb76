#include "tests/support/scratch.h"

#include <printman/system/regularfile.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

using printman::File;
using printman::open_regular_descriptor;
using printman::open_regular_file;

namespace {

/// The descriptor that the next file would get.
int next_descriptor() {
    const int fd = ::dup(STDIN_FILENO);
    ::close(fd);
    return fd;
}

int error_of(const char* path) {
    errno = 0;
    const int free = next_descriptor();
    EXPECT_EQ(open_regular_file(path), nullptr) << path;
    const int error = errno;
    EXPECT_EQ(next_descriptor(), free) << path << " is left open";
    return error;
}

} // namespace

TEST(RegularFile, isReadFromItsStart) {
    const Scratch scratch;
    const std::string path = scratch.write("text");
    off_t size = 0;
    const File file = open_regular_file(path.c_str(), &size);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(size, 4);
    EXPECT_EQ(std::fgetc(file.get()), 't');
    EXPECT_NE(::fcntl(::fileno(file.get()), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(RegularFile, whatIsNoneIsRefusedAtOnce) {
    const Scratch scratch;
    ASSERT_EQ(::mkfifo(scratch.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(error_of(scratch.path("pipe").c_str()), ESPIPE);
    EXPECT_EQ(error_of("/dev/null"), ESPIPE);
    EXPECT_EQ(error_of(scratch.path("").c_str()), EISDIR);
    EXPECT_EQ(error_of(scratch.path("missing").c_str()), ENOENT);
    EXPECT_EQ(error_of(nullptr), EINVAL);
}

TEST(RegularFile, isOpenedOnlyAsFarAsItMayBe) {
    const Scratch scratch;
    const std::string path = scratch.write("text");
    ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(::chmod(scratch.path("").c_str(), 0755), 0);
    const WithoutPrivileges other;
    const int reading = open_regular_descriptor(path.c_str(), O_RDONLY);
    EXPECT_GE(reading, 0);
    ::close(reading);
    EXPECT_EQ(open_regular_descriptor(path.c_str(), O_RDWR), -1);
    EXPECT_EQ(errno, EACCES);
}
