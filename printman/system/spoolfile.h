#pragma once

#include <printman/result.h>

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
    /// @param name what failures call it while it is in @p directory, such as the file that the
    ///             bytes are for; empty for the directory
    Result open(const std::string& directory, const QString& name = {});

    /// Appends @p bytes.
    Result write(std::string_view bytes);

    /// Goes back to the start, for read().
    Result rewind();

    /// Reads the next bytes.
    ///
    /// @param size of @p buffer; receives how many were read, 0 at the end
    Result read(char* buffer, size_t& size);

    /// Drops the file.
    void close();

private:
    Result failure(int error) const;

    QString name_; ///< what failures call it
    int fd_ = -1;
};

} // namespace printman
