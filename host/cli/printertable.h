#pragma once

#include <QByteArray>
#include <QList>

namespace host {

/// Rows of cells as lines of text with aligned columns, two blanks between them.
///
/// @param rows    the first one is the heading; all have the same number of cells
/// @param numeric columns that are aligned at the right
QByteArray aligned_table(const QList<QList<QByteArray>>& rows, const QList<qsizetype>& numeric);

} // namespace host
