#pragma once

#include <printman/printman_export.h>

#include <functional>
#include <string>

namespace printman {

/// One thing that the producer of a report did wrong.
struct ReportFault {
    long line = 0;    ///< 1-based line of the file; 0 for the file as a whole
    std::string what; ///< one line in plain words
};

/// Reads the report file @p path and tells @p sink every fault, in the order of the file.
///
/// @param sink answer false to stop
/// @return 0 when the whole file was read or @p sink stopped it, else the errno of the failure
///
/// Cost: one pass over the file; memory does not grow with it.
PRINTMAN_EXPORT int check_report(const std::string& path,
                                 const std::function<bool(const ReportFault&)>& sink);

} // namespace printman
