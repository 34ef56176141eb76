#include <printman/export/reporttext.h>
#include <printman/system/outputfile.h>

#include <QByteArray>

#include <cstring>
#include <memory>
#include <new>

namespace printman {

namespace {

/// Appends the lines of a page: each up to its first zero byte, the last column left out.
void append_lines(QByteArray& text, const char* cells, const PageGeometry& page) {
    for (int row = 0; row < page.lines; ++row) {
        const char* line = cells + static_cast<size_t>(page.columns) * row;
        text.append(line, static_cast<qsizetype>(strnlen(line, page.columns - 1)));
        text.append('\n');
    }
}

/// Writes the pages; the result is empty or says what went wrong.
QString write_pages(ReportBuffer& report, EscapeTable& fields, OutputFile& out,
                    const PrintmanProgress& progress) {
    const PageGeometry page = report.geometry();
    const int total = page.known() ? report.page_count() : 0;
    const size_t size = (static_cast<size_t>(page.columns) + 1) * page.lines;
    const std::unique_ptr<char[]> cells(new (std::nothrow) char[size]);
    if (!cells)
        return QStringLiteral("out of memory");

    QByteArray text;
    for (int done = 0; done < total;) {
        const int request = done == 0 ? page_first : page_next;
        ++done;
        if (!report.read_page(request, {cells.get(), size}, fields))
            return QStringLiteral("cannot read page %1 of the report").arg(done);
        text.resize(0);
        append_lines(text, cells.get(), page);
        if (!out.write(text.constData(), text.size()))
            return out.error();
        if (progress && !progress(done, total))
            return QStringLiteral("interrupted");
    }
    if (total > 0 && report.has_shrunk())
        return QStringLiteral("the report became shorter while it was read");
    return {};
}

} // namespace

QString write_report_text(ReportBuffer& report, EscapeTable& fields, OutputFile& out,
                          const PrintmanProgress& progress) {
    QString error = write_pages(report, fields, out, progress);
    if (error.isEmpty() && !out.commit())
        error = out.error();
    if (!error.isEmpty())
        out.discard();
    return error;
}

} // namespace printman
