#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace printman {

// The shell commands of the PDF pipeline, as text. Nothing that a name in them says is run.

/// Fills the markers %1, %2, ... of @p command, all at once: the first word takes the place of the
/// lowest number that stands there, and so on; a marker without a word stays. A word that holds a
/// marker itself stays as it is.
QByteArray fill_command(const QByteArray& command, const std::vector<QByteArray>& words);

/// PostScript to PDF.
QByteArray ps2pdf_command(const QString& ps, const QString& pdf);

/// Lays the PDF @p back behind every page of @p front.
QByteArray background_command(const QString& front, const QString& back, const QString& result);

/// Lays the PDF @p stamp over every page of @p report.
QByteArray stamp_command(const QString& report, const QString& stamp, const QString& result);

/// Spools a file to a printer's queue.
QByteArray lpr_command(const QString& printer, const QString& file);

} // namespace printman
