#include <printman/dialogs/openerror.h>
#include <printman/export/browser.h>
#include <printman/export/pagehtml.h>
#include <printman/export/pagetext.h>
#include <printman/manager/runningjob.h>
#include <printman/output/jobprinter.h>
#include <printman/output/pageprint.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

// The facade's functions for the clipboard, and for the loaded page in a file and on paper.

using namespace printman;

namespace {

/// Null in a program that has no clipboard.
QClipboard* clipboard() {
    const bool has_display = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    return has_display ? QGuiApplication::clipboard() : nullptr;
}

} // namespace

void CPrintMan::save_to_clipboard() {
    copy_text();
}

void CPrintMan::save_cur_page(QWidget* parent, const char* file_name) {
    if (!file_name || !*file_name)
        return;
    OutputFile out;
    Result saved = out.open(file_name);
    if (saved.ok())
        saved = write_page_text(d->rows.rows(), out);
    if (!d->note(saved))
        show_open_error(parent, file_name);
}

QString CPrintMan::copy_page(QString& html) {
    append_page_html(html, d->rows.rows());
    return html;
}

void CPrintMan::save_allto_clipboard() {
    QString html = report_html_head;
    Private::RunningJob job(*this);
    job.start_control();
    const Result copied = job->append_pages(html);
    job->note(copied);
    html += report_html_tail;
    if (!copied.is_canceled() && clipboard())
        clipboard()->setText(html);
}

void CPrintMan::print_cur_page(QWidget* parent) {
    const PageGeometry page = d->report.geometry();
    if (!parent || !d->printer || !page.known())
        return;
    forget_output(*d->printer, d->job_output);
    // What an earlier job was told does not end this one.
    d->control->start(0, 1);
    d->printer->setJobControl(d->control);
    const QPointer<CPrintMan> self = this;
    const Result printed = print_page_as_chosen(parent, d->printer, d->units,
                                                {d->rows.rows(), page.columns, page.lines});
    if (self)
        d->note(printed);
}

void CPrintMan::copy_text() {
    const QString html = highlights_html(d->highlights.list());
    if (!html.isEmpty() && clipboard())
        clipboard()->setText(html);
}

void CPrintMan::paste_text() {
    d->note(show_in_browser(clipboard() ? clipboard()->text() : QString()));
}
