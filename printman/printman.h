#pragma once

#include <printman/pagerequest.h>
#include <printman/printdest.h>
#include <printman/printer/prtsetup.h>
#include <printman/printman_export.h>
#include <printman/progress.h>
#include <printman/result.h>
#include <printman/stringitem.h>
#include <printman/text.h>
#include <printman/toolkit/qvaluelist.h>

#include <QObject>
#include <QSize>
#include <QStringList>

#include <list>
#include <memory>

class QColor;
class QFont;
class QPainter;
class QPixmap;
class QPoint;
class QRect;
class QWidget;

/// The print manager: the one object through which a host shows, prints and exports a report. Its
/// functions are grouped below.
///
/// **Order of calls**
/// 1. Construct, with a QApplication (or, for the command line, a QGuiApplication) in place.
/// 2. Either init_printman(), then add_rpt_page() for every page and init_scr_buffer(), or
///    init_printman(path) on a report file that the host wrote itself.
/// 3. To show it: load_screenfont(), init_rpt_view() in a window of the host, show_rpt_page(1). The
///    screen widget's mouse and keys then select, search and copy by themselves.
/// 4. To paint it on any paint device: get_rpt_page(1), then get_rpt_page(2) until it answers 0;
///    after each, set_logical_unit() and print_page().
/// 5. To print it or to make a PDF of it: one of the jobs of the groups Printing and PDF.
/// 6. Destroy, before or after the window.
///
/// **Page requests** are the numbers of printman::PageRequest: 0 the current page, 1 the first, 2
/// the next, 3 the previous, 4 the last.
///
/// **Results.** Nothing throws. A function answers 1 when it has done what it says and 0 otherwise,
/// unless it says something else, and what it would have changed then stays. A call without what it
/// needs (a report, a view, a printer, a painter) does nothing and answers 0. Operations that write
/// a file, print, paste, or copy the whole report also keep how they ended, see last_job(). A file
/// that the host or the user named is as it was when they fail.
///
/// **Jobs** print the whole report or make a PDF of it. They answer 0 also when the user cancels
/// one of their dialogs. The last page is loaded afterwards, and none of them shows a page: where
/// there is a view, call show_rpt_page() next. The report must stay until a job has ended, and
/// init_printman() is refused meanwhile. The manager may go while a dialog is open or the host's
/// events are handled, the parent of the dialogs while one of them is open: that ends the job.
///
/// **Tools and fixed names.** PDF files are made by ps2pdf and pdftk, and printed by lpr, which are
/// found on PATH. What goes wrong with them is also told on standard error. Their files have fixed
/// names in /tmp, which processes use in turn: a job waits up to three minutes for another one. A
/// progress function that answers false while a tool works ends it, and with it the job.
///
/// **Page formatting** fits the report's columns and lines into the page. Turned off, a page is
/// painted at the font's own size. What turns it off does so from then on.
///
/// **Threads and lifetime.** Everything runs on the GUI thread. The report file is never removed
/// and is open only while a call lasts. Memory grows with the report's length by 8 to 16 bytes a
/// page. Pointers and references that are answered stay valid until the next call that changes what
/// they show, or the end of the manager.
class PRINTMAN_EXPORT CPrintMan : public QObject {
    Q_OBJECT

public:
    /// @name What the host sets
    /// The texts and switches that the functions below look at.
    /// @{

    /// A file that the destructor removes when remove_on_destroy is not 0.
    QString remove_file;
    int remove_on_destroy = 0;

    /// The station's key in the printer id file, for get_prt_id(char*, int); it need not be
    /// terminated.
    char prt_key[128] = {};

    /// Whether printing goes through a PDF file. Printing that asks the user clears it.
    bool pdf_mode = false;

    /// A PDF that is laid behind every page of a PDF; empty for none.
    QString form_file;

    /// The title of the documents that print jobs make, such as a PDF's; empty for none. Their
    /// creator is the application, by its name and version.
    QString document_title;

    /// Whether a printer that gets plain text gets each page once, as write_rpt_text() saves them.
    /// Otherwise it gets what save_rpt_file() saves: every page as often as the report was indexed.
    bool text_once = false;

    /// The printer that print_rpt_pdffile() takes font and sheet from, and its setup file.
    QString report_printer_id;
    QString report_setup_file;

    /// Sets what long operations call after each page; an empty function for none.
    void set_progress(printman::Progress progress);

    /// @}
    /// @name Lifetime
    /// @{

    CPrintMan();
    ~CPrintMan() override;

