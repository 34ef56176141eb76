#pragma once

#include "host/files/outcome.h"

#include <vector>

namespace host {

/// A printer of the system: a queue of its spooler.
struct LocalPrinter {
    QByteArray id; ///< at most 55 bytes
    QByteArray queue;
    QByteArray description;
    int page_length = 0; ///< lines; all three are 0 without a default page length
    int first_line = 0;
    int last_line = 0;

    bool operator==(const LocalPrinter&) const = default;
};

/// Reads a list of printers as read_sections() does. An id is cut to its length; a printer without
/// a port has the queue of its id.
///
/// @param file     the name of the text in error messages, "file:line: error"
/// @param printers receives the printers in the text's order, none of an empty text; unchanged on
///                 failure
Outcome read_local_printers(const QByteArray& text, const QByteArray& file,
                            std::vector<LocalPrinter>& printers);

} // namespace host
