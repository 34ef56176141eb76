#pragma once

#include <printman/pagerequest.h>
#include <printman/report/escapetable.h>
#include <printman/report/reportformat.h>

#include <array>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace printman {

/// A report in its file: adds pages to it, finds them, and reads them into cells.
///
/// The file is open only while an operation lasts, so it may change, shrink or disappear between
/// two of them; the next one then fails and says so by its result.
///
/// Memory: 8 to 16 bytes a page for the index, and one page's cells.
class ReportBuffer {
public:
    ReportBuffer();
    ~ReportBuffer();
    ReportBuffer(const ReportBuffer&) = delete;
    ReportBuffer& operator=(const ReportBuffer&) = delete;

    /// Sets the report file's name, at most 255 bytes; a longer one is refused, and the old one
    /// stays.
    bool set_file_name(const std::string& name);
    const std::string& file_name() const { return file_name_; }

    /// Opens the file with an fopen @p mode, after closing a stream that is still open.
    ///
    /// @return 0; -1 for a null or empty mode or when the file cannot be opened
    int open(const char* mode);

    /// Closes the stream that open() opened.
    ///
    /// @return the result of fclose, or EOF when none is open
    int close();

    /// Appends @p size bytes: a page with its top and end lines.
    ///
    /// @return false, with the file unchanged, when @p data is null, @p size is negative, or the
    ///         file cannot be opened; also when not all bytes could be written
    bool add_page(const char* data, int size);

    /// Reads the geometry from the file's first top line. Where there is none, or none that states
    /// a valid size, the geometry stays as it was.
    ///
    /// @return 0; -1 when the file cannot be opened or read, or is not a regular file
    int read_geometry();

    /// Discards the cells, geometry and page count of an earlier call and reads the geometry again.
    /// When it is known, allocates the cells and the escape table and indexes the pages. The index
    /// is extended, not replaced: each further call appends the same pages once more.
    ///
    /// @return -1 when the file cannot be read, 1 when the top line states 0 lines, 0 otherwise
    int init(EscapeTable& fields);

    /// Adds the position of every page in the file to the index. Cost: one pass over the file.
    ///
    /// @return 0; -1 when the file cannot be opened or read, or is not a regular file; the index
    ///         then stays as it was
    int index_pages();

    /// Empties the index. The page count stays until the next indexing.
    void clear_index() { offsets_.clear(); }

    int page_count() const { return page_count_; }
    int current_page() const { return current_page_; }
    const PageGeometry& geometry() const { return geometry_; }

    /// Whether @p request is allowed now.
    bool allows(int request) const;

    /// Turns to the page that @p request asks for (1 to 4) and reads it into @p cells. What does
    /// not fit is cut.
    ///
    /// @param cells  zero-filled, then receives line r at index columns x r; a line longer than the
    ///               page is wide runs on into the next line's cells
    /// @param fields cleared, then receives the page's markers
    /// @return false without changing the current page when the geometry is not known, the request
    ///         is refused, or the page is not in the index; false on the new page when the file
    ///         cannot be read or ends before that page
    bool read_page(int request, std::span<char> cells, EscapeTable& fields);

    /// The same into the buffer's own cells. Text beyond the last cell is cut here too, but markers
    /// in it count.
    bool read_page(int request, EscapeTable& fields);

    /// Turns directly to page @p page, counted from 1, and reads it into the buffer's own cells.
    ///
    /// @return false when there is no such page or it cannot be read; the current page then stays
    bool read_page_number(int page, EscapeTable& fields);

    /// Whether the file is shorter than when its pages were last indexed.
    bool has_shrunk() const;

    /// The cells of the last page read: columns x lines bytes, row by row, 0 for an empty cell.
    std::span<const char> cells() const { return cells_; }

    /// The buffer with the last line read, its newline replaced by a zero byte.
    std::span<const char> line() const { return line_; }

private:
    enum class Overrun { ends_line, is_skipped };

    bool read_first_top_line(TopLine& top) const;
    int page_of(int request) const;
    bool turn_to(int page);
    bool read(int page, std::span<char> cells, EscapeTable& fields, Overrun overrun);
    bool read_lines(std::FILE* file, std::span<char> cells, EscapeTable& fields, Overrun overrun);
    void place_line(int row, int length, std::span<char> cells, EscapeTable& fields,
                    Overrun overrun) const;

    std::string file_name_;
    std::FILE* stream_ = nullptr;
    std::vector<long> offsets_;
    long indexed_size_ = 0; ///< bytes in the file when it was last indexed
    int page_count_ = 0;
    int current_page_ = 1;
    PageGeometry geometry_;
    std::vector<char> cells_;
    std::array<char, line_buffer_size> line_{};
};

} // namespace printman
