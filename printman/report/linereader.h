#pragma once

#include <array>
#include <cstdio>
#include <string_view>

namespace printman {

/// Reads a file in the pieces that a page's reader takes for lines: up to and including a newline,
/// at most one byte less than the line buffer holds.
class LineReader {
public:
    /// @param file read from where it stands; it is not owned
    explicit LineReader(std::FILE* file) : file_(file) {}

    /// The next piece, valid until the next call; empty at the end of the file.
    std::string_view next();

    /// The errno of a failed read, or 0.
    int error() const { return error_; }

private:
    void fill();

    std::FILE* file_;
    std::array<char, 64 * 1024> block_{};
    size_t begin_ = 0;
    size_t end_ = 0;
    bool ended_ = false;
    int error_ = 0;
};

} // namespace printman
