#include <printman/export/reporttext.h>
#include <printman/progress.h>
#include <printman/report/reportfailure.h>
#include <printman/system/outputfile.h>

#include <QByteArray>

#include <cstring>
#include <memory>
#include <new>

namespace printman {

namespace {

/// Appends the lines of a page: each up to its first zero byte, of @p width columns.
void append_lines(QByteArray& text, const char* cells, const PageGeometry& page, int width) {
    for (int row = 0; row < page.lines; ++row) {
        const char* line = cells + static_cast<size_t>(page.columns) * row;
        text.append(line, static_cast<qsizetype>(strnlen(line, width)));
        text.append('\n');
    }
}

Result write_pages(ReportBuffer& report, EscapeTable& fields, OutputFile& out,
                   LastColumn last_column, JobControl& control) {
    const PageGeometry page = report.geometry();
    const int total = page.known() ? report.page_count() : 0;
    const int width = last_column == LastColumn::dropped ? page.columns - 1 : page.columns;
    const size_t size = (static_cast<size_t>(page.columns) + 1) * page.lines;
    const std::unique_ptr<char[]> cells(new (std::nothrow) char[size]);
    if (!cells)
        return Result::failure(QStringLiteral("out of memory"));

    QByteArray text;
    for (int done = 0; done < total;) {
        const int request = done == 0 ? page_first : page_next;
        ++done;
        if (!report.read_page(request, {cells.get(), size}, fields))
            return unreadable_page(done);
        text.resize(0);
        append_lines(text, cells.get(), page, width);
        Result written = out.write(text.constData(), text.size());
        if (!written.ok())
            return written;
        if (!control.pages_done(done, total))
            return Result::canceled();
    }
    return total > 0 ? check_still_whole(report) : Result();
}

} // namespace

Result write_report_text(ReportBuffer& report, EscapeTable& fields, OutputFile& out,
                         LastColumn last_column, JobControl& control) {
    Result written = write_pages(report, fields, out, last_column, control);
    if (written.ok())
        return out.commit();
    out.discard();
    return written;
}

} // namespace printman
