#pragma once

#include "host/files/outcome.h"
#include "host/jobs/pagesetup.h"

#include <printman/printer/setuprecord.h>
#include <printman/toolkit/psprinter.h>

#include <QPointF>

namespace host {

/// Device units of PsPrinter, in which a layout is measured.
inline constexpr double units_per_inch = PsPrinter::dotsPerInch;

/// How the library lays out a report on the sheets of a PDF.
struct PdfLayout {
    printman::SetupRecord record; ///< the only printer of a setup file that is written for the job
    bool no_page_map = false;     ///< the text has the record's font size and is not made to fit
    QPointF origin;               ///< where the library's own coordinates begin on the sheet
    QPointF corner;               ///< the top left corner within the margins
    QSizeF room;                  ///< the size of the page within the margins
};

/// The id of the printer in such a record.
inline constexpr char pdf_printer_id[] = "pdf";

/// Lays out pages of @p columns x @p lines as @p setup says. In a PDF the library applies the
/// margins of a record twice, on the sheet and around the text, unless the text keeps its size: the
/// record's margins are such that both together are those of @p setup, to 1/600 inch.
///
/// @return wrong usage when the margins leave no room on the paper
Outcome lay_out(const PageSetup& setup, int columns, int lines, PdfLayout& layout);

/// Where the top left corner of a text of that size goes so that the text, turned about it by
/// @p angle degrees counter-clockwise, is centred on @p centre.
QPointF centred_corner(QSizeF text, double angle, QPointF centre);

} // namespace host
