#pragma once

#include <printman/printman_export.h>

#include <QPageSize>

namespace printman {

/// How many page-size numbers there are: 0 to 29.
inline constexpr int page_size_count = 30;

/// The page size with the given number: 0 A4, 1 B5, 2 Letter, 3 Legal, 4 Executive, 5 to 8 A0 to
/// A3, 9 to 13 A5 to A9, 14 B0, 15 B1, 16 B10, 17 to 19 B2 to B4, 20 to 23 B6 to B9, 24 C5E, 25
/// Comm10E, 26 DLE, 27 Folio, 28 Ledger, 29 Tabloid. The B sizes are those of JIS, so B5 is 182 x
/// 257 mm.
///
/// @return an invalid size for any other number
PRINTMAN_EXPORT QPageSize page_size_of(int number);

/// The name of the page size in the list above; null for any other number.
PRINTMAN_EXPORT const char* page_size_name(int number);

} // namespace printman
