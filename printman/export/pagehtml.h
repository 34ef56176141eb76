#pragma once

#include <printman/stringitem.h>
#include <printman/toolkit/qvaluelist.h>

#include <QString>

#include <list>
#include <span>

namespace printman {

// The document of a whole report is the head, a table a page, and the tail. Nothing in these
// documents is escaped: the report's text stands in them as it is.
inline constexpr QLatin1String report_html_head("<html><head><title></title></head><body>");
inline constexpr QLatin1String report_html_tail("</body></html>");

/// The document for highlighted pieces: one table, a cell a record, and a new row wherever the top
/// of the cell rectangle differs from the record's before.
///
/// @return an empty text when there is no record
QString highlights_html(const std::list<StringItem>& records);

/// Appends a page as a table to @p html: a row a line, a cell an item, blank ones included.
void append_page_html(QString& html, std::span<const QValueList<StringItem>> rows);

} // namespace printman
