#pragma once

#include <printman/core/printdest.h>
#include <printman/core/progress.h>
#include <printman/core/stringitem.h>
#include <printman/core/text.h>
#include <printman/toolkit/export.h>
#include <printman/toolkit/qvaluelist.h>

#include <QObject>
#include <QStringList>

#include <memory>

class QPainter;
class QWidget;

/// The print manager: the one object through which a host shows, prints and exports a report.
///
/// Order of calls:
/// 1. construct, with a QApplication (or, for the command line, a QGuiApplication) in place;
/// 2. either init_printman(), then add_rpt_page() for every page and init_scr_buffer(), or
///    init_printman(path) on a report file that the host wrote itself;
/// 3. get_rpt_page(1), then get_rpt_page(2) until it answers 0; after each, paint the page with
///    set_logical_unit() and print_page(), on any paint device;
/// 4. destroy.
///
/// A page request is 0 the current page, 1 the first, 2 the next, 3 the previous, 4 the last.
///
/// Everything runs on the GUI thread. Nothing throws: failures are results, as each function says,
/// and a call whose preconditions are missing returns without effect. The report file is never
/// removed and is open only while a call lasts. Memory grows with the report's length by 8 to 16
/// bytes a page.
class PRINTMAN_EXPORT CPrintMan : public QObject {
    Q_OBJECT

public:
    CPrintMan();
    ~CPrintMan() override;

    /// A file that the destructor removes when remove_on_destroy is not 0. The host sets both.
    QString remove_file;
    int remove_on_destroy = 0;

    /// Makes the printer and chooses a fresh report file name, "rpt" and a number, in the directory
    /// that the setting TMPDIR names, else in the current directory. The first add_rpt_page()
    /// creates the file.
    ///
    /// @return the length of that name, or -1 when it does not fit 255 bytes; the old one then
    /// stays
    int init_printman();

    /// Makes the printer and adopts the report file @p path, at most 255 bytes, and indexes it.
    ///
    /// @return the result of init_scr_buffer(0, 0), or -1 for a null or too long path; the report
    ///         then stays as it was
    int init_printman(const char* path);

    /// Opens the report file with an fopen @p mode: 0, or -1 for a null or empty mode or on
    /// failure.
    int open_rpt_buffer(const char* mode);

    /// Closes it again: the result of fclose, EOF when it is not open.
    int close_rpt_buffer();

    /// Appends @p size bytes, the page's delimiter lines included, to the report file. Whether that
    /// succeeded is what last_job_ok() says.
    void add_rpt_page(const char* data, int size);

    /// Reads the page geometry from the report's first top line; -1 when the file cannot be opened,
    /// else 0. Where it says none, the geometry stays.
    int get_scr_size();

    /// The pixel size of a page: the cell sizes of init_scr_buffer() times columns and lines.
    void get_scr_size(int* width, int* height);

    /// Reads the geometry, makes the page's cells and indexes the pages. Every further call adds
    /// the same pages to the index again; only init_printman() empties it. Cost: one pass over the
    /// file.
    ///
    /// @param cell_width,cell_height a cell in pixels, for get_scr_size(int*, int*)
    /// @return -1 when the file cannot be opened, 1 when it says pages of 0 lines, else 0, also
    /// when
    ///         it has no geometry
    int init_scr_buffer(int cell_width, int cell_height);

    /// Adds the pages of the file to the index: 0, or -1 when it cannot be read.
    int set_page_loc();

    int get_page_count();

    /// @return 1 when the page request is allowed now, else 0
    int check_rpt_page(int request);

    /// Turns to the page of @p request (1 to 4; 0 is refused) and reads its text into @p buffer,
    /// line r at columns x r. The page's items stay those of the page loaded last.
    ///
    /// @param size bytes in @p buffer; it is zero-filled, and what does not fit is cut
    /// @return 1, or 0 when refused or not readable
    int get_rpt_page(char* buffer, int size, int request);

    /// Saves the report as plain text, after it has indexed it once more: a report that was indexed
    /// before is written again for each time. See write_rpt_text() for a save without that.
    ///
    /// @param parent where a warning is shown when the file cannot be written, unless the progress
    ///               function stopped it; may be null
    /// @return 1, also for a report without geometry, which yields an empty file; 0 on failure, and
    ///         an earlier file is then as it was
    int save_rpt_file(QWidget* parent, const char* path);

