#include <printman/typeset/pagepaintengine.h>
#include <printman/typeset/pagewriter.h>

#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QTextItem>
#include <QTextLayout>

namespace printman {

namespace {

constexpr double position_tolerance = 0.05; // of a device pixel

constexpr QPaintEngine::PaintEngineFeatures features() {
    return QPaintEngine::PrimitiveTransform | QPaintEngine::PixmapTransform |
           QPaintEngine::PainterPaths | QPaintEngine::Antialiasing | QPaintEngine::AlphaBlend |
           QPaintEngine::ConstantOpacity;
}

QColor faded(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return color;
}

QImage faded(QImage image, double opacity) {
    if (opacity >= 1.0)
        return image;
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    QPainter p(&image);
    p.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    p.fillRect(image.rect(), faded(Qt::black, opacity));
    return image;
}

/// The characters that a run's glyphs stand for, 0 where unknown. When there are as many glyphs as
/// characters, they correspond in order, unless the typeface says otherwise.
class CharacterFinder {
public:
    CharacterFinder(const EmbeddedFont& face, const QString& text, qsizetype glyphs)
        : face_(face), text_(text.toUcs4()), in_order_(glyphs == text_.size()) {}

    char32_t find(quint32 glyph, qsizetype index) const {
        if (in_order_ && (glyph == 0 || face_.glyph(text_[index]) == glyph))
            return text_[index];
        for (const uint ch : text_) {
            if (glyph != 0 && face_.glyph(ch) == glyph)
                return ch;
        }
        // Small capitals show a letter by its capital.
        for (const uint ch : text_) {
            if (glyph != 0 && face_.glyph(QChar::toUpper(ch)) == glyph)
                return ch;
        }
        return 0;
    }

private:
    const EmbeddedFont& face_;
    QList<uint> text_;
    bool in_order_;
};

} // namespace

PagePaintEngine::PagePaintEngine(PageTarget& target) : QPaintEngine(features()), target_(target) {}

bool PagePaintEngine::begin(QPaintDevice*) {
    font_.reset();
    text_font_.reset();
    clip_ = {};
    has_clip_ = false;
    clip_enabled_ = false;
    clip_changed_ = false;
    pen_ = QPen();
    brush_ = QBrush();
    transform_.reset();
    opacity_ = 1.0;
    const bool started = target_.begin();
    setActive(started);
    return started;
}

bool PagePaintEngine::end() {
    setActive(false);
    text_font_.reset();
    return target_.end();
}

void PagePaintEngine::updateState(const QPaintEngineState& now) {
    const QPaintEngine::DirtyFlags changed = now.state();
    if (changed & DirtyTransform)
        transform_ = now.transform();
    if (changed & DirtyPen)
        pen_ = now.pen();
    if (changed & DirtyBrush)
        brush_ = now.brush();
    if (changed & DirtyOpacity)
        opacity_ = now.opacity();
    if (changed & (DirtyClipPath | DirtyClipRegion | DirtyClipEnabled))
        update_clip(now);
}

void PagePaintEngine::update_clip(const QPaintEngineState& now) {
    if (now.state() & DirtyClipEnabled)
        clip_enabled_ = now.isClipEnabled();
    if (now.state() & DirtyClipPath)
        clip_to(transform_.map(now.clipPath()), now.clipOperation());
    if (now.state() & DirtyClipRegion) {
        QPainterPath path;
        path.addRegion(now.clipRegion());
        clip_to(transform_.map(path), now.clipOperation());
    }
    clip_changed_ = true;
}

void PagePaintEngine::clip_to(const QPainterPath& device_path, Qt::ClipOperation operation) {
    clip_ =
        operation == Qt::IntersectClip && has_clip_ ? clip_.intersected(device_path) : device_path;
    has_clip_ = operation != Qt::NoClip;
    clip_enabled_ = has_clip_;
}

/// The page to draw on, with the painter's clip; null when the document takes nothing any more.
PageWriter* PagePaintEngine::clipped_page() {
    PageDocument* document = target_.document();
    if (!document)
        return nullptr;
    document->settle();
    // A new page starts without a clip.
    if (clip_changed_ || document->page().clipped() != clip_enabled_) {
        if (clip_enabled_)
            document->page().set_clip(clip_);
        else
            document->page().clear_clip();
        clip_changed_ = false;
    }
    return &document->page();
}

void PagePaintEngine::unclip() {
    if (PageDocument* document = target_.document())
        document->page().clear_clip();
}

void PagePaintEngine::draw(const QPainterPath& path, bool filled) {
    PageWriter* page = clipped_page();
    // A singular transformation leaves nothing to see.
    if (!page || !transform_.isInvertible())
        return;
    const QPainterPath device_path = transform_.map(path);
    if (filled && brush_.style() != Qt::NoBrush)
        page->fill(device_path, faded(brush_.color(), opacity_));
    QPen pen = pen_;
    pen.setColor(faded(pen.color(), opacity_));
    page->stroke(device_path, pen, transform_);
}

void PagePaintEngine::drawPath(const QPainterPath& path) {
    draw(path, true);
}

void PagePaintEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    QPainterPath path(points[0]);
    for (int i = 1; i < count; ++i)
        path.lineTo(points[i]);
    if (mode != PolylineMode)
        path.closeSubpath();
    path.setFillRule(mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
    draw(path, mode != PolylineMode);
}

void PagePaintEngine::drawPixmap(const QRectF& target, const QPixmap& pixmap,
                                 const QRectF& source) {
    drawImage(target, pixmap.toImage(), source, Qt::AutoColor);
}

void PagePaintEngine::drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                                Qt::ImageConversionFlags) {
    PageWriter* page = clipped_page();
    const QImage part = image.copy(source.toAlignedRect());
    if (!page || part.isNull() || !transform_.isInvertible())
        return;
    const QTransform fit(target.width() / part.width(), 0, 0, target.height() / part.height(),
                         target.x(), target.y());
    page->image(faded(part, opacity_), fit * transform_);
}

