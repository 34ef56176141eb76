#include <printman/export/pagehtml.h>

namespace printman {

namespace {

constexpr QLatin1String row_start("<tr>");
constexpr QLatin1String row_end("</tr>");
constexpr QLatin1String table_end("</table>");

void append_cell(QString& html, const QString& text) {
    html += QLatin1String("<td>");
    html += text;
    html += QLatin1String("</td>");
}

} // namespace

QString highlights_html(const std::list<StringItem>& records) {
    if (records.empty())
        return {};
    QString html = report_html_head + QLatin1String("<table>") + row_start;
    int key = records.front().cell.top();
    for (const StringItem& record : records) {
        if (record.cell.top() != key) {
            key = record.cell.top();
            html += row_end;
            html += row_start;
        }
        append_cell(html, record.text);
    }
    html += row_end;
    html += table_end;
    html += report_html_tail;
    return html;
}

void append_page_html(QString& html, std::span<const QValueList<StringItem>> rows) {
    html += QLatin1String("<table width=100%>");
    for (const QValueList<StringItem>& row : rows) {
        html += row_start;
        for (const StringItem& item : row)
            append_cell(html, item.text);
        html += row_end;
    }
    html += table_end;
}

} // namespace printman
