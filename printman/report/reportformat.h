#pragma once

#include <printman/printman_export.h>

#include <cstddef>
#include <string>
#include <string_view>

// The report format: what its readers, its checker and the programs that write reports share.

namespace printman {

/// The start of every marker.
inline constexpr std::string_view marker_lead = "#!?";

/// The start of the lines that begin and end a page.
inline constexpr std::string_view page_top_mark = "#!?PAGETOP";
inline constexpr std::string_view page_end_mark = "#!?PAGEEND";

/// A marker without effect: a tab at a column that does not exist.
inline constexpr std::string_view no_op_marker = "#!?T0,0;";

/// The size of the pieces of a line, newline included, that are searched for the start of a page: a
/// top mark at the start of any piece begins a page, whose text starts after that piece.
inline constexpr size_t line_piece_size = 49;

/// The size of the buffer for one line, its newline and a terminating zero byte.
inline constexpr size_t line_buffer_size = 512;

/// The longest line that is read as one line, in bytes without its newline.
inline constexpr size_t max_line_bytes = line_buffer_size - 2;

/// Limits of the page size; a top line beyond them counts as stating none.
inline constexpr long max_page_columns = 32767;
inline constexpr long max_page_lines = 32767;
inline constexpr long max_page_cells = 64L * 1024 * 1024;

/// Columns and lines of a report's pages; both are 0 until they are known.
struct PageGeometry {
    int columns = 0;
    int lines = 0;

    bool known() const { return columns != 0 && lines != 0; }
    bool operator==(const PageGeometry&) const = default;
};

/// The page size that a top line states.
struct TopLine {
    enum Kind {
        no_geometry,  ///< the line states no size
        out_of_range, ///< a number is beyond the limits
        no_lines,     ///< 0 lines
        valid
    };

    Kind kind = no_geometry;
    long columns = 0; ///< as stated, whatever the kind
    long lines = 0;

    /// The size; unknown unless it is valid.
    PageGeometry geometry() const {
        if (kind != valid)
            return {};
        return {static_cast<int>(columns), static_cast<int>(lines)};
    }
};

/// Reads the geometry from a line that starts with page_top_mark: columns, a comma, lines, each as
/// base-10 strtol reads it. One byte of any value separates the mark from the columns.
///
/// @param line ends at its first zero byte, if it has one
PRINTMAN_EXPORT TopLine parse_top_line(std::string_view line);

/// The line that begins a page of this size, without its newline.
PRINTMAN_EXPORT std::string page_top_line(const PageGeometry& geometry);

} // namespace printman
