#include <printman/report/linereader.h>
#include <printman/report/reportformat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace printman {

namespace {

constexpr size_t max_piece = line_buffer_size - 1;

} // namespace

void LineReader::fill() {
    std::memmove(block_.data(), block_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    const size_t room = block_.size() - end_;
    const size_t count = std::fread(block_.data() + end_, 1, room, file_);
    if (std::ferror(file_))
        error_ = errno;
    ended_ = count < room;
    end_ += count;
}

std::string_view LineReader::next() {
    if (!ended_ && end_ - begin_ < max_piece)
        fill();
    const char* piece = block_.data() + begin_;
    size_t size = std::min(max_piece, end_ - begin_);
    if (const void* newline = std::memchr(piece, '\n', size))
        size = static_cast<const char*>(newline) - piece + 1;
    begin_ += size;
    return {piece, size};
}

} // namespace printman
