#pragma once

#include <printman/printer/prtsetup.h>
#include <printman/printman_export.h>

/// The text for a page-size number, such as "8.5 x 11 inches, 216 x 279 mm" for 2.
///
/// @param buffer zero-filled over @p size bytes, then receives at most @p size - 1 bytes of the
///               text; unchanged for an unknown number
/// @return the number of bytes stored; 0 for a number that is not 0 to 29
PRINTMAN_EXPORT int get_paper_size(short number, char* buffer, int size);

/// The name of the paper form in @p devmode.
///
/// @param buffer zero-filled over @p size bytes, then receives at most @p size - 1 bytes
/// @return the number of bytes stored
PRINTMAN_EXPORT int get_paper_size(const DLWDEVMODE* devmode, char* buffer, int size);
