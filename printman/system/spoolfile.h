#pragma once

#include <string>
#include <string_view>

namespace printman {

/// Bytes kept in an unnamed temporary file until they are asked for: what is written here takes no
/// memory and leaves nothing behind, however the process ends.
class SpoolFile {
public:
    SpoolFile() = default;
    ~SpoolFile();
    SpoolFile(const SpoolFile&) = delete;
    SpoolFile& operator=(const SpoolFile&) = delete;

    /// Opens the file in @p directory, or in the system's temporary directory when that is empty or
    /// takes no file.
    ///
    /// @return 0 or an errno
    int open(const std::string& directory);

    /// Appends @p bytes: 0 or an errno.
    int write(std::string_view bytes);

    /// Goes back to the start, for read().
    int rewind();

    /// Reads the next bytes into @p buffer.
    ///
    /// @return their number, 0 at the end, a negative errno on failure
    long read(char* buffer, size_t size);

    /// Drops the file.
    void close();

private:
    int fd_ = -1;
};

} // namespace printman
