#include <printman/render/textruler.h>

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace printman {

namespace {

constexpr QChar soft_hyphen(0xad);
constexpr int last_ascii = 0x7e;
constexpr int first_upper = 0xa0;

bool is_printable_latin1(int c) {
    return (c >= 0x20 && c <= last_ascii) || c >= first_upper;
}

} // namespace

QString shown_text(const QString& text) {
    const auto is_replaced = [](QChar c) { return c == u'\t' || c == u'\r' || c == soft_hyphen; };
    if (std::none_of(text.begin(), text.end(), is_replaced))
        return text;
    QString shown = text;
    return shown.replace(u'\t', u' ').replace(u'\r', u' ').replace(soft_hyphen, u'-');
}

TextRuler::TextRuler(const QPainter& p)
    : metrics_(p.font(), p.device()), height_(p.fontMetrics().height()),
      ascent_(metrics_.ascent()) {
    const double advance = metrics_.horizontalAdvance(QLatin1Char('0'));
    if (metrics_.horizontalAdvance(QLatin1Char('i')) != advance ||
        metrics_.horizontalAdvance(QLatin1Char('W')) != advance)
        return;
    fixed_advance_ = advance;
    for (int c = 0; c < 256; ++c)
        fixed_[c] = is_printable_latin1(c) && metrics_.horizontalAdvance(QChar(c)) == advance;
    // Spacing is added between characters, not to each.
    const QFont& font = p.font();
    if (font.letterSpacing() != 0.0 || font.wordSpacing() != 0.0)
        fixed_advance_ = 0.0;
}

double TextRuler::width(const QString& text) const {
    const bool fixed =
        fixed_advance_ > 0.0 && std::all_of(text.begin(), text.end(), [this](QChar c) {
            return c.unicode() < 256 && fixed_[c.unicode()];
        });
    if (fixed)
        return fixed_advance_ * static_cast<double>(text.size());
    return metrics_.horizontalAdvance(shown_text(text));
}

double TextRuler::left_edge(const QRect& cell, int flags, double width) {
    if (flags & Qt::AlignRight)
        return cell.x() + cell.width() - width;
    if (flags & Qt::AlignHCenter)
        return cell.x() + (cell.width() - width) / 2;
    return cell.x();
}

QRect TextRuler::bounding_rect(const QRect& cell, int flags, double width) const {
    const double left = left_edge(cell, flags, width);
    const int x = static_cast<int>(std::floor(left));
    int y = cell.y();
    if (flags & Qt::AlignVCenter)
        y += (cell.height() - height_) / 2;
    else if (flags & Qt::AlignBottom)
        y += cell.height() - height_;
    return QRect(x, y, static_cast<int>(std::ceil(left + width)) - x, height_);
}

QRect TextRuler::bounding_rect(const QRect& cell, int flags, const QString& text) const {
    return bounding_rect(cell, flags, width(text));
}

int alignment_flags(int code) {
    switch (code) {
    case 3:
        return Qt::AlignRight | Qt::AlignVCenter;
    case 4:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

} // namespace printman
