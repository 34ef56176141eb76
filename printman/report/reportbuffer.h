#pragma once

#include <printman/pagerequest.h>
#include <printman/report/escapetable.h>

#include <array>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace printman {

/// Limits of a page's geometry; beyond them it counts as missing.
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

/// Appends to @p offsets where the text of every page in the file starts: the position behind the
/// top line, or behind its first 49 bytes when it is longer. Inside a line a top mark counts at
/// every 49th byte from the line's start, and nowhere else.
///
/// @param fd         an open file at its start
/// @param block_size bytes to read at a time, 1 or more
/// @return 0, or the errno of a failed read; @p offsets may then hold some of the places
///
/// Cost: one pass over the file, whatever its lines look like.
int find_pages(int fd, size_t block_size, std::vector<long>& offsets);

/// A report in its file: how pages are added, announced and found, and how one is read into cells.
///
/// The file holds lines. "#!?PAGETOP" starts a page and "#!?PAGEEND" ends it; the first top line
/// carries the geometry, "#!?PAGETOP 132,66". The file is open only while one operation lasts, so
/// it may change, shrink or disappear between two of them; each then fails by its result.
///
/// Memory: 8 to 16 bytes a page for the index, and one page's cells.
class ReportBuffer {
public:
    ReportBuffer();
    ~ReportBuffer();
    ReportBuffer(const ReportBuffer&) = delete;
    ReportBuffer& operator=(const ReportBuffer&) = delete;

    /// Names the report file, at most 255 bytes; a longer name is refused and the old one stays.
    bool set_file_name(const std::string& name);
    const std::string& file_name() const { return file_name_; }

    /// Opens the file with an fopen @p mode; 0, or -1 for a null or empty mode or a failed open.
    /// A stream that is still open is closed first.
    int open(const char* mode);

    /// Closes the stream that open() opened: the result of fclose, EOF when none is open.
    int close();

    /// Appends @p size bytes, delimiter lines included.
    ///
    /// @return false when @p data is null or @p size negative, or the file cannot be opened or
    ///         written whole; what was there before stays as it was in the first three cases
    bool add_page(const char* data, int size);

    /// Reads the geometry from the first top line that stands in the file. A file without one, or
    /// with one that has no comma or says absurd numbers, leaves the geometry as it was.
    ///
    /// @return 0, or -1 when the file cannot be opened or read, or is no regular file
    int read_geometry();

    /// Drops the cells of an earlier call together with the geometry and the page count, reads the
    /// geometry anew, and when it is known makes the cells and the escape table and indexes the
    /// pages. The index is added to, not replaced: every further call repeats the same pages behind
    /// those already known.
    ///
    /// @return -1 when the file cannot be read, 1 when the top line says 0 lines, 0 otherwise
    int init(EscapeTable& fields);

    /// Adds the place of every page in the file to the index. Cost: one pass over the file.
    ///
    /// @return 0, or -1 when the file cannot be opened or read, or is no regular file, and the
    /// index
    ///         stays as it was
    int index_pages();

    /// Forgets the places of all pages. The page count stays until the next indexing.
    void clear_index() { offsets_.clear(); }

    int page_count() const { return page_count_; }
    int current_page() const { return current_page_; }
    const PageGeometry& geometry() const { return geometry_; }

    /// Whether @p request would be allowed now.
    bool allows(int request) const;

    /// Turns to the page that @p request asks for (1 to 4) and reads it into @p cells, cutting what
    /// does not fit.
    ///
    /// @param cells  zero-filled, then receives line r from columns x r on; a line longer than the
    ///               page is wide runs on into the next line's cells
    /// @param fields cleared, then receives the page's markers
    /// @return false when the geometry is not known, the request is refused or asks for a page that
    ///         the index does not have (the current page then stays), or the file cannot be read or
    ///         ends before the page (the current page has then changed)
    bool read_page(int request, std::span<char> cells, EscapeTable& fields);

    /// The same into the buffer's own cells. What stands behind the last cell is cut here too, but
    /// the markers in it count.
    bool read_page(int request, EscapeTable& fields);

    /// Turns to page number @p page, from 1, without walking there, and reads it into the buffer's
    /// own cells.
    ///
    /// @return false when there is no such page or it cannot be read; the current page then stays
    bool read_page_number(int page, EscapeTable& fields);

    /// Whether the file is now shorter than it was when its pages were indexed last.
    bool has_shrunk() const;

    /// The cells of the page read last: columns x lines bytes, row by row, 0 for an empty cell.
    std::span<const char> cells() const { return cells_; }

    /// The line read last: 512 bytes, its newline replaced by a zero byte.
    std::span<const char> line() const { return line_; }

private:
    enum class Overrun { ends_line, is_skipped };

    int read_geometry_numbers(long& columns, long& lines) const;
    int page_of(int request) const;
    bool turn_to(int page);
    bool read(int page, std::span<char> cells, EscapeTable& fields, Overrun overrun);
    bool read_lines(std::FILE* file, std::span<char> cells, EscapeTable& fields, Overrun overrun);
    void place_line(int row, int length, std::span<char> cells, EscapeTable& fields,
                    Overrun overrun) const;

    std::string file_name_;
    std::FILE* stream_ = nullptr;
    std::vector<long> offsets_;
    long indexed_size_ = 0; ///< bytes in the file when it was indexed last
    int page_count_ = 0;
    int current_page_ = 1;
    PageGeometry geometry_;
    std::vector<char> cells_;
    std::array<char, 512> line_{};
};

} // namespace printman
