#include "host/import/listing.h"

#include <algorithm>
#include <cstddef>

namespace host {

namespace {

constexpr size_t tab_width = 8;
constexpr unsigned char first_printable = 0x20;

/// The character that two characters printed over each other make; 0 when they cannot be merged.
char overprinted(char below, char above) {
    if (above == ' ' || above == below)
        return below;
    if (below == ' ' || below == '_')
        return above;
    return above == '_' ? below : '\0';
}

} // namespace

bool ListingReader::refuse(std::string error) {
    if (error_.empty()) {
        error_ = std::move(error);
        error_line_ = line_number_;
    }
    return false;
}

bool ListingReader::feed(std::string_view bytes) {
    while (!bytes.empty() && error_.empty()) {
        const size_t plain = take_plain(bytes);
        bytes.remove_prefix(plain);
        if (plain > 0 || bytes.empty())
            continue;
        if (take(bytes.front()))
            any_byte_ = true;
        bytes.remove_prefix(1);
    }
    return error_.empty();
}

/// Takes the leading bytes that simply continue the line, all at once.
///
/// @return how many bytes
size_t ListingReader::take_plain(std::string_view bytes) {
    const bool at_control = rules_.asa && !line_started_;
    if (at_control || pending_return_ || cursor_ != text_.size())
        return 0;
    const size_t room = static_cast<size_t>(line_limit()) - text_.size();
    const auto is_special = [](char c) { return static_cast<unsigned char>(c) < first_printable; };
    const auto last = bytes.begin() + static_cast<std::ptrdiff_t>(std::min(room, bytes.size()));
    const auto end = std::find_if(bytes.begin(), last, is_special);
    const auto size = static_cast<size_t>(end - bytes.begin());
    if (size > 0) {
        text_.append(bytes.substr(0, size));
        cursor_ += size;
        line_started_ = true;
        any_byte_ = true;
    }
    return size;
}

int ListingReader::line_limit() const {
    return rules_.columns > 0 ? rules_.columns : int{printman::max_page_columns};
}

bool ListingReader::take(char byte) {
    if (byte == '\0')
        return refuse("the line contains a zero byte");
    if (byte == '\f') {
        pending_return_ = false;
        return form_feed();
    }
    if (byte == '\n') {
        pending_return_ = false;
        const bool ok = end_line();
        ++line_number_;
        return ok;
    }
    if (rules_.asa && !line_started_ && byte != '\r') {
        line_started_ = true;
        return control(byte);
    }
    if (pending_return_)
        cursor_ = 0;
    pending_return_ = byte == '\r';
    if (byte == '\r')
        return true;
    line_started_ = true;
    if (byte != '\t')
        return put(byte);
    const size_t target = (cursor_ / tab_width + 1) * tab_width;
    while (cursor_ < target) {
        if (!put(' '))
            return false;
    }
    return true;
}

bool ListingReader::put(char byte) {
    const int limit = line_limit();
    if (cursor_ >= static_cast<size_t>(limit))
        return refuse("the line has more than " + std::to_string(limit) + " characters");
    if (cursor_ == text_.size()) {
        text_ += byte;
    } else {
        const char merged = overprinted(text_[cursor_], byte);
        if (merged == '\0')
            return refuse("two different characters are printed over each other in column " +
                          std::to_string(cursor_ + 1));
        text_[cursor_] = merged;
    }
    ++cursor_;
    return true;
}

bool ListingReader::control(char byte) {
    if (byte == '+' && held_) {
        cursor_ = 0;
        return true;
    }
    if (!print_held_line())
        return false;
    held_ = true;
    held_line_ = line_number_;
    switch (byte) {
    case '+':
    case ' ':
        return true;
    case '0':
        return print_line({});
    case '-':
        return print_line({}) && print_line({});
    case '1':
        return start_page();
    default:
        return refuse(std::string("'") + byte + "' is not a carriage control character");
    }
}

bool ListingReader::end_line() {
    if (rules_.asa) {
        if (!line_started_ && !control(' '))
            return false;
        line_started_ = false;
        return true;
    }
    line_started_ = false;
    held_ = true;
    held_line_ = line_number_;
    return print_held_line();
}

bool ListingReader::print_held_line() {
    if (!held_)
        return true;
    held_ = false;
    const bool ok = print_line(text_);
    text_.clear();
    cursor_ = 0;
    return ok;
}

bool ListingReader::form_feed() {
    if (line_started_ && !rules_.asa)
        held_ = true;
    line_started_ = false;
    return print_held_line() && start_page();
}

bool ListingReader::start_page() {
    page_breaks_ = true;
    if (!any_byte_)
        return true;
    if (!page_open_)
        sink_.begin_page();
    sink_.end_page();
    page_open_ = false;
    return true;
}

bool ListingReader::print_line(std::string_view text) {
    if (page_open_ && rules_.page_lines > 0 && lines_on_page_ == rules_.page_lines) {
        sink_.end_page();
        page_open_ = false;
    }
    if (!page_open_) {
        sink_.begin_page();
        page_open_ = true;
        lines_on_page_ = 0;
    }
    ++lines_on_page_;
    const std::string error = sink_.line(text);
    if (error.empty())
        return true;
    line_number_ = held_line_;
    return refuse(error);
}

bool ListingReader::finish() {
    if (!error_.empty())
        return false;
    if (line_started_ && !rules_.asa)
        held_ = true;
    if (!print_held_line())
        return false;
    if (page_open_)
        sink_.end_page();
    page_open_ = false;
    return true;
}

} // namespace host
