#include <printman/report/pagefinder.h>
#include <printman/report/reportbuffer.h>
#include <printman/system/regularfile.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace printman {

namespace {

constexpr size_t index_block_size = 256UL * 1024;
constexpr size_t max_file_name = 255;

bool starts_with(const char* line, std::string_view mark) {
    return std::strncmp(line, mark.data(), mark.size()) == 0;
}

} // namespace

ReportBuffer::ReportBuffer() = default;

ReportBuffer::~ReportBuffer() {
    close();
}

bool ReportBuffer::set_file_name(const std::string& name) {
    if (name.size() > max_file_name)
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

/// Reads the first top line.
///
/// @return false when the file cannot be read; @p top stays as it was if there is no such line
bool ReportBuffer::read_first_top_line(TopLine& top) const {
    const File file = open_regular_file(file_name_.c_str());
    if (!file)
        return false;
    std::array<char, line_buffer_size> line{};
    while (std::fgets(line.data(), line.size(), file.get())) {
        if (starts_with(line.data(), page_top_mark)) {
            top = parse_top_line(line.data());
            return true;
        }
    }
    return std::ferror(file.get()) == 0;
}

int ReportBuffer::read_geometry() {
    TopLine top;
    if (!read_first_top_line(top))
        return -1;
    if (top.kind == TopLine::valid)
        geometry_ = top.geometry();
    return 0;
}

int ReportBuffer::init(EscapeTable& fields) {
    if (!cells_.empty()) {
        cells_ = {};
        page_count_ = 0;
        geometry_ = {};
    }
    TopLine top;
    const bool is_read = read_first_top_line(top);
    if (top.kind == TopLine::no_lines) {
        geometry_ = {};
        return 1;
    }
    if (top.kind == TopLine::valid)
        geometry_ = top.geometry();
    if (!geometry_.known())
        return is_read ? 0 : -1;
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
    off_t size = 0;
    const File file = open_regular_file(file_name_.c_str(), &size);
    if (!file)
        return -1;
    const size_t known = offsets_.size();
    if (find_pages(::fileno(file.get()), index_block_size, offsets_) != 0) {
        offsets_.resize(known);
        return -1;
    }
    indexed_size_ = static_cast<long>(size);
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
    off_t size = 0;
    const File file = open_regular_file(file_name_.c_str(), &size);
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
        if (starts_with(line_.data(), page_top_mark))
            continue;
        if (starts_with(line_.data(), page_end_mark) || row == geometry_.lines)
            return true;
        // The byte in the newline's place is cut off, but the zero that replaces it takes a cell.
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