    /// Makes the printer and chooses a fresh report file name, "rpt" and a number, in the directory
    /// that the setting TMPDIR names, else in the current directory. The first add_rpt_page()
    /// creates the file.
    ///
    /// @return the length of that name; -1 when it does not fit 255 bytes, and the old name stays
    int init_printman();

    /// Makes the printer and adopts the report file @p path, at most 255 bytes, and indexes it.
    ///
    /// @return the result of init_scr_buffer(0, 0), or -1 for a null or too long path; the report
    ///         then stays as it was
    int init_printman(const char* path);

    /// How the last operation ended that wrote a file, printed, pasted, or copied the whole report.
    /// One that the user canceled in a dialog is no failure: it has no error.
    const printman::Result& last_job() const;

    /// Whether it has no error, and the error in one line.
    bool last_job_ok() const;
    QString last_job_error() const;

    /// What the operation does that calls the progress function.
    printman::JobStage job_stage() const;

    /// Does nothing: a hook that hosts call.
    void printman_error(const char* message);

    /// @}
    /// @name Report file
    /// @{

    /// Opens the report file with an fopen @p mode: 0, or -1 for a null or empty mode or on
    /// failure.
    int open_rpt_buffer(const char* mode);

    /// Closes it again: the result of fclose, EOF when it is not open.
    int close_rpt_buffer();

    /// Appends @p size bytes, the page's delimiter lines included, to the report file. Whether that
    /// succeeded is what last_job() says.
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
    /// @return -1 when the file cannot be opened, 1 when it says pages of 0 lines, else 0; a file
    ///         without geometry is no failure
    int init_scr_buffer(int cell_width, int cell_height);

    /// Adds the pages of the file to the index: 0, or -1 when it cannot be read.
    int set_page_loc();

    /// Saves the report as plain text, after it has indexed it once more: a report that was indexed
    /// before is written again for each time. Of a line that fills the page's width the last column
    /// is left out. See write_rpt_text() for a save that does neither.
    ///
    /// @param parent where a warning is shown when the file cannot be written, unless the progress
    ///               function stopped it; may be null
    /// @return 1, also for a report without geometry, which yields an empty file; 0 on failure
    int save_rpt_file(QWidget* parent, const char* path);

    /// Saves every character of the pages as they are indexed now, a line of text for each line.
    ///
    /// @return 1; 0 on failure or without a page
    int write_rpt_text(const char* path);

    /// @}
    /// @name Pages
    /// @{

    int get_page_count();
    int get_cur_page() const;
    int get_columns() const;
    int get_lines() const;

    /// @return 1 when the page request is allowed now, else 0
    int check_rpt_page(int request);

    /// Turns to the page of @p request and loads its items; 0 keeps the loaded page and answers 1.
    ///
    /// @return 1, or 0 when refused (the page stays) or not readable (the items stay)
    int get_rpt_page(int request);

    /// Turns to the page of @p request (1 to 4; 0 is refused) and reads its text into @p buffer,
    /// line r at columns x r. The page's items stay those of the page loaded last.
    ///
    /// @param size bytes in @p buffer; it is zero-filled, and what does not fit is cut
    /// @return 1, or 0 when refused or not readable
    int get_rpt_page(char* buffer, int size, int request);

    /// Cuts the page read last into items again.
    void load_current_page();
    void free_page_rows();

    /// The items of the loaded page's line @p line, from 0; an empty list for any other.
    const QValueList<StringItem>& page_row(int line) const;

    /// Appends an item to line @p row; a row outside the page is ignored.
    ///
    /// @param x,y,width,height cell rectangle
    /// @param text  Latin-1
    /// @param align 2 left, 3 right, 4 centred
    void add_stringitem(int row, int x, int y, int width, int height, const char* text, int align);

    /// @}
    /// @name Markers
    /// The escape fields of the page read last.
    /// @{

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

    /// @}
    /// @name Painting
    /// @{

    /// Measures the painter's font and, unless @p keep or page formatting is off, sets a window of
    /// columns x lines cells and a viewport that fits it, its shape kept, into the top left of the
    /// painter's viewport less the page margins and less @p margin_x, @p margin_y device pixels at
    /// each side.
    ///
    /// @return 0
    int set_logical_unit(QPainter* p, int keep, int margin_x, int margin_y);

    /// Draws an item's text in its cell.
    int print_stringitem(QPainter* p, const StringItem& item);

    /// Draws an item's text in its drawn rectangle.
    int print_histringitem(QPainter* p, const StringItem& item);

