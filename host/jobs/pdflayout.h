#pragma once

#include "host/files/outcome.h"
#include "host/jobs/pagesetup.h"

#include <printman/printer/setuprecord.h>

#include <QPointF>

namespace host {

/// How the library is told to lay a report on the sheets of a PDF.
struct PdfLayout {
    printman::SetupRecord record; ///< the one printer of a setup file that is made for the job
    bool no_page_map = false;     ///< the text keeps the record's size and is not made to fit
    QPointF origin;               ///< of the printer's own units, 1/600 inch, on the sheet
    QPointF corner;               ///< of the margins that were asked for, likewise
    QSizeF room;                  ///< within those margins, likewise
};

/// The id of the printer in such a record.
inline constexpr char pdf_printer_id[] = "pdf";

/// Lays pages of @p columns x @p lines out as @p setup asks. In a PDF the library counts the
/// margins of a record twice, on the sheet and about the text, unless the text keeps its size: the
/// record has such that both together are those asked for, to 1/600 inch.
///
/// @return wrong usage when the margins leave no room on the paper
Outcome lay_out(const PageSetup& setup, int columns, int lines, PdfLayout& layout);

/// Where the top left corner of a text of that size goes so that, turned about it by @p angle
/// degrees counter-clockwise, the text has its middle at @p centre.
QPointF centred_corner(QSizeF text, double angle, QPointF centre);

} // namespace host
