#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace examples {

/// The Latin-1 bytes of a text written in UTF-8; characters beyond U+00FF become '?'.
std::string latin1(std::string_view utf8);

/// A whole number with commas between its thousands, and cents as "1,234.50"; negative amounts end
/// with a minus, as ledgers print them.
std::string with_commas(long number);
std::string money(long cents);

/// One line of a report page, put together from left to right. Columns are counted from 1; blanks
/// fill the cells between what is put, so that the plain text is aligned as the fields are.
class Line {
public:
    /// Plain text from @p column on.
    Line& text(int column, std::string_view text);

    /// A field of @p size cells: its marker, and @p text aligned in its cells.
    Line& left(int column, int size, std::string_view text);
    Line& right(int column, int size, std::string_view text);
    Line& centre(int column, int size, std::string_view text);

    /// The text stops at @p column and goes on at @p target: the marker, and blank cells between.
    Line& tab(int column, int target);

    /// @p count times @p c from @p column on.
    Line& rule(int column, int count, char c = '-');

    const std::string& bytes() const { return bytes_; }
    int cells() const { return cells_; }

private:
    void pad_to(int column);
    void field(char code, int column, int size, std::string_view text, int indent);

    std::string bytes_;
    int cells_ = 0;
};

/// A report that is written to standard output, page by page.
class Report {
public:
    Report(int columns, int lines) : columns_(columns), lines_(lines) {}

    /// Ends the page that is open and begins the next.
    void begin_page();
    void add(const Line& line);
    void blank(int count = 1);
    void end();

    /// Lines that the open page still takes.
    int room() const { return lines_ - used_; }

    /// Whether everything so far fits the pages.
    bool ok() const { return ok_; }

private:
    void write(const std::string& line);

    int columns_;
    int lines_;
    int used_ = 0;
    bool open_ = false;
    bool ok_ = true;
};

} // namespace examples