    /// Draws the loaded page with the painter's pen and font, and records where each item stands.
    /// Where the page is on screen, too, selection then needs it shown once more.
    ///
    /// @return 1, or 0 when printing was aborted or there is nothing to paint on
    int print_page(QPainter* p);

    /// Keeps the paper's width and height for printing.
    void set_paper_size(int width, int height);

    /// @}
    /// @name Screen
    /// Sizes and places are in logical pixels.
    /// @{

    /// Makes the view on first use, a scroll view with the screen widget in it, and lays the page
    /// out in the current font, zoom and mode (preview or not); nothing is painted yet. Outside
    /// preview the sheet has the shape of the printer's paper and holds the whole text, and the
    /// font has its size times the zoom; in preview the whole page fits the view. The widgets
    /// belong to @p parent, and go with it; their names are "report_view" and "report_screen".
    ///
    /// @param parent where the view is made; null keeps that of an earlier call, as do
    /// @param size   the size of the view, and
    /// @param font   the font of the page at 100 %
    /// @return 1, or 0 without page geometry, or without a view and anything to make it for
    int init_rpt_view(QWidget* parent, const QSize* size, const QFont* font);

    /// Reads the colors, turns to the page of @p request, paints it and shows it at once. Another
    /// page (@p request 1 to 4) takes the highlights away.
    ///
    /// @return 1; 0 when the request is refused or the page cannot be read (what is shown then
    ///         stays), or when no image can be made for that zoom (nothing is shown)
    int show_rpt_page(int request);

    /// Turns to page number @p page, from 1, without walking there, loads its items, and shows it
    /// where there is a view.
    ///
    /// @return 1; 0 when there is no such page or it cannot be read (everything then stays), or as
    ///         show_rpt_page() when it cannot be shown
    int goto_rpt_page(int page);

    /// Shows the page's image again: on the screen widget at once, or on @p widget when that is
    /// within its paint event.
    void repaint_rpt_page(QWidget* widget);

    /// Resizes the view; in preview the page is fitted to the new size.
    void resize(const QSize& size);

    /// Scrolls so that the place @p p of the screen widget is seen, with 50 pixels about it.
    void scroll_rpt_view(const QPoint& p);

    /// Sets whether the page is to be fitted to the view from the next init_rpt_view() on.
    void set_preview(bool preview);

    /// The printer's page in device pixels.
    QSize get_page_size();

    /// The image that the screen widget shows; null before there is one.
    const QPixmap* page_image() const;

    /// Takes the screen font from the settings SCR_FACENAME, SCR_POINTSIZE, SCR_WEIGHT and
    /// SCR_ITALIC, for the next init_rpt_view(); without a face name everything stays.
    void load_screenfont();

    /// Takes the colors from the settings KRV_COLOR_SBG and KRV_COLOR_DBG.
    void load_screencolor();

    /// Lets the user choose the two colors, which are stored in the settings; the next
    /// show_rpt_page() uses them.
    ///
    /// @return 1, or 0 when the user canceled
    int select_screencolor();

    /// The names of the zoom table, "50%" to "300%".
    QStringList zoom_ratio_names();

    /// @return the ratio in percent of the zoom table's row of that exact name, 0 for any other
    int zoom_ratio_id(const char* name);

    /// @}
    /// @name Selection and search
    /// Places are in the logical units in which the page was painted. The measuring calls need a
    /// painter with that font and those units.
    /// @{

    /// The leading run of @p item that is at most @p width wide, one character at least: 1; 0, and
    /// @p out stays, when the whole text fits.
    int item_left(QPainter* painter, const StringItem& item, int width, StringItem& out);

    /// The trailing run, likewise.
    int item_right(QPainter* painter, const StringItem& item, int width, StringItem& out);

    /// The run from @p start over @p width.
    int item_center(QPainter* painter, const StringItem& item, int start, int width,
                    StringItem& out);

    /// The part of @p item under the rectangle @p sel: 1, or 0 when it is not hit.
    ///
    /// @param out a fresh item; a full copy of @p item when all of it is covered
    int get_stringitem(QPainter* painter, const QRect& sel, const StringItem& item,
                       StringItem& out);

    /// The highlights: pieces of the page, in page order or, of a search, in its order.
    const std::list<StringItem>& hilights() const;

    /// Makes the highlights those pieces of the page that a drag from one place of the screen
    /// widget to the other covers. Nothing is painted until show_page_hilights().
    void collect_hilights(const QPoint& from, const QPoint& to);

