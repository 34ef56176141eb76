#pragma once

#include <printman/typeset/pagedocument.h>
#include <printman/typeset/textfont.h>

#include <QPaintEngine>
#include <QPainterPath>

#include <optional>

namespace printman {

/// Turns what a QPainter draws into a document's pages.
///
/// Text stays text in embedded fonts, solid shapes become paths, and images stay images. What page
/// writers cannot express (gradients, textures, translucent images) Qt passes as images.
class PagePaintEngine : public QPaintEngine {
public:
    explicit PagePaintEngine(PageTarget& target);

    bool begin(QPaintDevice* device) override;
    bool end() override;
    Type type() const override { return User; }
    void updateState(const QPaintEngineState& state) override;

    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawTextItem(const QPointF& p, const QTextItem& item) override;
    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override;
    void drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                   Qt::ImageConversionFlags flags) override;

    /// The document's form of @p font; valid until it is asked for another font.
    ///
    /// @return null when no document is being written
    TextFont* text_font(const QFont& font);

    /// Shows shaped glyphs with @p font, starting at @p baseline, both transformed by @p transform.
    void show(const TextFont& font, const std::vector<ShapedGlyph>& glyphs, QPointF baseline,
              const QTransform& transform, const QColor& color);

    /// The same for codes of a fixed-pitch font's first encoding; blanks at both ends are left out.
    void show_fixed(const TextFont& font, std::string_view codes, QPointF baseline,
                    const QTransform& transform, const QColor& color);

    /// Removes any clipping that an earlier painter state left on the page.
    void unclip();

private:
    void draw(const QPainterPath& path, bool filled);
    void update_clip(const QPaintEngineState& state);
    PageWriter* clipped_page();
    void clip_to(const QPainterPath& device_path, Qt::ClipOperation operation);
    void show_codes(const TextFont& font, int encoding, std::string_view codes, QPointF baseline,
                    const QTransform& transform, const QColor& color);
    void draw_layout(const QPointF& p, const QString& text, const QFont& font);
    void draw_outlines(const QPointF& p, const QString& text, const QFont& font);

    PageTarget& target_;
    QPen pen_;
    QBrush brush_;
    QTransform transform_;
    double opacity_ = 1.0;
    QPainterPath clip_;
    bool has_clip_ = false;
    bool clip_enabled_ = false;
    bool clip_changed_ = false;
    std::optional<QFont> font_;
    std::unique_ptr<TextFont> text_font_;
};

} // namespace printman
