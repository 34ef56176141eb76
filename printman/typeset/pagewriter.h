#pragma once

#include <QColor>
#include <QPainterPath>
#include <QPen>
#include <QTransform>

#include <string_view>

class QImage;

namespace printman {

class EmbeddedFont;

/// The content of a page in a page language. Coordinates are device pixels from the top left of the
/// painted area, y downwards.
class PageWriter {
public:
    virtual ~PageWriter() = default;

    /// Shows @p codes of @p font's encoding @p encoding from @p baseline on. @p matrix is the
    /// font's matrix: ems to device pixels.
    virtual void show(const EmbeddedFont& font, int encoding, const QTransform& matrix,
                      QPointF baseline, std::string_view codes, const QColor& color) = 0;

    /// The same, thickened by a stroke @p stroke ems wide.
    virtual void show_thick(const EmbeddedFont& font, int encoding, const QTransform& matrix,
                            QPointF baseline, std::string_view codes, const QColor& color,
                            double stroke) = 0;

    virtual void fill(const QPainterPath& device_path, const QColor& color) = 0;

    /// Strokes the path with @p pen, whose shape @p transform distorts unless it is cosmetic.
    virtual void stroke(const QPainterPath& device_path, const QPen& pen,
                        const QTransform& transform) = 0;

    /// Clips to @p device_path; nothing is clipped after clear_clip().
    virtual void set_clip(const QPainterPath& device_path) = 0;
    virtual void clear_clip() = 0;
    virtual bool clipped() const = 0;

    /// Draws the image's pixels, (0, 0) at its top left, through @p transform.
    virtual void image(const QImage& image, const QTransform& transform) = 0;
};

} // namespace printman