    /// Paints the highlights, white on black, and the gaps between them when @p merge.
    void show_page_hilights(bool merge);

    /// Restores the page where something was highlighted that is not any more.
    void unshow_page_hilights();

    /// Takes every highlight away.
    void clear_hilights();

    /// Keeps what is drawn at the record's place from being un-shown.
    void keep_hilight(StringItem& rec);

    /// Keeps the gap at @p r from being un-shown.
    void keep_himergerect(QRect& r);

    /// Makes the highlights all places on the page shown where @p text, a regular expression,
    /// matches, in search order; nothing is painted yet. See QRegExp for the syntax. A malformed
    /// expression finds nothing, nor does one that could take seconds.
    ///
    /// @param whole_word only between word boundaries
    /// @return 1, or 0 when nothing is found
    int find_string_item(const QString& text, bool forward, bool case_sensitive, bool whole_word);

    /// Appends the matches in one painted item to the highlights; backward, from right to left.
    ///
    /// @return 1, also when nothing matches; 0 when the item has no text
    int get_stringitems(QPainter* painter, const QString& text, const StringItem& item,
                        bool forward, bool case_sensitive, bool whole_word);

    /// Shows the first highlight alone, the next one, the current one, or none of them: 1, or 0
    /// when there is none; after the last one all are cleared.
    int first_item_hilight();
    int next_item_hilight();
    void show_item_hilight();
    void unshow_item_hilight();

    /// @}
    /// @name Clipboard
    /// What is copied is an HTML document, set as plain text; the report's text stands in it as it
    /// is.
    /// @{

    /// The same as copy_text().
    void save_to_clipboard();

    /// Appends the loaded page to @p html as a table, a row a line and a cell an item.
    ///
    /// @return @p html afterwards
    QString copy_page(QString& html);

    /// Copies every page to the clipboard, a table a page. The last page is loaded afterwards; the
    /// one on screen is not painted again. A page that cannot be read ends the document, and
    /// last_job() says so; when the progress function answers false the clipboard stays.
    /// Cost: memory for the one document.
    void save_allto_clipboard();

    /// @}
    /// @name The loaded page in a file and on paper
    /// @{

    /// Saves the loaded page as plain text, each item at its column. Whether that succeeded is what
    /// last_job() says.
    ///
    /// @param parent    where a warning is shown when the file cannot be written; may be null, and
    ///                  the warning then stands alone. A program without widgets shows none
    /// @param file_name null or empty does nothing
    void save_cur_page(QWidget* parent, const char* file_name);

    /// Prints the loaded page where and in the font that the user chooses in two dialogs. The
    /// setting NOPAGEMAP, yes or no, turns page formatting off or on, from then on. Whether that
    /// succeeded is what last_job() says. While a dialog is open, @p parent and the manager may go,
    /// or init_printman() make another printer: nothing is printed then.
    ///
    /// @param parent of the dialogs; null does nothing
    void print_cur_page(QWidget* parent);

    /// @}
    /// @name Printing
    /// @{

    /// Sets the printer up and starts its job: one copy on the sheet that @p devmode says; an
    /// orientation or paper that is not known stays as it was, and the page range limits nothing.
    /// In PDF mode the output is "/tmp/korvo.ps", which no other process then uses until
    /// create_pdffile() or print_pdf_file() has taken it, else it goes to the spooler.
    ///
    /// @param name of the spooler's queue
    /// @return a painter that the caller ends and deletes; null when the job cannot start
    QPainter* create_printer(const char* name, const DLWDEVMODE& devmode);

    /// The same with the output file @p file, in any mode.
    QPainter* create_printer(const char* name, const DLWDEVMODE& devmode, const QString& file);

    /// The same for a printer that gets plain text: the sheet stays as it was.
    QPainter* create_generic_printer(const char* name);
    QPainter* create_generic_printer(const char* name, const QString& file);

    /// The font that a printer's record says, which the caller deletes. Without a point size it has
    /// 12; a weight outside 0 to 99 is normal.
    QFont* create_font(const FontInfo& info);

    /// Starts another page of the printer's job: false when it takes none.
    bool next_page();

    /// Prints a text file line by line from the page's top left on, in @p painter's font; every
    /// page has as many lines as the report's pages, and another one follows, also after the last.
    ///
    /// @param painter on the printer
    /// @return 1, or 0 when the file cannot be read or the printer takes no further page
    int print_generic_rpt(QWidget* parent, QPainter* painter, const char* file);

