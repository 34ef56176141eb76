#include <printman/export/browser.h>
#include <printman/export/pagehtml.h>
#include <printman/manager/printmanprivate.h>
#include <printman/output/jobprinter.h>
#include <printman/output/pageprint.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

// The door's part for the clipboard and for the loaded page on paper.

using namespace printman;

namespace {

/// Null in a program that has no clipboard.
QClipboard* clipboard() {
    const bool has_display = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return has_display ? QGuiApplication::clipboard() : nullptr;
}

} // namespace

/// Appends the pages of the report to @p html: empty, or what went wrong.
QString CPrintMan::Private::append_pages(CPrintMan& door, QString& html) {
    const int total = report.page_count();
    int done = 0;
    while (done < total && door.get_rpt_page(done == 0 ? page_first : page_next)) {
        append_page_html(html, rows.rows());
        ++done;
        canceled = progress && !progress(done, total);
        if (canceled)
            return tr("canceled");
    }
    if (done < total)
        return tr("cannot read page %1 of the report").arg(done + 1);
    return total > 0 && report.has_shrunk() ? tr("the report became shorter while it was read")
                                            : QString();
}

void CPrintMan::save_to_clipboard() {
    copy_text();
}

QString CPrintMan::copy_page(QString& html) {
    append_page_html(html, d->rows.rows());
    return html;
}

void CPrintMan::save_allto_clipboard() {
    QString html = report_html_head;
    d->canceled = false;
    d->job_error = d->append_pages(*this, html);
    html += report_html_tail;
    if (!d->canceled && clipboard())
        clipboard()->setText(html);
}

void CPrintMan::print_cur_page(QWidget* parent) {
    const PageGeometry page = d->report.geometry();
    if (!d->printer || !page.known())
        return;
    forget_output(*d->printer, d->job_output);
    const QPointer<CPrintMan> self = this;
    const QString error = print_page_as_chosen(parent, d->printer, d->units,
                                               {d->rows.rows(), page.columns, page.lines});
    if (self)
        d->job_error = error;
}

void CPrintMan::copy_text() {
    const QString html = highlights_html(d->highlights.list());
    if (!html.isEmpty() && clipboard())
        clipboard()->setText(html);
}

void CPrintMan::paste_text() {
    d->job_error = show_in_browser(clipboard() ? clipboard()->text() : QString());
}
