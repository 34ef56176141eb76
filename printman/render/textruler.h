#pragma once

#include <QFontMetricsF>
#include <QRect>
#include <QString>

#include <array>

class QPainter;

namespace printman {

/// What is drawn for an item's text. Report text has one cell per byte, so a soft hyphen, which the
/// toolkit would hide, is shown as a hyphen, and tabs and carriage returns as blanks.
QString shown_text(const QString& text);

/// Where a run of text is placed when it is drawn: all that cutting and searching items need to
/// know about a painter.
class TextMeasure {
public:
    virtual ~TextMeasure() = default;

    /// The rectangle, in logical units, that @p text covers when it is drawn in @p cell with the
    /// alignment @p flags.
    virtual QRect bounding_rect(const QRect& cell, int flags, const QString& text) const = 0;

protected:
    TextMeasure() = default;
    TextMeasure(const TextMeasure&) = default;
    TextMeasure& operator=(const TextMeasure&) = default;
};

/// Measures text as a painter draws it. Everything that needs to know where text is placed asks
/// here: a run is always as high as the font's line, while Qt's own bounding rectangle is often one
/// pixel higher, because its layout rounds ascent and descent separately.
class TextRuler final : public TextMeasure {
public:
    /// Uses the painter's current font and device. Cost: some 200 character widths.
    explicit TextRuler(const QPainter& p);

    /// The width of @p text as shown on one line, in logical units, with trailing blanks.
    double width(const QString& text) const;

    /// The height of a line.
    int height() const { return height_; }

    /// The distance from a line's top to its baseline.
    double ascent() const { return ascent_; }

    /// The rectangle that @p text covers when it is drawn in @p cell with the alignment @p flags:
    /// as wide as the text, rounded outwards, and one line high.
    QRect bounding_rect(const QRect& cell, int flags, const QString& text) const override;

    /// The same for a text of width @p width.
    QRect bounding_rect(const QRect& cell, int flags, double width) const;

    /// The left edge of a text of width @p width in @p cell, not rounded.
    static double left_edge(const QRect& cell, int flags, double width);

private:
    QFontMetricsF metrics_;
    int height_;
    double ascent_;
    double fixed_advance_ = 0.0;    ///< of every printable Latin-1 character; 0 when they differ
    std::array<bool, 256> fixed_{}; ///< which Latin-1 characters have it
};

/// Qt's flags for an item's alignment code: 3 right, 4 centred, any other left; always vertically
/// centred.
int alignment_flags(int code);

} // namespace printman
