#pragma once

#include <cstddef>
#include <vector>

namespace printman {

/// Appends to @p offsets where the text of every page in a report file starts: after the top line,
/// or after its first piece if it is longer. A top mark counts at the start of any piece of a line,
/// and nowhere else.
///
/// Cost: one pass over the file, whatever its lines look like.
///
/// @param fd         an open file at its start
/// @param block_size bytes to read at a time, 1 or more
/// @return 0, or the errno of a failed read; @p offsets may then have received some of them
int find_pages(int fd, size_t block_size, std::vector<long>& offsets);

} // namespace printman
