#pragma once

#include <printman/report/reportbuffer.h>
#include <printman/result.h>

namespace printman {

class JobControl;
class OutputFile;

/// What becomes of the last column of a line that fills the page's width.
enum class LastColumn { kept, dropped };

/// Writes every indexed page of @p report as plain text, one line a page line, pages without a
/// separator, and completes @p out.
///
/// The current page of @p report is the last one afterwards, and @p fields holds its markers.
///
/// @param out open; it is completed or, on failure, discarded
Result write_report_text(ReportBuffer& report, EscapeTable& fields, OutputFile& out,
                         LastColumn last_column, JobControl& control);

} // namespace printman
