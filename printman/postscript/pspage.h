#pragma once

#include <printman/postscript/psstream.h>
#include <printman/typeset/embeddedfont.h>
#include <printman/typeset/pagewriter.h>

namespace printman {

/// Writes the content of a page as PostScript operators and leaves out what the graphics state
/// already holds.
class PsPage : public PageWriter {
public:
    /// The definitions of the short operators that pages use.
    static std::string_view procedures();

    explicit PsPage(PsStream& out) : out_(out) {}

    /// Forgets the graphics state, for a new page.
    void reset();

    void show(const EmbeddedFont& font, int encoding, const QTransform& matrix, QPointF baseline,
              std::string_view codes, const QColor& color) override;
    void show_thick(const EmbeddedFont& font, int encoding, const QTransform& matrix,
                    QPointF baseline, std::string_view codes, const QColor& color,
                    double stroke) override;
    void fill(const QPainterPath& device_path, const QColor& color) override;
    void stroke(const QPainterPath& device_path, const QPen& pen,
                const QTransform& transform) override;
    void set_clip(const QPainterPath& device_path) override;
    void clear_clip() override;
    bool clipped() const override { return clipped_; }
    void image(const QImage& image, const QTransform& transform) override;

private:
    void set_color(const QColor& color);
    void path(const QPainterPath& path);
    void point(QPointF p);
    void matrix(const QTransform& m);

    PsStream& out_;
    QRgb color_ = 0;
    bool color_known_ = false;
    bool clipped_ = false;
    const EmbeddedFont* font_ = nullptr;
    int encoding_ = 0;
    QTransform font_matrix_;
};

} // namespace printman
