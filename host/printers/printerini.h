#pragma once

#include "host/files/outcome.h"

#include <printman/printer/setuprecord.h>

#include <vector>

namespace host {

/// A printer in the default font, without a name.
printman::SetupRecord default_printer();

/// Reads a description of printers: a list as read_sections() reads it.
///
/// @param file    the name of the text in error messages, "file:line: error"
/// @param records receives the printers in the text's order; unchanged on failure
Outcome read_printers(const QByteArray& text, const QByteArray& file,
                      std::vector<printman::SetupRecord>& records);

} // namespace host
