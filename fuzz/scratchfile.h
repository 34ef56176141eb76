#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

/// A file in memory that holds a fuzzer's bytes, and the name under which it can be opened.
class ScratchFile {
public:
    ScratchFile(const uint8_t* data, size_t size) : fd_(memfd_create("fuzz", MFD_CLOEXEC)) {
        while (size > 0) {
            const ssize_t count = ::write(fd_, data, size);
            if (count <= 0)
                __builtin_trap();
            data += count;
            size -= static_cast<size_t>(count);
        }
    }
    ~ScratchFile() { ::close(fd_); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(fd_); }

private:
    int fd_;
};
