#pragma once

#include <printman/progress.h>
#include <printman/render/pageunits.h>
#include <printman/report/escapetable.h>
#include <printman/report/pagerows.h>
#include <printman/report/reportbuffer.h>
#include <printman/result.h>

#include <QFont>

#include <functional>

class QPagedPaintDevice;
class QPainter;

namespace printman {

/// A report, and where its pages are loaded to.
struct LoadedReport {
    ReportBuffer& report;
    EscapeTable& fields;
    PageRows& rows;
};

/// How often and in which order pages are printed.
struct PrintedCopies {
    int copies = 1;
    bool collate = true; ///< the whole report again and again, not page by page

    /// Pages that come out of so many of the report's.
    int pages_of(int pages) const;
};

/// Paints a whole report on a device of pages. The last page is loaded afterwards.
class ReportPainter {
public:
    /// @param device that @p painter paints on
    /// @param control hears of each printed page
    ReportPainter(LoadedReport source, QPagedPaintDevice& device, QPainter& painter,
                  JobControl& control);

    /// What to do before each page; it may turn the report's pages, which then are turned back.
    std::function<void()> before_page;

    /// Whether someone has ended the device's job.
    std::function<bool()> is_aborted;

    /// Pages that paint_text() has to print in all, for the job control.
    int text_pages = 0;

    /// Paints every page in @p font, and a copy of @p units decides where; its margins count as far
    /// as they leave room on the page. On failure the device's job is to be aborted.
    Result paint_pages(const QFont& font, PageUnits units, PrintedCopies printed);

    /// Paints the lines of a text file in @p painter's font from the page's top left on, the first
    /// line's foot at its edge; after @p page_lines lines, if that is not 0, comes another page,
    /// also after the last.
    Result paint_text(const char* file, int page_lines);

private:
    Result paint_page(int page, bool is_first);
    Result next_page();
    Result report_page();
    bool load(int page);
    bool aborted() const { return control_.is_canceled() || (is_aborted && is_aborted()); }

    LoadedReport source_;
    QPagedPaintDevice& device_;
    QPainter& painter_;
    JobControl& control_;
    PageUnits units_;
    int loaded_page_ = 0;
    unsigned loads_ = 0;
    int done_ = 0;
    int total_ = 0;
};

} // namespace printman
