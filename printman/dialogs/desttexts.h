#pragma once

#include <QByteArray>
#include <QFont>
#include <QString>

namespace printman {

/// The file to save a report in when the user chose @p selected with the filter @p filter: the same
/// directory, the name up to its first dot, and the filter's extension, "txt" or "pdf"; for any
/// other filter, its whole text.
QString save_path(const QString& selected, const QString& filter);

/// A font in words: "Courier, Bold regular, size 10".
///
/// @param weight on the scale of 0 to 99; one without a word of its own is "Normal"
QString font_in_words(const QFont& font, int weight);

/// As many whole characters of a file name as fit into @p max_bytes, in the encoding of file names.
QByteArray fitting_file_name(const QString& name, qsizetype max_bytes);

} // namespace printman
