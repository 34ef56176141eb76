#include <printman/report/linereader.h>
#include <printman/report/marker.h>
#include <printman/report/reportcheck.h>
#include <printman/report/reportformat.h>
#include <printman/system/regularfile.h>

#include <algorithm>
#include <bitset>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace printman {

namespace {

/// Opens what can be read to an end: a file, a pipe or a socket.
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

std::string quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

std::string geometry_text(const TopLine& top) {
    return std::to_string(top.columns) + ',' + std::to_string(top.lines);
}

/// A marker's text for a message: short, and without bytes that control a terminal.
std::string shown(std::string text) {
    constexpr size_t max_shown = 32;
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    return text.size() > max_shown ? text.substr(0, max_shown) + "..." : text;
}

class Checker {
public:
    explicit Checker(const std::function<bool(const ReportFault&)>& sink) : sink_(sink) {}

    /// Takes the next piece; false once the sink has stopped the check.
    bool take(std::string_view piece);

    /// Reports what only the end of the file shows.
    void finish();

private:
    /// Faults that are reported at most once per line.
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
    void report_at(long line, const std::string& what, ReportFault::Kind kind = ReportFault::other);
    void report_geometry(const std::string& what) { report_at(line_, what, ReportFault::geometry); }
    void report(const std::string& what) { report_at(line_, what); }
    void report(Kind kind, const std::string& what);

    const std::function<bool(const ReportFault&)>& sink_;
    bool stopped_ = false;

    long line_ = 0;          ///< of the file, 1-based
    long line_offset_ = 0;   ///< bytes of the line in earlier pieces
    bool line_open_ = false; ///< no newline yet
    bool is_text_ = false;   ///< the line neither begins nor ends a page
    std::bitset<kinds> reported_;
    std::string overlap_; ///< the last bytes of the line's earlier pieces

