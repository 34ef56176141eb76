#pragma once

#include <QString>

#include <optional>

namespace host {

/// "132 x 66, 120 pages".
QString geometry_text(int columns, int lines, int pages);

/// "3 of 120".
QString page_text(int page, int pages);

/// Reads the page number that a user has typed: a number alone, or one followed by "of 120" or
/// "/120". Whether there is such a page is not checked.
std::optional<int> parse_page(const QString& typed);

/// "3 pieces, 42 characters"; empty when there is no piece.
QString selection_text(int pieces, int characters);

/// A file's name to show: without directory, and short enough for one line.
QString short_name(const QByteArray& path);

} // namespace host
