#pragma once

#include <QPointF>
#include <QString>

#include <memory>

class QPainter;

namespace printman {

/// Writes runs of text directly to the page of a PsPrinter: each is shaped and measured here and
/// shown by one operator, without Qt's text layout. The painter's state must stay as it was when
/// the object was created.
class DirectText {
public:
    explicit DirectText(QPainter& p);
    ~DirectText();
    DirectText(const DirectText&) = delete;
    DirectText& operator=(const DirectText&) = delete;

    /// Whether the painter paints on a PsPrinter.
    bool is_on_page() const;

    /// Shapes and measures @p text for the following draw().
    ///
    /// @return false when the text must be drawn with the painter instead: another device, a
    ///         clipped or translucent painter, a decorated or spaced font, characters that the
    ///         font lacks
    bool prepare(const QString& text);

    /// The width of the prepared text in logical units, with trailing blanks.
    double width() const;

    /// Writes the prepared text with its baseline starting at @p baseline in logical units.
    void draw(QPointF baseline);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace printman
