#pragma once

#include <printman/toolkit/psfont.h>
#include <printman/toolkit/psstream.h>

#include <QColor>
#include <QPainterPath>
#include <QPen>
#include <QTransform>

class QImage;

namespace printman {

/// The content of a page, written as PostScript operators. Coordinates are device pixels from the
/// top left of the painted area, y downwards; what the graphics state already holds is not
/// repeated.
class PsPage {
public:
    /// The definitions of the short operators that pages use.
    static std::string_view procedures();

    explicit PsPage(PsStream& out) : out_(out) {}

    /// Forgets the graphics state, for a new page.
    void reset();

    /// Shows @p codes of @p font's encoding @p encoding from @p baseline on. @p matrix is the
    /// font's matrix: ems to device pixels.
    void show(const PsFont& font, int encoding, const QTransform& matrix, QPointF baseline,
              std::string_view codes, const QColor& color);

    /// The same, thickened by a stroke @p stroke ems wide.
    void show_thick(const PsFont& font, int encoding, const QTransform& matrix, QPointF baseline,
                    std::string_view codes, const QColor& color, double stroke);

    void fill(const QPainterPath& device_path, const QColor& color);

    /// Strokes the path with @p pen, whose shape @p transform distorts unless it is cosmetic.
    void stroke(const QPainterPath& device_path, const QPen& pen, const QTransform& transform);

    /// Clips to @p device_path; nothing is clipped after clear_clip().
    void set_clip(const QPainterPath& device_path);
    void clear_clip();
    bool clipped() const { return clipped_; }

    /// Draws the image's pixels, (0, 0) at its top left, through @p transform.
    void image(const QImage& image, const QTransform& transform);

private:
    void set_color(const QColor& color);
    void path(const QPainterPath& path);
    void point(QPointF p);
    void matrix(const QTransform& m);

    PsStream& out_;
    QRgb color_ = 0;
    bool color_known_ = false;
    bool clipped_ = false;
    const PsFont* font_ = nullptr;
    int encoding_ = 0;
    QTransform font_matrix_;
};

} // namespace printman
