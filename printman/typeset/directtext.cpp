#include <printman/typeset/directtext.h>
#include <printman/typeset/pagepaintengine.h>

#include <QPainter>

namespace printman {

namespace {

bool is_plain(const QPainter& p) {
    const QFont& font = p.font();
    return !p.hasClipping() && p.opacity() >= 1.0 &&
           p.compositionMode() == QPainter::CompositionMode_SourceOver &&
           p.pen().style() != Qt::NoPen && p.pen().brush().style() == Qt::SolidPattern &&
           p.backgroundMode() == Qt::TransparentMode && p.layoutDirection() != Qt::RightToLeft &&
           !font.underline() && !font.overline() && !font.strikeOut() &&
           !TextFont::needs_layout(font);
}

} // namespace

class DirectText::Private {
public:
    PagePaintEngine* engine = nullptr;
    TextFont* font = nullptr;
    QTransform transform;
    QColor color;
    std::string codes;
    std::vector<ShapedGlyph> glyphs;
    bool fixed = false;
    double width = 0.0;
};

DirectText::DirectText(QPainter& p) : d(std::make_unique<Private>()) {
    d->engine = dynamic_cast<PagePaintEngine*>(p.paintEngine());
    if (!d->engine || !is_plain(p))
        return;
    d->font = d->engine->text_font(p.font());
    d->transform = p.combinedTransform();
    d->color = p.pen().color();
}

DirectText::~DirectText() = default;

bool DirectText::prepare(const QString& text) {
    if (!d->font)
        return false;
    if (d->font->pitch() > 0) {
        d->fixed = d->font->fixed_codes(text, d->codes);
        d->width = d->font->pitch() * static_cast<double>(text.size());
        return d->fixed;
    }
    if (!d->font->covers(text))
        return false;
    d->width = d->font->shape(text, d->glyphs);
    return true;
}

double DirectText::width() const {
    return d->width;
}

bool DirectText::is_on_page() const {
    return d->engine != nullptr;
}

void DirectText::draw(QPointF baseline) {
    // Something drawn with the painter meanwhile may have left a clip.
    d->engine->unclip();
    if (d->fixed)
        d->engine->show_fixed(*d->font, d->codes, baseline, d->transform, d->color);
    else
        d->engine->show(*d->font, d->glyphs, baseline, d->transform, d->color);
}

} // namespace printman
