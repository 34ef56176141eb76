#pragma once

#include <printman/progress.h>
#include <printman/render/pageunits.h>
#include <printman/report/escapetable.h>
#include <printman/report/pagerows.h>
#include <printman/report/reportbuffer.h>

#include <QFont>
#include <QString>

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
    ReportPainter(LoadedReport source, QPagedPaintDevice& device, QPainter& painter);

    /// What to do before each page; it may turn the report's pages, which then are turned back.
    std::function<void()> before_page;

    /// Whether someone has ended the job.
    std::function<bool()> is_aborted;

    /// Called after each printed page.
    PrintmanProgress progress;

    /// Pages that paint_text() has to print in all, for the progress function.
    int text_pages = 0;

    /// Set when the progress function has stopped the job.
    bool is_stopped = false;

    /// Paints every page in @p font, and a copy of @p units decides where; its margins count as far
    /// as they leave room on the page.
    ///
    /// @return empty, or why not all was painted; the device's job is then to be aborted
    QString paint_pages(const QFont& font, PageUnits units, PrintedCopies printed);

    /// Paints the lines of a text file in @p painter's font from the page's top left on, the first
    /// line's foot at its edge; after @p page_lines lines, if that is not 0, comes another page,
    /// also after the last.
    ///
    /// @return empty, or why not all was painted
    QString paint_text(const char* file, int page_lines);

private:
    QString paint_page(int page, bool is_first);
    QString next_page();
    QString tell_progress();
    bool load(int page);
    bool aborted() const { return is_aborted && is_aborted(); }

    LoadedReport source_;
    QPagedPaintDevice& device_;
    QPainter& painter_;
    PageUnits units_;
    int loaded_page_ = 0;
    unsigned loads_ = 0;
    int done_ = 0;
    int total_ = 0;
};

} // namespace printman