    std::optional<TopLine> geometry_; ///< of the first top line
    bool any_page_ = false;
    bool in_page_ = false;
    long page_start_ = 0; ///< line of the file
    long page_lines_ = 0; ///< lines that the page has so far
    bool outside_reported_ = false;
    bool return_reported_ = false;
    std::vector<int16_t> starts_; ///< where the piece's markers start
};

void Checker::report_at(long line, const std::string& what, ReportFault::Kind kind) {
    if (!stopped_)
        stopped_ = !sink_({line, what, kind});
}

void Checker::report(Kind kind, const std::string& what) {
    if (!reported_.test(kind))
        report(what);
    reported_.set(kind);
}

bool Checker::take(std::string_view piece) {
    if (!line_open_) {
        ++line_;
        line_offset_ = 0;
        reported_.reset();
    }
    check_bytes(piece);
    check_hidden_page(piece);
    is_text_ = false;
    if (!line_open_ && piece.starts_with(page_top_mark)) {
        take_top_line(piece);
    } else if (!line_open_ && piece.starts_with(page_end_mark)) {
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
        report_at(0, "the file is empty");
        return;
    }
    if (line_open_ && is_text_ && in_page_)
        report("the last line has no newline: its last character is lost");
    if (in_page_)
        report("the last page has no end (it starts at line " + std::to_string(page_start_) + ")");
    if (!any_page_)
        report_at(0, "no page: no line starts with " + quoted(page_top_mark));
}

void Checker::check_bytes(std::string_view piece) {
    if (piece.size() > max_line_bytes && !piece.ends_with('\n'))
        report(too_long, "longer than " + std::to_string(max_line_bytes) +
                             " bytes: it is read as several lines, which lose a byte each");
    if (piece.find('\0') != piece.npos)
        report(zero_byte, "zero byte: it cuts the line");
    if (!return_reported_ && piece.ends_with("\r\n")) {
        return_reported_ = true;
        report("carriage return at the line's end: it is read as text (told once)");
    }
}

void Checker::check_hidden_page(std::string_view piece) {
    std::string joined;
    if (line_open_)
        joined = overlap_ + std::string(piece);
    const std::string_view window = line_open_ ? joined : piece;
    const long window_start = line_offset_ + static_cast<long>(piece.size() - window.size());
    for (size_t at = window.find(page_top_mark); at != window.npos;
         at = window.find(page_top_mark, at + 1)) {
        const long offset = window_start + static_cast<long>(at);
        if (offset > 0 && offset % static_cast<long>(line_piece_size) == 0)
            report(hidden_page, quoted(page_top_mark) + " at column " + std::to_string(offset + 1) +
                                    " starts a page inside the line");
    }
    if (!piece.ends_with('\n'))
        overlap_ = window.substr(window.size() - std::min(window.size(), page_top_mark.size() - 1));
}

void Checker::take_top_line(std::string_view piece) {
    if (in_page_)
        report("page start inside the page of line " + std::to_string(page_start_) +
               ", which has no end");
    any_page_ = in_page_ = true;
    outside_reported_ = false;
    page_start_ = line_;
    page_lines_ = 0;
    if (piece.size() > line_piece_size) {
        report("page start longer than " + std::to_string(line_piece_size) +
               " bytes: what follows them is the page's first line");
        page_lines_ = 1;
    }
    const TopLine top = parse_top_line(piece);
    if (!geometry_)
        take_first_geometry(top);
    else if (geometry_->kind == TopLine::valid && top.kind != TopLine::no_geometry &&
             geometry_text(top) != geometry_text(*geometry_))
        report("geometry " + geometry_text(top) + " is ignored: the first page says " +
               geometry_text(*geometry_));
}

void Checker::take_first_geometry(const TopLine& top) {
    geometry_ = top;
    if (top.kind == TopLine::no_geometry)
        report_geometry("the first page start has no geometry (" +
                        quoted(std::string(page_top_mark) + " columns,lines") + ')');
    else if (top.kind == TopLine::out_of_range)
        report_geometry("geometry " + geometry_text(top) + " is out of range: 1 to " +
                        std::to_string(max_page_columns) + " columns and lines, " +
                        std::to_string(max_page_cells) + " cells");
    else if (top.kind == TopLine::no_lines)
        report_geometry("geometry " + geometry_text(top) + " has no lines");
}

void Checker::take_end_line() {
    if (!in_page_)
        report("page end without a page start");
    in_page_ = false;
}

void Checker::take_text(std::string_view piece) {
    if (!in_page_) {
        if (!outside_reported_ && piece != "\n" && piece != "\r\n") {
            outside_reported_ = true;
            report("text outside a page is lost (told once before the next page)");
        }
        return;
    }
    ++page_lines_;
    const bool known = geometry_ && geometry_->kind == TopLine::valid;
    if (known && page_lines_ > geometry_->lines) {
        if (page_lines_ == geometry_->lines + 1)
            report("the page has more than " + std::to_string(geometry_->lines) +
                   " lines: this and the following ones are lost");
        return;
    }
    check_cells(piece);
}

/// Walks the piece as the page's reader does, which replaces its last byte by a zero byte.
void Checker::check_cells(std::string_view piece) {
    const bool returns = piece.ends_with("\r\n");
    std::string line(piece.substr(0, piece.find('\0')));
    if (line.empty())
        return;
    line.back() = 0;
    const int end = static_cast<int>(line.size()) - 1;
    long cells = -1; // the zero byte at the end is not a cell
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
            report(bad_marker, (parsed.consumed > 0 ? "unfinished marker at column "
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
    if (geometry_->kind == TopLine::valid && cells > geometry_->columns)
        report(too_wide, "text runs " + std::to_string(cells - geometry_->columns) +
                             " cells past the page's width of " +
                             std::to_string(geometry_->columns));
}

void Checker::check_field(const EscapeField& field, std::string_view text, long column) {
    if (text == no_op_marker)
        return;
    const auto report_marker = [&](Kind kind, const char* what) {
        report(kind, "marker " + shown(std::string(text)) + " at column " + std::to_string(column) +
                         what);
    };
    const bool known = geometry_->kind == TopLine::valid;
    const long columns = known ? geometry_->columns : max_page_columns;
    if (const char* what = misplacement(field, columns))
        report_marker(out_of_page, what);
    if (known && field.start == columns)
        report_marker(never_found, " stands at the last column, where it is never found");
    if (std::ranges::count(starts_, field.start) == 2)
        report_marker(third_marker, " is the third at its place and is never found");
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
    LineReader reader(file.get());
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
