#include <printman/report/reportbuffer.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace printman {

namespace {

constexpr std::string_view page_top = "#!?PAGETOP";
constexpr std::string_view page_end = "#!?PAGEEND";
constexpr size_t piece_size = 49;
constexpr size_t index_block_size = 256UL * 1024;
constexpr size_t longest_file_name = 255;

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a regular file for reading. A pipe or device is refused: a report is read more than once,
/// and some of them never end.
File open_report(const std::string& name, long& size) {
    const int fd = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        return nullptr;
    struct stat status {};
    const bool known = ::fstat(fd, &status) == 0;
    if (!known || !S_ISREG(status.st_mode)) {
        ::close(fd);
        if (known)
            errno = S_ISDIR(status.st_mode) ? EISDIR : ESPIPE;
        return nullptr;
    }
    size = static_cast<long>(status.st_size);
    File file(::fdopen(fd, "r"));
    if (!file)
        ::close(fd);
    return file;
}

bool starts_with(const char* line, std::string_view mark) {
    return std::strncmp(line, mark.data(), mark.size()) == 0;
}

/// The next top mark, or null. Looking for the mark's rarest letter is nearly twice as fast as
/// memmem, which takes over in text that is full of that letter.
const char* find_top_mark(const char* from, const char* end) {
    constexpr size_t letter_at = page_top.find('G');
    constexpr int most_misses = 64;
    for (int misses = 0; end - from >= static_cast<std::ptrdiff_t>(page_top.size()); ++misses) {
        const size_t places = end - from - page_top.size() + 1;
        if (misses == most_misses)
            return static_cast<const char*>(
                ::memmem(from, end - from, page_top.data(), page_top.size()));
        const void* letter = std::memchr(from + letter_at, page_top[letter_at], places);
        if (!letter)
            return nullptr;
        from = static_cast<const char*>(letter) - letter_at;
        if (std::memcmp(from, page_top.data(), page_top.size()) == 0)
            return from;
        ++from;
    }
    return nullptr;
}

/// Finds page starts in a file that comes in blocks. Lines are taken in pieces of 49 bytes, newline
/// included; a piece that starts with the top mark is one. As every piece but a line's last is
/// full, it is enough to find the mark and to know where its line starts.
class PageFinder {
public:
    explicit PageFinder(std::vector<long>& offsets) : offsets_(offsets) {}

    /// Searches the bytes at @p data, whose first stands at file position @p start.
    ///
    /// @param last nothing follows
    /// @return bytes that are through; the next call starts behind them
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
    const size_t length = std::min(piece_size, size - from);
    const void* newline = std::memchr(data + from, '\n', length);
    return newline ? static_cast<const char*>(newline) - data + 1 : from + length;
}

size_t PageFinder::search(const char* data, size_t size, long start, bool last) {
    const size_t through = last ? size : size - std::min(size, piece_size - 1);
    size_t noted = 0;
    size_t from = 0;
    while (from < through) {
        const size_t search_end = std::min(size, through + page_top.size() - 1);
        const char* found = find_top_mark(data + from, data + search_end);
        if (!found)
            break;
        const size_t at = found - data;
        note_newlines(data, noted, at, start);
        noted = at;
        if ((start + static_cast<long>(at) - line_start_) % static_cast<long>(piece_size) == 0)
            offsets_.push_back(start + static_cast<long>(piece_end(data, at, size)));
        from = at + 1;
    }
    note_newlines(data, noted, through, start);
    return through;
}

/// The number that @p text holds, if it is one that a page can have; 0 is told apart.
long page_number(const char* text, long largest) {
    const long number = std::strtol(text, nullptr, 10);
    return number >= 0 && number <= largest ? number : -1;
}

} // namespace

