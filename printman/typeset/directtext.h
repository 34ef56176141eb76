#pragma once

#include <QPointF>
#include <QString>

#include <memory>

class QPainter;

namespace printman {

/// The straight way from a run of text to the page of a PsPrinter: shaped and measured here and
/// written as one show, without Qt's text layout. It serves a painter whose state stays as it was
/// when the object was made.
class DirectText {
public:
    explicit DirectText(QPainter& p);
    ~DirectText();
    DirectText(const DirectText&) = delete;
    DirectText& operator=(const DirectText&) = delete;

    /// Whether the painter paints on a PsPrinter.
    bool is_on_page() const;

    /// Measures @p text for the draw() that follows.
    ///
    /// @return false when it must be drawn through the painter: another device, a clipped or
    ///         translucent painter, a decorated or spaced font, characters that the font lacks
    bool prepare(const QString& text);

    /// Width of the prepared text in logical units; trailing blanks count.
    double width() const;

    /// Writes the prepared text with its baseline starting at @p baseline, in logical units.
    void draw(QPointF baseline);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace printman
