#include <printman/select/inkoverhang.h>

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace printman {

void InkOverhang::measure(const QPainter& p) {
    const double scale = std::abs(p.deviceTransform().m22());
    // A glyph that is drawn scaled is hinted differently from the one that is measured.
    const double slack = 1 + (scale > 0 ? 1 / scale : 1);
    if (slack == slack_ && p.font() == font_)
        return;
    font_ = p.font();
    slack_ = slack;
    const QFontMetricsF metrics(font_, p.device());
    for (int c = 0; c < 256; ++c) {
        const QRectF ink = metrics.tightBoundingRect(QString(QChar(c)));
        before_[c] = !ink.isEmpty() && ink.left() < slack;
        after_[c] = !ink.isEmpty() && ink.right() > metrics.horizontalAdvance(QChar(c)) - slack;
        above_[c] = !ink.isEmpty() && ink.top() < slack - metrics.ascent();
        below_[c] = !ink.isEmpty() && ink.bottom() > metrics.descent() - slack;
    }
}

bool InkOverhang::any(const Table& table, const QString& text) {
    return std::any_of(text.begin(), text.end(), [&table](QChar c) {
        return c.unicode() >= table.size() || table[c.unicode()];
    });
}

} // namespace printman