int find_pages(int fd, size_t block_size, std::vector<long>& offsets) {
    std::vector<char> buffer(block_size + piece_size);
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

ReportBuffer::ReportBuffer() = default;

ReportBuffer::~ReportBuffer() {
    close();
}

bool ReportBuffer::set_file_name(const std::string& name) {
    if (name.size() > longest_file_name)
        return false;
    file_name_ = name;
    return true;
}

int ReportBuffer::open(const char* mode) {
    if (!mode || !*mode)
        return -1;
    close();
    stream_ = std::fopen(file_name_.c_str(), (std::string(mode) + 'e').c_str());
    return stream_ ? 0 : -1;
}

int ReportBuffer::close() {
    if (!stream_)
        return EOF;
    const int result = std::fclose(stream_);
    stream_ = nullptr;
    return result;
}

bool ReportBuffer::add_page(const char* data, int size) {
    if (!data || size < 0)
        return false;
    File file(std::fopen(file_name_.c_str(), "ae"));
    if (!file)
        return false;
    const auto bytes = static_cast<size_t>(size);
    const bool written = std::fwrite(data, 1, bytes, file.get()) == bytes;
    return std::fclose(file.release()) == 0 && written;
}

/// Reads the numbers of the first top line; both are -1 when there are none, and each that a page
/// cannot have is -1.
int ReportBuffer::read_geometry_numbers(long& columns, long& lines) const {
    columns = lines = -1;
    long size = 0;
    const File file = open_report(file_name_, size);
    if (!file)
        return -1;
    std::array<char, 512> line{};
    bool found = false;
    while (!found && std::fgets(line.data(), line.size(), file.get()))
        found = starts_with(line.data(), page_top);
    if (!found)
        return std::ferror(file.get()) ? -1 : 0;
    constexpr size_t numbers_at = 11;
    if (std::strlen(line.data()) <= numbers_at)
        return 0;
    char* comma = std::strchr(line.data() + numbers_at, ',');
    if (!comma)
        return 0;
    *comma = 0;
    columns = page_number(line.data() + numbers_at, max_page_columns);
    lines = page_number(comma + 1, max_page_lines);
    return 0;
}

int ReportBuffer::read_geometry() {
    long columns = 0;
    long lines = 0;
    const int result = read_geometry_numbers(columns, lines);
    if (result == 0 && columns > 0 && lines > 0 && columns * lines <= max_page_cells)
        geometry_ = {static_cast<int>(columns), static_cast<int>(lines)};
    return result;
}

int ReportBuffer::init(EscapeTable& fields) {
    if (!cells_.empty()) {
        cells_ = {};
        page_count_ = 0;
        geometry_ = {};
    }
    long columns = 0;
    long lines = 0;
    const int result = read_geometry_numbers(columns, lines);
    if (result == 0 && columns > 0 && lines == 0) {
        geometry_ = {};
        return 1;
    }
    if (result == 0 && columns > 0 && lines > 0 && columns * lines <= max_page_cells)
        geometry_ = {static_cast<int>(columns), static_cast<int>(lines)};
    if (!geometry_.known())
        return result;
    try {
        cells_.assign(static_cast<size_t>(geometry_.columns) * geometry_.lines, 0);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    fields.create(geometry_.lines);
    line_.fill(0);
    return index_pages();
}

int ReportBuffer::index_pages() {
    long size = 0;
    const File file = open_report(file_name_, size);
    if (!file)
        return -1;
    const size_t known = offsets_.size();
    if (find_pages(::fileno(file.get()), index_block_size, offsets_) != 0) {
        offsets_.resize(known);
        return -1;
    }
    indexed_size_ = size;
    page_count_ = static_cast<int>(offsets_.size());
    return 0;
}

bool ReportBuffer::has_shrunk() const {
    struct stat status {};
    return ::stat(file_name_.c_str(), &status) == 0 && status.st_size < indexed_size_;
}

bool ReportBuffer::allows(int request) const {
    switch (request) {
    case page_current:
    case page_first:
    case page_last:
        return true;
    case page_next:
        return current_page_ < page_count_;
    case page_previous:
        return current_page_ >= 2;
    default:
        return false;
    }
}

int ReportBuffer::page_of(int request) const {
    if (request == page_current || !allows(request))
        return 0;
    if (request == page_next)
        return current_page_ + 1;
    if (request == page_previous)
        return current_page_ - 1;
    return request == page_last ? page_count_ : 1;
}

bool ReportBuffer::turn_to(int page) {
    if (page < 1 || static_cast<size_t>(page) > offsets_.size())
        return false;
    current_page_ = page;
    return true;
}

bool ReportBuffer::read_page(int request, std::span<char> cells, EscapeTable& fields) {
    return read(page_of(request), cells, fields, Overrun::ends_line);
}

bool ReportBuffer::read_page(int request, EscapeTable& fields) {
    return !cells_.empty() && read(page_of(request), cells_, fields, Overrun::is_skipped);
}

bool ReportBuffer::read_page_number(int page, EscapeTable& fields) {
    const int before = current_page_;
    if (cells_.empty() || page > page_count_)
        return false;
    const bool done = read(page, cells_, fields, Overrun::is_skipped);
    if (!done)
        current_page_ = before;
    return done;
}

bool ReportBuffer::read(int page, std::span<char> cells, EscapeTable& fields, Overrun overrun) {
    if (!geometry_.known() || !turn_to(page))
        return false;
    long size = 0;
    const File file = open_report(file_name_, size);
    const long offset = offsets_[current_page_ - 1];
    if (!file || offset > size || std::fseek(file.get(), offset, SEEK_SET) != 0)
        return false;
    std::ranges::fill(cells, 0);
    fields.clear();
    return read_lines(file.get(), cells, fields, overrun);
}

bool ReportBuffer::read_lines(std::FILE* file, std::span<char> cells, EscapeTable& fields,
                              Overrun overrun) {
    int row = 0;
    while (std::fgets(line_.data(), line_.size(), file)) {
        if (starts_with(line_.data(), page_top))
            continue;
        if (starts_with(line_.data(), page_end) || row == geometry_.lines)
            return true;
        // The byte in the newline's place is cut from the line, but its zero fills a cell.
        const auto length = static_cast<int>(std::strlen(line_.data()));
        if (length > 0)
            line_[length - 1] = 0;
        place_line(row, length, cells, fields, overrun);
        ++row;
    }
    return std::ferror(file) == 0;
}

void ReportBuffer::place_line(int row, int length, std::span<char> cells, EscapeTable& fields,
                              Overrun overrun) const {
    const size_t start = static_cast<size_t>(geometry_.columns) * row;
    std::span<char> room = cells.subspan(std::min(start, cells.size()));
    int at = 0;
    while (at < length) {
        if (at < length - 3 && starts_with(line_.data() + at, marker_lead)) {
            const MarkerParse parsed = parse_marker(line_, at + 3, length - 1);
            if (parsed.field)
                fields.add(row, *parsed.field);
            if (parsed.consumed > 0) {
                at += 3 + parsed.consumed;
                continue;
            }
        }
        const void* hash = std::memchr(line_.data() + at + 1, '#', length - at - 1);
        const int next =
            hash ? static_cast<int>(static_cast<const char*>(hash) - line_.data()) : length;
        const size_t copied = std::min<size_t>(next - at, room.size());
        std::copy_n(line_.data() + at, copied, room.begin());
        room = room.subspan(copied);
        if (room.empty() && overrun == Overrun::ends_line)
            return;
        at = next;
    }
}

} // namespace printman
