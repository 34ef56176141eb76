#pragma once

#include "host/files/outcome.h"

#include <printman/printer/setuprecord.h>

#include <vector>

namespace host {

/// Reads a description of printers: a section a printer, by its id, with lines KEY=value. Comments
/// begin with ';' or '#', blanks around names and values do not count, nor does the case of keys.
///
/// @param file    what the text is called where faults are told, "file:line: what"
/// @param records receives the printers in the text's order; unchanged on failure
Outcome read_printers(const QByteArray& text, const QByteArray& file,
                      std::vector<printman::SetupRecord>& records);

} // namespace host
