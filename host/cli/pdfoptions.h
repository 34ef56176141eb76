#pragma once

#include "host/jobs/pdfjob.h"

namespace host {

class Arguments;

// Each of these fills a setup from the options of a command line: wrong usage when one is invalid.

/// @param setup starts with its defaults. A printer that is not in the setup file is a failure.
Outcome read_page_options(const Arguments& arguments, PageSetup& setup);

/// @param mark receives no watermark without the option --watermark
Outcome read_watermark_options(const Arguments& arguments, std::optional<Watermark>& mark);

/// All options of a PDF.
Outcome read_pdf_options(const Arguments& arguments, PdfSetup& setup);

/// Reads "r,g,b" with numbers from 0 to 255, or "#rrggbb".
std::optional<QColor> parse_mark_colour(const QByteArray& text);

/// Reads "x,y" in inches, each from -100 to 100.
std::optional<QPointF> parse_place(const QByteArray& text);

} // namespace host
