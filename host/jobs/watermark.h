#pragma once

#include "host/files/outcome.h"

#include <QColor>
#include <QPointF>
#include <QSizeF>

#include <optional>

class CPrintMan;

namespace host {

class Arguments;
struct PdfLayout;

/// A line of text across every page of a PDF.
struct Watermark {
    QByteArray text;
    QByteArray family = "Helvetica";
    std::optional<int> size; ///< points; none: 60, or what fits the page
    int angle = 45;          ///< degrees, counter-clockwise about the text's top left corner
    QColor colour{208, 208, 208};
    std::optional<QPointF> at; ///< that corner, in inches from the margins; none: the page's middle
    bool in_front = false;     ///< over the report, not behind it

    /// Reads the options of a command line; wrong usage when one makes no sense.
    ///
    /// @param mark none without a watermark
    static Outcome read(const Arguments& arguments, std::optional<Watermark>& mark);
};

/// Reads "r,g,b" with numbers from 0 to 255, or "#rrggbb".
std::optional<QColor> parse_mark_colour(const QByteArray& text);

/// Reads "x,y" in inches, each from -100 to 100.
std::optional<QPointF> parse_place(const QByteArray& text);

/// The size that it has in a room of 1/600 inch a unit: its own, or the largest whole one up to 60
/// points at which the turned text fits there, but 1 at least.
int size_in(const Watermark& mark, QSizeF room);

/// Describes the watermark to the manager, for pages that are laid out so.
void set_watermark(CPrintMan& manager, const Watermark& mark, const PdfLayout& layout);

} // namespace host