    /// Saves the pages as they are indexed now, in the same form as save_rpt_file().
    ///
    /// @return 1; 0 on failure or without a page, and an earlier file is then as it was
    int write_rpt_text(const char* path);

    /// Whether the last operation that wrote a file succeeded, and what went wrong in one line.
    bool last_job_ok() const;
    QString last_job_error() const;

    /// Sets what long operations call after each page; an empty function for none.
    void set_progress(PrintmanProgress progress);

    // The escape fields of the page read last.
    void clear_escape_buffer();
    void free_escape_buffer();

    /// Adds a field to line @p row; a row outside the page is ignored. The four numbers are cut to
    /// 16 bits.
    ///
    /// @param type  1 tab, 2 left, 3 right, 4 centred
    /// @param start 1-based column
    /// @param size  width in cells; of a tab, the target column
    void add_escape_field(int row, int type, int start, int size, int datasize);

    /// Reads the marker whose code letter stands at @p pos of the line read last, and adds it to
    /// line @p row.
    ///
    /// @param end index of the line's last byte
    /// @return bytes consumed after "#!?"; 0 when it is no marker
    int parse_escape_field(int row, int pos, int end);

    /// The same for a field of @p type, with @p pos behind the code letter; the letter counts.
    int parse_escape_field2(int row, int pos, int end, int type);

    /// Finds the first (@p second 0) or second field of line @p row that starts at the 1-based
    /// @p column; one at the last column is never found. The outputs stay when there is none.
    bool find_escape_field(int row, int column, int second, int* type, int* start, int* size,
                           int* datasize);

    /// Writes the fields of line @p row to standard error.
    void print_escape_field(int row);

    /// Cuts the page read last into items again.
    void load_current_page();
    void free_page_rows();

    /// Appends an item to line @p row; a row outside the page is ignored.
    ///
    /// @param x,y,width,height cell rectangle
    /// @param text  Latin-1
    /// @param align 2 left, 3 right, 4 centred
    void add_stringitem(int row, int x, int y, int width, int height, const char* text, int align);

    /// Turns to the page of @p request and loads its items; 0 keeps the loaded page and answers 1.
    ///
    /// @return 1, or 0 when refused (the page stays) or not readable (the items stay)
    int get_rpt_page(int request);

    /// Measures the painter's font and, unless @p keep or automatic page formatting is off, sets a
    /// window of columns x lines cells and a viewport that fits it, its shape kept, into the top
    /// left of the painter's viewport less the page margins and less @p margin_x, @p margin_y
    /// device pixels at each side.
    ///
    /// @return 0
    int set_logical_unit(QPainter* p, int keep, int margin_x, int margin_y);

    /// Draws an item's text in its cell: 1, or 0 without a painter.
    int print_stringitem(QPainter* p, const StringItem& item);

    /// Draws an item's text in its drawn rectangle: 1, or 0 without a painter.
    int print_histringitem(QPainter* p, const StringItem& item);

    /// Draws the loaded page with the painter's pen and font, and records where each item stands.
    ///
    /// @return 1, or 0 when printing was aborted or there is nothing to paint on
    int print_page(QPainter* p);

    /// Keeps the paper's width and height for printing.
    void set_paper_size(int width, int height);

    /// The names of the zoom table, "50%" to "300%".
    QStringList zoom_ratio_names();

    /// @return the ratio in percent of the zoom table's row of that exact name, 0 for any other
    int zoom_ratio_id(const char* name);

    /// Copies the whole record in.
    void set_print_dest(const PrintDest& dest);
    PrintDest* get_print_dest();

    /// Does nothing.
    ///
    /// @return 0
    int show_print_dest(const PrintDest& dest);

    /// Does nothing: a hook that hosts call.
    void printman_error(const char* message);

    // What a host may read.
    int get_cur_page() const;
    int get_columns() const;
    int get_lines() const;

    /// The items of the loaded page's line @p line, from 0; an empty list for any other.
    const QValueList<StringItem>& page_row(int line) const;

public slots:
    /// Aborts the printer's job: print_page() then paints nothing until the job has ended.
    void printing_canceled();

private:
    class Private;
    std::unique_ptr<Private> d;
};
