#pragma once

#include <QByteArray>
#include <QColor>
#include <QPointF>
#include <QSizeF>

#include <optional>

class CPrintMan;

namespace host {

struct PdfLayout;

/// A line of text across every page of a PDF.
struct Watermark {
    static constexpr qsizetype max_text = 79; ///< bytes; the library truncates longer texts
    static constexpr qsizetype max_family = 51;

    QByteArray text;
    QByteArray family = "Helvetica";
    std::optional<int> size = std::nullopt; ///< points; none: 60, or what fits the page
    int angle = 45; ///< degrees, counter-clockwise about the text's top left corner
    QColor colour{208, 208, 208};
    std::optional<QPointF> at = std::nullopt; ///< that corner, in inches from the margins; none:
                                              ///< the text is centred on the page
    bool in_front = false;                    ///< over the report instead of behind it
};

/// The text's size in points in a room of device units: its own, or the largest whole one up to 60
/// at which the turned text fits, but 1 at least.
int size_in(const Watermark& mark, QSizeF room);

/// Sets the manager's watermark for pages of that layout.
void set_watermark(CPrintMan& manager, const Watermark& mark, const PdfLayout& layout);

} // namespace host
