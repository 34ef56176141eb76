#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// How a listing is paged and what its columns mean.
struct ListingRules {
    int page_lines = 0; ///< a page of more lines is broken here, like paper; 0: never
    int columns = 0;    ///< a line of more characters is refused; 0: up to max_listing_line
    bool asa = false;   ///< the first column of each line is carriage control
};

/// No line of a report can be longer.
inline constexpr int max_listing_line = 32767;

/// What a listing holds, told in its order.
class ListingSink {
public:
    virtual ~ListingSink() = default;

    virtual void begin_page() = 0;

    /// One line as it stands on the paper: tabs expanded, overprinting merged, no line end.
    ///
    /// @return an empty text, or why the line is refused
    virtual std::string line(std::string_view text) = 0;

    virtual void end_page() = 0;
};

/// Reads a plain-text listing, given in pieces of any size, as pages of lines.
///
/// A form feed ends the page wherever it stands; the first byte of the listing being one, or the
/// last, makes no empty page, two in a row make one between them. Lines end with LF or CRLF, the
/// last also without. Tabs go to the next multiple of 8. After any other CR the same line is
/// printed over: blanks take the other's character, equal characters and '_' over text merge, and
/// anything else is refused. So are zero bytes; all other bytes are kept.
///
/// In carriage control ' ' goes to the next line, '0' leaves one line blank first and '-' two, '1'
/// starts a page, '+' prints over the line before; an empty line counts as ' '. Tabs are counted
/// behind that column.
///
/// Memory: one line.
class ListingReader {
public:
    /// @param sink outlives the reader
    ListingReader(const ListingRules& rules, ListingSink& sink) : rules_(rules), sink_(sink) {}

    /// Reads on.
    ///
    /// @return false once the listing is refused
    bool feed(std::string_view bytes);

    /// Ends the listing: false when it is refused.
    bool finish();

    /// Why the listing is refused, and the 1-based line where.
    const std::string& error() const { return error_; }
    long error_line() const { return error_line_; }

    /// Whether the listing says itself where pages end, by form feeds or carriage control.
    bool has_page_breaks() const { return page_breaks_; }

private:
    bool take(char byte);
    size_t take_plain(std::string_view bytes);
    int line_limit() const;
    bool put(char byte);
    bool control(char byte);
    bool end_line();
    bool form_feed();
    bool start_page();
    bool hand_over();
    bool print_line(std::string_view text);
    bool refuse(std::string why);

    ListingRules rules_;
    ListingSink& sink_;
    std::string text_;            ///< the line so far, as printed
    size_t cursor_ = 0;           ///< where the next character goes
    bool line_started_ = false;   ///< the listing's line has a byte
    bool held_ = false;           ///< carriage control: text_ awaits what may be printed over it
    bool pending_return_ = false; ///< the byte before was a CR
    bool any_byte_ = false;
    bool page_open_ = false;
    bool page_breaks_ = false;
    int lines_on_page_ = 0;
    long line_number_ = 1;
    long held_line_ = 1; ///< where text_ began
    std::string error_;
    long error_line_ = 0;
};

} // namespace host