    /// A job that prints the report on a printer of the setup file or, without a printer id or in
    /// another mode, as the user chooses in two dialogs, the printer's and the font's. A printer
    /// whose name holds "generic" gets the report as plain text. In PDF mode the PDF is printed by
    /// lpr. The host's events are handled between two pages, so that printing_canceled() can be
    /// called.
    ///
    /// @param parent      of the dialogs; may be null
    /// @param copies      how often; asked of the user where he chooses
    /// @param collate     not 0: the whole report again and again; 0: page by page
    /// @param mode        0 or 5 takes the printer from the setup file
    /// @param no_page_map not 0: page formatting off
    int print_rpt_page(QWidget* parent, const char* printer_id, int copies, int collate, int mode,
                       int no_page_map);

    /// A job that prints the report into a file, without a dialog: PostScript, or in PDF mode a PDF
    /// with form and watermark.
    ///
    /// @param printer_id  null or empty is a failure: nothing is printed, and the setup file stays
    /// @param output_file takes its name when it is complete; where the PDF of a file that was not
    ///                    there before cannot be made, the PostScript is left in it
    /// @param setup_file  has the printer, and is removed, whether it has or not
    int print_serverrpt_page(const char* printer_id, int copies, int collate, int no_page_map,
                             const QString& output_file, const QString& setup_file, const QString&,
                             const QString&);

    /// @}
    /// @name PDF
    /// @{

    /// The PDF of the last create_pdffile() or print_rpt_pdffile(), in the directory that then was
    /// the current one; empty when that ended before a name was chosen. There is no such file when
    /// it failed.
    QString result_pdf_file;

    /// Makes a PDF of "/tmp/korvo.ps" with form and watermark, in a new file in the current
    /// directory, whose name is in result_pdf_file.
    int create_pdffile();

    /// The same, and prints the PDF with lpr on the printer that was set last. A step that fails
    /// does not keep lpr from running: it then prints the PostScript, and the result is 0.
    int print_pdf_file();

    /// The same of the last server job's file, in that file's place.
    int print_serverpdf_file();

    /// A job that makes the PDF get_pdffile_name() in a font that the user chooses, with page
    /// formatting off.
    int save_rpt_pdffile(QWidget* parent);

    /// A job that makes a PDF as create_pdffile() does, in the sheet, margins and font of the
    /// report printer, with page formatting off; without such a printer the user chooses the font,
    /// and a message says when it is not found. A setup file other than the standard one is
    /// removed.
    int print_rpt_pdffile(QWidget* parent);

    /// Describes the watermark of every PDF from then on.
    ///
    /// @param text,family UTF-8 or Latin-1, cut to 79 and 51 bytes; null is empty
    /// @param point_size  1 to 2000; less is 12
    /// @param angle       degrees, counter-clockwise, about the text's top left corner
    /// @param x,y         that corner, in the printer's device units, from its margins
    /// @param in_front    not 0: over the report, not behind it
    void set_watermark_info(const char* text, const char* family, int point_size, int angle,
                            const QColor& color, int x, int y, int in_front);

    /// Makes "/tmp/watermark.pdf", one page on the printer's sheet. The next job removes it.
    int generate_watermark();

    /// @}
    /// @name Destination
    /// Where a report goes: a record of the manager's own, all zero at first.
    /// @{

    /// Copies the whole record in.
    void set_print_dest(const PrintDest& dest);
    PrintDest* get_print_dest();

    /// Does nothing.
    ///
    /// @return 0
    int show_print_dest(const PrintDest& dest);

    /// Lets the user change the record in a dialog; with the screen as destination, the font that
    /// the dialog shows becomes the screen font, as load_screenfont() does it.
    ///
    /// @return 1; 0 when the user cancels, and the record then stays, or the manager goes meanwhile
    int show_print_dest();

    /// @}
    /// @name Printers
    /// The lists that the host hands over, of printers that it defines itself and of local ones. Of
    /// each list the host sets the capacity to exactly the number of its printers and adds them all
    /// before anything walks the list; adding and walking share one place in it.
    /// @{

    /// Makes room for @p n printers, all zero, in place of those before; the place in the list
    /// stays. Nothing changes when @p n is not 1 to 65,536, or when memory is short.
    void set_numwin_printer(int n);
    void set_numunix_printer(int n);

    /// Copies a printer in at the place in the list and moves on; nothing for null or a full list.
    void add_win_printer(const WinPrtSetup* printer);
    void add_unix_printer(const UnixPrtSetup* printer);

