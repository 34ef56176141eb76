#pragma once

#include <QByteArray>
#include <QList>

namespace host {

/// Rows of cells as lines of text with aligned columns, two blanks between them.
///
/// @param rows      the first is the heading; each has as many cells as it
/// @param numeric   columns that are aligned at the right
QByteArray aligned_table(const QList<QList<QByteArray>>& rows, const QList<qsizetype>& numeric);

} // namespace host
