#pragma once

#include <printman/result.h>
#include <printman/stringitem.h>
#include <printman/toolkit/qvaluelist.h>

#include <QString>

#include <span>

namespace printman {

class OutputFile;

/// A line of a page as text, each item at its column: filled up to its width behind (left), in
/// front (right) or by half on both sides (centred); an item of another alignment, or one that is
/// wider than its cells, is its text alone. An item that starts before the end of the line so far
/// follows without a gap.
QString columned_text(const QValueList<StringItem>& items);

/// Writes a page's lines to @p out, which is open, as Latin-1, each ended by a line feed, and
/// completes the file.
/// On failure an earlier file is as it was.
Result write_page_text(std::span<const QValueList<StringItem>> rows, OutputFile& out);

} // namespace printman
