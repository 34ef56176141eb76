#pragma once

#include <printman/report/reportformat.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace host {

/// How a listing is paged and what its columns mean.
struct ListingRules {
    int page_lines = 0; ///< a page of more lines is broken here, like paper; 0: never
    int columns = 0;    ///< a line of more characters is refused; 0: of more than max_page_columns
    bool asa = false;   ///< the first column of each line is carriage control
};

/// Receives the content of a listing in its order.
class ListingSink {
public:
    virtual ~ListingSink() = default;

    virtual void begin_page() = 0;

    /// One line as printed: tabs expanded, overprinting merged, without its line end.
    ///
    /// @return an error message to refuse the listing, else an empty text
    virtual std::string line(std::string_view text) = 0;

    virtual void end_page() = 0;
};

/// Reads a plain-text listing, given in pieces of any size, as pages of lines.
///
/// A form feed ends the page wherever it is; as the first or last byte of the listing it makes no
/// empty page, and two in a row make one between them. Lines end with LF or CRLF, the last also
/// without. Tabs go to the next multiple of 8. After any other CR the same line is printed over: a
/// blank gives way to the other character, equal characters and '_' over text merge, and anything
/// else is refused. So are zero bytes; all other bytes are kept.
///
/// In carriage control ' ' goes to the next line, '0' leaves one line blank first and '-' two, '1'
/// starts a page, '+' prints over the previous line; an empty line counts as ' '. Tabs are counted
/// from the next column.
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

    /// Why the listing is refused, and its 1-based line.
    const std::string& error() const { return error_; }
    long error_line() const { return error_line_; }

    /// Whether the listing itself marks the ends of pages, by form feeds or carriage control.
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
    bool print_held_line();
    bool print_line(std::string_view text);
    bool refuse(std::string error);

    ListingRules rules_;
    ListingSink& sink_;
    std::string text_;            ///< the line so far, as printed
    size_t cursor_ = 0;           ///< where the next character goes
    bool line_started_ = false;   ///< a byte of the line was read
    bool held_ = false;           ///< carriage control: text_ waits for lines printed over it
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
