#pragma once

#include <printman/core/progress.h>
#include <printman/core/reportbuffer.h>

#include <QString>

namespace printman {

/// Writes every indexed page of @p report as plain text, one line a page line, pages without a
/// separator. Of a line that fills the page's width the last column is dropped. The text is written
/// beside @p path and takes its place only when it is complete.
///
/// The current page of @p report is the last one afterwards, and @p fields holds its markers.
///
/// @param progress may be empty
/// @return an empty text, or in one line what went wrong; an earlier file is then as it was
QString write_report_text(ReportBuffer& report, EscapeTable& fields, const QString& path,
                          const PrintmanProgress& progress);

} // namespace printman
