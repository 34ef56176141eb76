#pragma once

#include <QFontMetricsF>
#include <QRect>
#include <QString>

#include <array>

class QPainter;

namespace printman {

/// What is drawn for an item's text. Report text has one cell a byte: a soft hyphen, which the
/// toolkit would hide, is shown as a hyphen, tabs and carriage returns as blanks.
QString shown_text(const QString& text);

/// Where a run of text stands when it is drawn: all that cutting and searching items needs to know
/// of a painter.
class TextMeasure {
public:
    virtual ~TextMeasure() = default;

    /// The rectangle that @p text covers when it is drawn in @p cell with the alignment @p flags,
    /// in logical units.
    virtual QRect bounding_rect(const QRect& cell, int flags, const QString& text) const = 0;

protected:
    TextMeasure() = default;
    TextMeasure(const TextMeasure&) = default;
    TextMeasure& operator=(const TextMeasure&) = default;
};

/// Measures text as a painter draws it. Everything that needs to know where text stands asks here:
/// a run is as high as the font's line, at every font and size, which Qt's own bounding rectangle
/// is not (its layout rounds ascent and descent apart and is often a pixel higher).
class TextRuler final : public TextMeasure {
public:
    /// Takes the painter's font and device as they are now. Cost: some 200 character widths.
    explicit TextRuler(const QPainter& p);

    /// The width of @p text as it is shown on one line, in logical units; its trailing blanks
    /// count.
    double width(const QString& text) const;

    /// The height of a line.
    int height() const { return height_; }

    /// From a line's top to its baseline.
    double ascent() const { return ascent_; }

    /// The rectangle that @p text covers when it is drawn in @p cell with the alignment @p flags:
    /// as wide as the text, rounded outwards, and one line high.
    QRect bounding_rect(const QRect& cell, int flags, const QString& text) const override;

    /// The same for a text of width @p width.
    QRect bounding_rect(const QRect& cell, int flags, double width) const;

    /// Left edge of a text of width @p width in @p cell, not rounded.
    static double left_edge(const QRect& cell, int flags, double width);

private:
    QFontMetricsF metrics_;
    int height_;
    double ascent_;
    double fixed_advance_ = 0.0;    ///< of every printable Latin-1 character; 0 when they differ
    std::array<bool, 256> fixed_{}; ///< which Latin-1 characters have it
};

/// Qt's flags for an item's alignment code: 3 right, 4 centred, any other left; centred vertically.
int alignment_flags(int code);

} // namespace printman