TextFont* PagePaintEngine::text_font(const QFont& font) {
    PageDocument* document = target_.document();
    if (!document)
        return nullptr;
    if (text_font_ && font_ && *font_ == font)
        return text_font_.get();
    if (!TextFont::can_load(font)) {
        document->fail(QStringLiteral("no font can be loaded for \"%1\"").arg(font.family()));
        return nullptr;
    }
    font_ = font;
    text_font_ = std::make_unique<TextFont>(document->fonts(), font, target_.resolution());
    return text_font_.get();
}

void PagePaintEngine::show_codes(const TextFont& font, int encoding, std::string_view codes,
                                 QPointF baseline, const QTransform& transform,
                                 const QColor& color) {
    PageDocument* document = target_.document();
    if (!document || codes.empty() || !transform.isInvertible())
        return;
    const QTransform direction(transform.m11(), transform.m12(), transform.m21(), transform.m22(),
                               0, 0);
    const QTransform matrix = font.matrix() * direction;
    const QPointF start = transform.map(baseline);
    if (font.thickening() > 0)
        document->page().show_thick(font.face(), encoding, matrix, start, codes, color,
                                    font.thickening());
    else
        document->page().show(font.face(), encoding, matrix, start, codes, color);
    document->settle();
}

void PagePaintEngine::show_fixed(const TextFont& font, std::string_view codes, QPointF baseline,
                                 const QTransform& transform, const QColor& color) {
    const size_t first = codes.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return;
    const size_t last = codes.find_last_not_of(' ');
    baseline.rx() += static_cast<double>(first) * font.pitch();
    show_codes(font, 0, codes.substr(first, last - first + 1), baseline, transform, color);
}

void PagePaintEngine::show(const TextFont& font, const std::vector<ShapedGlyph>& glyphs,
                           QPointF baseline, const QTransform& transform, const QColor& color) {
    std::string codes;
    int encoding = 0;
    QPointF start;
    QPointF pen;
    const auto flush = [&] {
        show_codes(font, encoding, codes, baseline + start, transform, color);
        codes.clear();
    };
    for (const ShapedGlyph& glyph : glyphs) {
        if (glyph.ch == U' ' && codes.empty())
            continue;
        const GlyphCode code = font.face().encode(glyph.glyph, glyph.ch);
        const QPointF off = glyph.position - pen;
        if (!codes.empty() &&
            (code.encoding != encoding || std::abs(off.x()) > position_tolerance ||
             std::abs(off.y()) > position_tolerance))
            flush();
        if (codes.empty()) {
            start = glyph.position;
            pen = glyph.position;
        }
        encoding = code.encoding;
        codes.push_back(code.code);
        pen.rx() += glyph.advance;
    }
    while (!codes.empty() && encoding == 0 && codes.back() == ' ')
        codes.pop_back();
    flush();
}

void PagePaintEngine::drawTextItem(const QPointF& p, const QTextItem& item) {
    const QString text = item.text().normalized(QString::NormalizationForm_C);
    if (text.isEmpty()) {
        // Glyphs without a text: Qt turns them into shapes.
        QPaintEngine::drawTextItem(p, item);
        return;
    }
    const QFont font = item.font();
    TextFont* shaped = text_font(font);
    if (!shaped || !clipped_page())
        return;
    if (item.renderFlags() & QTextItem::RightToLeft || TextFont::needs_layout(font) ||
        !shaped->covers(text)) {
        draw_layout(p, text, font);
        return;
    }
    std::string codes;
    if (shaped->pitch() > 0 && shaped->fixed_codes(text, codes)) {
        show_fixed(*shaped, codes, p, transform_, faded(pen_.color(), opacity_));
        return;
    }
    std::vector<ShapedGlyph> glyphs;
    shaped->shape(text, glyphs);
    show(*shaped, glyphs, p, transform_, faded(pen_.color(), opacity_));
}

/// Shows the text as Qt's own layout shapes it, with as many fonts as that needs.
void PagePaintEngine::draw_layout(const QPointF& p, const QString& text, const QFont& font) {
    if (font.stretch() != QFont::AnyStretch && font.stretch() != QFont::Unstretched) {
        draw_outlines(p, text, font);
        return;
    }
    QTextLayout layout(text, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    PageDocument* document = target_.document();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    for (const QGlyphRun& run : runs) {
        QFont run_font = font;
        run_font.setFamilies({run.rawFont().familyName()});
        const TextFont shaped(document->fonts(), run.rawFont(), run_font, target_.resolution());
        std::vector<ShapedGlyph> glyphs;
        const QList<quint32> indexes = run.glyphIndexes();
        const QList<QPointF> positions = run.positions();
        const CharacterFinder characters(shaped.face(), text, indexes.size());
        for (qsizetype i = 0; i < indexes.size(); ++i)
            glyphs.push_back({indexes[i], characters.find(indexes[i], i),
                              positions[i] - QPointF(0, line.ascent()), shaped.width(indexes[i])});
        show(shaped, glyphs, p, transform_, faded(pen_.color(), opacity_));
    }
}

void PagePaintEngine::draw_outlines(const QPointF& p, const QString& text, const QFont& font) {
    QPainterPath path;
    path.addText(p, font, text);
    path.setFillRule(Qt::WindingFill);
    clipped_page()->fill(transform_.map(path), faded(pen_.color(), opacity_));
}

} // namespace printman
