#include <printman/report/pagefinder.h>
#include <printman/report/reportformat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <unistd.h>

namespace printman {

namespace {

/// The next top mark, or null. Looking for the mark's rarest letter is nearly twice as fast as
/// memmem, which is used in text that is full of that letter.
const char* find_top_mark(const char* from, const char* end) {
    constexpr size_t letter_at = page_top_mark.find('G');
    constexpr int max_misses = 64;
    for (int misses = 0; end - from >= static_cast<std::ptrdiff_t>(page_top_mark.size());
         ++misses) {
        const size_t places = end - from - page_top_mark.size() + 1;
        if (misses == max_misses)
            return static_cast<const char*>(
                ::memmem(from, end - from, page_top_mark.data(), page_top_mark.size()));
        const void* letter = std::memchr(from + letter_at, page_top_mark[letter_at], places);
        if (!letter)
            return nullptr;
        from = static_cast<const char*>(letter) - letter_at;
        if (std::memcmp(from, page_top_mark.data(), page_top_mark.size()) == 0)
            return from;
        ++from;
    }
    return nullptr;
}

/// Finds page starts in a file that is given in blocks. As every piece of a line but its last is
/// full, it is enough to find the mark and to know where its line starts.
class PageFinder {
public:
    explicit PageFinder(std::vector<long>& offsets) : offsets_(offsets) {}

    /// Searches the bytes at @p data, whose first stands at file position @p start.
    ///
    /// @param last whether these are the last bytes of the file
    /// @return the number of bytes that are done with; the next call starts after them
    size_t search(const char* data, size_t size, long start, bool last);

private:
    void note_newlines(const char* data, size_t from, size_t to, long start);
    static size_t piece_end(const char* data, size_t from, size_t size);

    std::vector<long>& offsets_;
    long line_start_ = 0;
};

void PageFinder::note_newlines(const char* data, size_t from, size_t to, long start) {
    if (const void* newline = ::memrchr(data + from, '\n', to - from))
        line_start_ = start + (static_cast<const char*>(newline) - data) + 1;
}

size_t PageFinder::piece_end(const char* data, size_t from, size_t size) {
    const size_t length = std::min(line_piece_size, size - from);
    const void* newline = std::memchr(data + from, '\n', length);
    return newline ? static_cast<const char*>(newline) - data + 1 : from + length;
}

size_t PageFinder::search(const char* data, size_t size, long start, bool last) {
    const size_t through = last ? size : size - std::min(size, line_piece_size - 1);
    size_t noted = 0;
    size_t from = 0;
    while (from < through) {
        const size_t search_end = std::min(size, through + page_top_mark.size() - 1);
        const char* found = find_top_mark(data + from, data + search_end);
        if (!found)
            break;
        const size_t at = found - data;
        note_newlines(data, noted, at, start);
        noted = at;
        if ((start + static_cast<long>(at) - line_start_) % static_cast<long>(line_piece_size) == 0)
            offsets_.push_back(start + static_cast<long>(piece_end(data, at, size)));
        from = at + 1;
    }
    note_newlines(data, noted, through, start);
    return through;
}

} // namespace

int find_pages(int fd, size_t block_size, std::vector<long>& offsets) {
    std::vector<char> buffer(block_size + line_piece_size);
    PageFinder finder(offsets);
    size_t held = 0;
    long start = 0;
    for (;;) {
        const ssize_t count = ::read(fd, buffer.data() + held, block_size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        held += static_cast<size_t>(count);
        const size_t through = finder.search(buffer.data(), held, start, count == 0);
        if (count == 0)
            return 0;
        held -= through;
        start += static_cast<long>(through);
        std::memmove(buffer.data(), buffer.data() + through, held);
    }
}

} // namespace printman
