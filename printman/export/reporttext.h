#pragma once

#include <printman/progress.h>
#include <printman/report/reportbuffer.h>

#include <QString>

namespace printman {

class OutputFile;

/// Writes every indexed page of @p report as plain text, one line a page line, pages without a
/// separator, and completes @p out. Of a line that fills the page's width the last column is
/// dropped.
///
/// The current page of @p report is the last one afterwards, and @p fields holds its markers.
///
/// @param out      open; it is completed or, on failure, discarded
/// @param progress may be empty
/// @return an empty text, or in one line what went wrong
QString write_report_text(ReportBuffer& report, EscapeTable& fields, OutputFile& out,
                          const PrintmanProgress& progress);

} // namespace printman
