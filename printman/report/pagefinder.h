#pragma once

#include <cstddef>
#include <vector>

namespace printman {

/// Appends to @p offsets where the text of every page in a report file starts: the position behind
/// the top line, or behind its first piece when it is longer. Inside a line a top mark counts at
/// the start of a piece, and nowhere else.
///
/// Cost: one pass over the file, whatever its lines look like.
///
/// @param fd         an open file at its start
/// @param block_size bytes to read at a time, 1 or more
/// @return 0, or the errno of a failed read; @p offsets may then hold some of the places
int find_pages(int fd, size_t block_size, std::vector<long>& offsets);

} // namespace printman
