#pragma once

#include <printman/result.h>

namespace printman {

class ReportBuffer;

// What goes wrong with a report while its pages are walked.

Result no_pages();
Result unreadable_page(int page);

/// A failure when the file of @p report is now shorter than it was when its pages were indexed.
Result check_still_whole(const ReportBuffer& report);

} // namespace printman
