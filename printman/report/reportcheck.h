#pragma once

#include <printman/printman_export.h>

#include <functional>
#include <string>

namespace printman {

/// A fault in a report, a mistake of the program that produced it.
struct ReportFault {
    enum Kind {
        other,
        geometry ///< the page size that counts for the whole report is missing or absurd
    };

    long line = 0;    ///< 1-based line of the file; 0 for the file as a whole
    std::string what; ///< description in one line
    Kind kind = other;
};

/// Checks the report file @p path and calls @p sink for every fault, in file order.
///
/// Cost: one pass over the file; memory does not grow with it.
///
/// @param path a regular file, a pipe or a socket
/// @param sink returns false to stop
/// @return 0 when the whole file was read or @p sink stopped the check, else the errno of the
///         failure
PRINTMAN_EXPORT int check_report(const std::string& path,
                                 const std::function<bool(const ReportFault&)>& sink);

} // namespace printman
