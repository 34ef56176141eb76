#pragma once

#include <cstddef>

namespace host {

// The limits of the report format.

inline constexpr int max_page_columns = 32767;
inline constexpr int max_page_lines = 32767;
inline constexpr long long max_page_cells = 64LL * 1024 * 1024;

/// A line is read into 512 bytes, which also hold its newline and a zero byte.
inline constexpr size_t max_line_bytes = 510;

} // namespace host
