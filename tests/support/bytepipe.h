#pragma once

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>

/// Bytes that can be read once, from their beginning to their end, by whoever reads the pipe.
class BytePipe {
public:
    explicit BytePipe(std::string bytes) {
        EXPECT_EQ(::pipe2(ends_, O_CLOEXEC), 0);
        writer_ = std::thread([to = ends_[1], bytes = std::move(bytes)] { feed(to, bytes); });
    }
    ~BytePipe() {
        ::close(ends_[0]);
        writer_.join();
    }
    BytePipe(const BytePipe&) = delete;
    BytePipe& operator=(const BytePipe&) = delete;

    int fd() const { return ends_[0]; }

    /// The name under which it can be opened.
    std::string path() const { return "/proc/self/fd/" + std::to_string(fd()); }

private:
    /// Writes what is read of them, and closes the pipe.
    static void feed(int to, const std::string& bytes) {
        // A reader that goes away early is no reason to end the process.
        sigset_t pipe;
        sigemptyset(&pipe);
        sigaddset(&pipe, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
        ssize_t written = 0;
        for (size_t done = 0; done < bytes.size() && written >= 0;
             done += static_cast<size_t>(written))
            written = ::write(to, bytes.data() + done, bytes.size() - done);
        ::close(to);
    }

    int ends_[2] = {-1, -1};
    std::thread writer_;
};