    /// Copies the first printer of the list out: 0 for null or a list without room.
    int first_win_printer(WinPrtSetup* printer);
    int first_unix_printer(UnixPrtSetup* printer);

    /// Copies the next printer out, all zero where none was added: 0 for null or at the end.
    int next_win_printer(WinPrtSetup* printer);
    int next_unix_printer(UnixPrtSetup* printer);

    /// Whether there is room for local printers.
    bool is_unix_print();

    /// Looks a printer up in the setup file. An output may be null.
    ///
    /// @param id          compared byte by byte
    /// @param printer_name,font_name,style_name receive at most 128 bytes, terminator included
    /// @param paper_name  receives at most 80 bytes; empty for an unknown paper
    /// @param orientation_name receives "Portrait" or "Landscape", at most 128 bytes; stays for any
    ///                    other orientation
    /// @param page_length,first_line,last_line lines of the default page
    /// @param top,bottom,left,right margins in inches
    /// @param point_size  of the report font
    /// @return 1; 0 when the id is not found, and the outputs then stay
    int find_prt_data(const char* id, char* printer_name, char* paper_name, char* orientation_name,
                      char* font_name, char* style_name, int* use_default_page_length,
                      int* page_length, int* first_line, int* last_line, double* top,
                      double* bottom, double* left, double* right, int* point_size);

    /// Whether the setup file says that the printer has a default page length: 1 or 0.
    int has_local_defpagelen(const char* id);

    /// The page length in the setup file, whatever has_local_defpagelen() answers: 1, or 0 when the
    /// id is not found.
    int get_local_defpagelen(const char* id, int* page_length, int* first_line, int* last_line);

    /// Whether the list of host-defined printers has a page length for this one: 1 or 0. The list
    /// is walked, also with local printers.
    int has_remote_defpagelen(const char* id);

    /// The page length in the list of local printers when there is room for any, else in the list
    /// of host-defined ones, which is walked: 1, or 0 when the id is not found or all three numbers
    /// are 0.
    int get_remote_defpagelen(const char* id, int* page_length, int* first_line, int* last_line);

    /// Appends the ids of the setup file's printers, in file order, to printer_ids(). The file
    /// stays open until the next call or the end of the manager.
    void get_prt_id();

    /// What get_prt_id() has collected.
    const QStringList& printer_ids() const;

    /// Looks up the printer id for prt_key; an empty key answers 0, and @p buffer stays.
    int get_prt_id(char* buffer, int size);

    /// Looks up the printer id for @p key in the printer id file.
    ///
    /// @param buffer zero-filled over @p size bytes, then receives the id, terminated
    /// @return the length of the id as the host's GetPrivateProfileString() answers it; 0 without
    ///         an id, for null, or when the path of the file is longer than 255 bytes
    int get_prt_id(const char* key, char* buffer, int size);

    /// @}

public slots:
    /// Aborts the printer's job: print_page() then paints nothing until the job has ended, a job of
    /// the whole report ends at its next page, and any long operation stops where it would call the
    /// progress function.
    void printing_canceled();

    /// Leaves preview and shows the page at the zoom that was chosen last. The results are those of
    /// show_rpt_page(); a zoom change takes the highlights away.
    int zoomin();

    /// Fits the whole page to the view.
    int zoomout();

    /// Shows the page at the zoom of that name; an unknown name makes it 0 percent, at which the
    /// font keeps its size.
    int zoom_rpt_page(const QString& zoomname);

    // What the screen widget's mouse does: a drag selects, a click takes the selection away.
    void mouse_press(const QPoint& p);
    void mouse_release(const QPoint& p);
    void mouse_move(const QPoint& p);

    /// Asks with the find dialog what to search the page for, and marks all matches or shows the
    /// first or the next one; without a view it does nothing.
    void search_text();

    /// Copies the highlights to the clipboard as a table; without any it stays as it is. Pieces
    /// that are whole items stand in a row a line.
    void copy_text();

    /// Writes the clipboard's text to "printman0001.html" in the current directory and opens it
    /// with the browser command "dlwbrw", without waiting. What went wrong is what last_job() says;
    /// an empty clipboard is warned of.
    ///
    /// SIGCHLD is ignored by the process from then on: its other children's statuses are lost to
    /// it. system() and pclose() answer -1, waitpid() waits and then finds no child, and a QProcess
    /// cannot say how its program ended. A host that needs them sets SIGCHLD again afterwards.
    void paste_text();

private:
    class Private;
    std::shared_ptr<Private> d; ///< a job keeps it until it has ended
};
