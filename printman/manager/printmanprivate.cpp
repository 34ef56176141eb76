#include <printman/export/pagehtml.h>
#include <printman/manager/printmanprivate.h>
#include <printman/render/itempainter.h>
#include <printman/report/reportfailure.h>
#include <printman/toolkit/pagesizes.h>

#include <QCoreApplication>
#include <QPainter>
#include <QPointer>
#include <QWidget>

using namespace printman;

namespace {

constexpr int letter_page_size = 2;

} // namespace

void CPrintMan::Private::make_printer() {
    // Qt refuses to make a printer without an application object.
    if (!QCoreApplication::instance())
        return;
    printer = std::make_shared<PsPrinter>();
    printer->setPageSize(page_size_of(letter_page_size));
}

Result CPrintMan::Private::check_printer() const {
    return printer ? Result() : Result::failure(QStringLiteral("there is no printer yet"));
}

bool CPrintMan::Private::is_printing() const {
    const QPrinter::PrinterState state = printer->printerState();
    return state == QPrinter::Active || state == QPrinter::Aborted;
}

bool CPrintMan::Private::printing_aborted() const {
    return printer && printer->printerState() == QPrinter::Aborted;
}

/// @return false when the name is too long, or a job works with another report
bool CPrintMan::Private::start_report(const std::string& name) {
    if (jobs > 0 || !report.set_file_name(name))
        return false;
    make_printer();
    report.clear_index();
    // Nothing of an earlier report is selected or painted as a page of this one.
    rows.release();
    highlights.forget();
    return true;
}

int CPrintMan::Private::init_buffer(int new_cell_width, int new_cell_height) {
    const int result = report.init(fields);
    cell_width = new_cell_width;
    cell_height = new_cell_height;
    return result;
}

bool CPrintMan::Private::load_page(int request) {
    if (!report.geometry().known())
        return false;
    if (request == page_current)
        return true;
    if (!report.read_page(request, fields))
        return false;
    load_rows();
    return true;
}

void CPrintMan::Private::load_rows() {
    const PageGeometry& page = report.geometry();
    if (page.known())
        rows.load(report.cells(), page.columns, page.lines, fields);
}

void CPrintMan::Private::add_marker(int row, const MarkerParse& parse) {
    if (parse.field)
        fields.add(row, *parse.field);
}

bool CPrintMan::Private::show_loaded_page(bool is_another) {
    if (is_another || !screen.shows(rows))
        highlights.forget();
    QPainter p;
    const bool done = screen.begin_page(p, report.geometry(), rows);
    if (done) {
        if (!printing_aborted())
            ItemPainter(p, units).draw_page(rows.rows());
        highlights.repaint(p);
        p.end();
    }
    screen.show_image();
    return done;
}

/// Indexes the report once more and saves it, without the last column of full lines.
Result CPrintMan::Private::save_report(QWidget* parent, const char* path) {
    // The progress function may close it.
    const QPointer<QWidget> window = parent;
    OutputFile out;
    Result saved = out.open(path);
    if (saved.ok()) {
        if (window)
            window->setCursor(Qt::WaitCursor);
        init_buffer(0, 0);
        saved = write_report_text(report, fields, out, LastColumn::dropped, *control);
        if (window)
            window->setCursor(Qt::ArrowCursor);
    }
    return saved;
}

/// Saves the pages as they are indexed.
Result CPrintMan::Private::write_report(const char* path) {
    if (!path || !*path)
        return Result::failure(QStringLiteral("no file name"));
    if (report.page_count() == 0)
        return no_pages();
    OutputFile out;
    Result opened = out.open(path);
    if (!opened.ok())
        return opened;
    return write_report_text(report, fields, out, LastColumn::kept, *control);
}

/// Appends the pages of the report to @p html.
Result CPrintMan::Private::append_pages(QString& html) {
    const int total = report.page_count();
    int done = 0;
    while (done < total && load_page(done == 0 ? page_first : page_next)) {
        append_page_html(html, rows.rows());
        ++done;
        if (!control->pages_done(done, total))
            return Result::canceled();
    }
    if (done < total)
        return unreadable_page(done + 1);
    return total > 0 ? check_still_whole(report) : Result();
}

int CPrintMan::Private::note(const Result& result) {
    last_job = result;
    return result.ok();
}
