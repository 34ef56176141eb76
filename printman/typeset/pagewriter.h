#pragma once

#include <QColor>
#include <QPainterPath>
#include <QPen>
#include <QTransform>

#include <string_view>

class QImage;

namespace printman {

class EmbeddedFont;

/// Writes the content of a page in a page language. Coordinates are device pixels from the top left
/// of the painted area, y downwards.
class PageWriter {
public:
    virtual ~PageWriter() = default;

    /// Shows @p codes of encoding @p encoding of @p font, starting at @p baseline. @p matrix is the
    /// font's matrix: ems to device pixels.
    virtual void show(const EmbeddedFont& font, int encoding, const QTransform& matrix,
                      QPointF baseline, std::string_view codes, const QColor& color) = 0;

    /// The same, thickened by a stroke of @p stroke ems.
    virtual void show_thick(const EmbeddedFont& font, int encoding, const QTransform& matrix,
                            QPointF baseline, std::string_view codes, const QColor& color,
                            double stroke) = 0;

    virtual void fill(const QPainterPath& device_path, const QColor& color) = 0;

    /// Strokes the path with @p pen, which @p transform transforms unless it is cosmetic.
    virtual void stroke(const QPainterPath& device_path, const QPen& pen,
                        const QTransform& transform) = 0;

    /// Clips to @p device_path until clear_clip() or another path.
    virtual void set_clip(const QPainterPath& device_path) = 0;
    virtual void clear_clip() = 0;
    virtual bool clipped() const = 0;

    /// Draws the image's pixels, with (0, 0) at its top left, transformed by @p transform.
    virtual void image(const QImage& image, const QTransform& transform) = 0;
};

} // namespace printman
