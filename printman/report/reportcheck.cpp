#include <printman/report/marker.h>
#include <printman/report/reportbuffer.h>
#include <printman/report/reportcheck.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace printman {

namespace {

constexpr std::string_view page_top = "#!?PAGETOP";
constexpr std::string_view page_end = "#!?PAGEEND";
constexpr std::string_view no_op_marker = "#!?T0,0;";
constexpr long piece_size = 49;   // pages are looked for at such steps of a line
constexpr size_t line_size = 511; // the bytes of a file line that are read as one line

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// Opens what can be read to its end: a file or a pipe.
File open_for_check(const std::string& path, int& error) {
    File file(std::fopen(path.c_str(), "re"));
    struct stat status {};
    if (!file || ::fstat(::fileno(file.get()), &status) != 0) {
        error = errno;
        return nullptr;
    }
    if (S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode))
        return file;
    error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    return nullptr;
}

/// The lines of a file as a report's reader takes them: at most 511 bytes, newline included.
class PieceReader {
public:
    explicit PieceReader(std::FILE* file) : file_(file) {}

    /// The next piece, valid until the next call; empty at the end.
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

void PieceReader::fill() {
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

std::string_view PieceReader::next() {
    if (!ended_ && end_ - begin_ < line_size)
        fill();
    const char* piece = block_.data() + begin_;
    size_t size = std::min(line_size, end_ - begin_);
    if (const void* newline = std::memchr(piece, '\n', size))
        size = static_cast<const char*>(newline) - piece + 1;
    begin_ += size;
    return {piece, size};
}

/// What a top line says about the pages' size.
struct TopLine {
    enum Kind { none, absurd, no_lines, known } kind = none;
    long columns = 0;
    long lines = 0;
};

TopLine read_top_line(std::string_view text) {
    constexpr size_t numbers_at = 11;
    const std::string line(text.substr(0, text.find('\0')));
    const size_t comma = line.find(',', std::min(numbers_at, line.size()));
    TopLine top;
    if (comma == line.npos)
        return top;
    top.columns = std::strtol(line.substr(numbers_at, comma - numbers_at).c_str(), nullptr, 10);
    top.lines = std::strtol(line.c_str() + comma + 1, nullptr, 10);
    const bool columns_ok = top.columns >= 1 && top.columns <= max_page_columns;
    const bool lines_ok = top.lines >= 1 && top.lines <= max_page_lines;
    if (columns_ok && top.lines == 0)
        top.kind = TopLine::no_lines;
    else if (columns_ok && lines_ok && top.columns * top.lines <= max_page_cells)
        top.kind = TopLine::known;
    else
        top.kind = TopLine::absurd;
    return top;
}

std::string geometry_text(const TopLine& top) {
    return std::to_string(top.columns) + ',' + std::to_string(top.lines);
}

/// A marker's text as it may stand in a message: short, and no byte that steers a terminal.
std::string shown(std::string text) {
    constexpr size_t longest = 32;
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    return text.size() > longest ? text.substr(0, longest) + "..." : text;
}

class Checker {
public:
    explicit Checker(const std::function<bool(const ReportFault&)>& sink) : sink_(sink) {}

    /// Takes the next piece; false when the sink has had enough.
    bool take(std::string_view piece);

    /// Tells what only the end of the file shows.
    void finish();

private:
    /// What is told at most once a line.
    enum Kind {
        too_long,
        zero_byte,
        hidden_page,
        too_wide,
        bad_marker,
        out_of_page,
        never_found,
        third_marker,
        kinds
    };

    void check_bytes(std::string_view piece);
    void check_hidden_page(std::string_view piece);
    void take_top_line(std::string_view piece);
    void take_first_geometry(const TopLine& top);
    void take_end_line();
    void take_text(std::string_view piece);
    void check_cells(std::string_view piece);
    void check_field(const EscapeField& field, std::string_view text, long column);
    const char* misplacement(const EscapeField& field, long columns) const;
    void tell_at(long line, const std::string& what);
    void tell(const std::string& what) { tell_at(line_, what); }
    void tell(Kind kind, const std::string& what);

    const std::function<bool(const ReportFault&)>& sink_;
    bool stopped_ = false;

    long line_ = 0;          ///< of the file, 1-based
    long line_offset_ = 0;   ///< bytes of the line in earlier pieces
    bool line_open_ = false; ///< no newline yet
    bool is_text_ = false;   ///< the line is none of a page's delimiters
    std::bitset<kinds> told_;
    std::string overlap_; ///< the last bytes of the line's earlier pieces

    std::optional<TopLine> geometry_; ///< of the first top line
    bool any_page_ = false;
    bool in_page_ = false;
    long page_start_ = 0; ///< line of the file
    long page_lines_ = 0; ///< lines that the page has so far
    bool outside_told_ = false;
    bool return_told_ = false;
    std::vector<int16_t> starts_; ///< where the piece's markers start
};

void Checker::tell_at(long line, const std::string& what) {
    if (!stopped_)
        stopped_ = !sink_({line, what});
}

void Checker::tell(Kind kind, const std::string& what) {
    if (!told_.test(kind))
        tell(what);
    told_.set(kind);
}

bool Checker::take(std::string_view piece) {
    if (!line_open_) {
        ++line_;
        line_offset_ = 0;
        told_.reset();
    }
    check_bytes(piece);
    check_hidden_page(piece);
    is_text_ = false;
    if (!line_open_ && piece.starts_with(page_top)) {
        take_top_line(piece);
    } else if (!line_open_ && piece.starts_with(page_end)) {
        take_end_line();
    } else {
        is_text_ = true;
        take_text(piece);
    }
    line_offset_ += static_cast<long>(piece.size());
    line_open_ = !piece.ends_with('\n');
    return !stopped_;
}

void Checker::finish() {
    if (line_ == 0) {
        tell_at(0, "the file is empty");
        return;
    }
    if (line_open_ && is_text_ && in_page_)
        tell("the last line has no newline: its last character is lost");
    if (in_page_)
        tell("the last page has no end (it starts at line " + std::to_string(page_start_) + ")");
    if (!any_page_)
        tell_at(0, "no page: no line starts with \"#!?PAGETOP\"");
}

void Checker::check_bytes(std::string_view piece) {
    if (piece.size() == line_size && !piece.ends_with('\n'))
        tell(too_long,
             "longer than 510 bytes: it is read as several lines, which lose a byte each");
    if (piece.find('\0') != piece.npos)
        tell(zero_byte, "zero byte: it cuts the line");
    if (!return_told_ && piece.ends_with("\r\n")) {
        return_told_ = true;
        tell("carriage return at the line's end: it is read as text (told once)");
    }
}

void Checker::check_hidden_page(std::string_view piece) {
    std::string joined;
    if (line_open_)
        joined = overlap_ + std::string(piece);
    const std::string_view window = line_open_ ? joined : piece;
    const long window_start = line_offset_ + static_cast<long>(piece.size() - window.size());
    for (size_t at = window.find(page_top); at != window.npos; at = window.find(page_top, at + 1)) {
        const long offset = window_start + static_cast<long>(at);
        if (offset > 0 && offset % piece_size == 0)
            tell(hidden_page, "\"#!?PAGETOP\" at column " + std::to_string(offset + 1) +
                                  " starts a page inside the line");
    }
    if (!piece.ends_with('\n'))
        overlap_ = window.substr(window.size() - std::min(window.size(), page_top.size() - 1));
}

void Checker::take_top_line(std::string_view piece) {
    if (in_page_)
        tell("page start inside the page of line " + std::to_string(page_start_) +
             ", which has no end");
    any_page_ = in_page_ = true;
    outside_told_ = false;
    page_start_ = line_;
    page_lines_ = 0;
    if (piece.size() > piece_size) {
        tell("page start longer than 49 bytes: what follows them is the page's first line");
        page_lines_ = 1;
    }
    const TopLine top = read_top_line(piece);
    if (!geometry_)
        take_first_geometry(top);
    else if (geometry_->kind == TopLine::known && top.kind != TopLine::none &&
             geometry_text(top) != geometry_text(*geometry_))
        tell("geometry " + geometry_text(top) + " is ignored: the first page says " +
             geometry_text(*geometry_));
}

void Checker::take_first_geometry(const TopLine& top) {
    geometry_ = top;
    if (top.kind == TopLine::none)
        tell("the first page start has no geometry (\"#!?PAGETOP columns,lines\")");
    else if (top.kind == TopLine::absurd)
        tell("geometry " + geometry_text(top) +
             " is out of range: 1 to 32767 columns and lines, 67108864 cells");
    else if (top.kind == TopLine::no_lines)
        tell("geometry " + geometry_text(top) + " has no lines");
}

void Checker::take_end_line() {
    if (!in_page_)
        tell("page end without a page start");
    in_page_ = false;
}

void Checker::take_text(std::string_view piece) {
    if (!in_page_) {
        if (!outside_told_ && piece != "\n" && piece != "\r\n") {
            outside_told_ = true;
            tell("text outside a page is lost (told once before the next page)");
        }
        return;
    }
    ++page_lines_;
    const bool known = geometry_ && geometry_->kind == TopLine::known;
    if (known && page_lines_ > geometry_->lines) {
        if (page_lines_ == geometry_->lines + 1)
            tell("the page has more than " + std::to_string(geometry_->lines) +
                 " lines: this and the following ones are lost");
        return;
    }
    check_cells(piece);
}

/// Walks the piece as the page's reader does: its last byte before a zero byte makes way for one.
void Checker::check_cells(std::string_view piece) {
    const bool returns = piece.ends_with("\r\n");
    std::string line(piece.substr(0, piece.find('\0')));
    if (line.empty())
        return;
    line.back() = 0;
    const int end = static_cast<int>(line.size()) - 1;
    long cells = -1; // the zero at the end is none
    starts_.clear();
    for (int at = 0; at <= end;) {
        const std::string_view rest = std::string_view(line).substr(at);
        const size_t text = std::min(rest.find('#', 1), rest.size());
        if (!rest.starts_with(marker_lead)) {
            cells += static_cast<long>(text);
            at += static_cast<int>(text);
            continue;
        }
        const long column = line_offset_ + at + 1;
        const MarkerParse parsed = parse_marker(line, at + 3, end);
        if (!parsed.field)
            tell(bad_marker, (parsed.consumed > 0 ? "unfinished marker at column "
                                                  : "not a marker: \"#!?\" at column ") +
                                 std::to_string(column));
        else
            check_field(*parsed.field, rest.substr(0, 3 + parsed.consumed), column);
        if (parsed.consumed == 0)
            ++cells;
        at += parsed.consumed > 0 ? 3 + parsed.consumed : 1;
    }
    if (returns)
        --cells;
    if (geometry_->kind == TopLine::known && cells > geometry_->columns)
        tell(too_wide, "text runs " + std::to_string(cells - geometry_->columns) +
                           " cells past the page's width of " + std::to_string(geometry_->columns));
}

void Checker::check_field(const EscapeField& field, std::string_view text, long column) {
    if (text == no_op_marker)
        return;
    const auto tell_marker = [&](Kind kind, const char* what) {
        tell(kind,
             "marker " + shown(std::string(text)) + " at column " + std::to_string(column) + what);
    };
    const bool known = geometry_->kind == TopLine::known;
    const long columns = known ? geometry_->columns : max_page_columns;
    if (const char* what = misplacement(field, columns))
        tell_marker(out_of_page, what);
    if (known && field.start == columns)
        tell_marker(never_found, " stands at the last column, where it is never found");
    if (std::ranges::count(starts_, field.start) == 2)
        tell_marker(third_marker, " is the third at its place and is never found");
    starts_.push_back(field.start);
}

/// What is wrong with the numbers of a marker, or null.
const char* Checker::misplacement(const EscapeField& field, long columns) const {
    if (field.start < 1 || field.start > columns)
        return " starts outside the page";
    if (field.type == EscapeField::tab) {
        if (field.size > columns)
            return " leads outside the page";
        return field.size <= field.start ? " does not lead forward" : nullptr;
    }
    if (field.size < 1)
        return " has no width";
    return field.start - 1 + field.size > columns ? " reaches past the right edge" : nullptr;
}

} // namespace

int check_report(const std::string& path, const std::function<bool(const ReportFault&)>& sink) {
    int error = 0;
    const File file = open_for_check(path, error);
    if (!file)
        return error;
    PieceReader reader(file.get());
    Checker checker(sink);
    for (std::string_view piece = reader.next(); !piece.empty(); piece = reader.next())
        if (!checker.take(piece))
            return 0;
    if (reader.error() != 0)
        return reader.error();
    checker.finish();
    return 0;
}

} // namespace printman
