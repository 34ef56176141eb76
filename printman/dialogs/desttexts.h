#pragma once

#include <QByteArray>
#include <QFont>
#include <QString>

namespace printman {

/// The file that a report is saved in when @p selected was chosen under the filter @p filter: in
/// the same directory, its name up to the first dot, and the extension of the filter, "txt" or
/// "pdf"; of another filter, its whole text.
QString save_path(const QString& selected, const QString& filter);

/// A font in words: "Courier, Bold regular, size 10".
///
/// @param weight on the scale of 0 to 99; one that has no word is "Normal"
QString font_in_words(const QFont& font, int weight);

/// As many whole characters of a file name as fit @p room bytes, in the encoding of file names.
QByteArray fitting_file_name(const QString& name, qsizetype room);

} // namespace printman
