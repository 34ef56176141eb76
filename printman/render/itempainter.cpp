#include <printman/render/itempainter.h>
#include <printman/render/textruler.h>
#include <printman/typeset/directtext.h>

#include <QPainter>

namespace printman {

namespace {

/// The flags for drawing a text in its cell. It has a cell for each character and so fits; rounding
/// in a scaled painter may make it slightly wider, which must not cut off its first or last
/// character.
int cell_flags(const StringItem& item) {
    const int flags = alignment_flags(item.align);
    return item.text.size() <= item.cell.width() ? flags | Qt::TextDontClip : flags;
}

} // namespace

void ItemPainter::draw(const StringItem& item) {
    painter_.drawText(units_.logical(item.cell), cell_flags(item), shown_text(item.text));
}

void ItemPainter::draw_highlight(const StringItem& item) {
    painter_.drawText(item.drawn, alignment_flags(item.align) | Qt::TextDontClip,
                      shown_text(item.text));
}

void ItemPainter::draw_page(std::span<QValueList<StringItem>> rows) {
    const TextRuler ruler(painter_);
    DirectText straight(painter_);
    for (QValueList<StringItem>& row : rows) {
        for (StringItem& item : row) {
            const QRect cell = units_.logical(item.cell);
            const int flags = alignment_flags(item.align);
            const QString text = shown_text(item.text);
            const bool is_straight = straight.prepare(text);
            const double width = is_straight ? straight.width() : ruler.width(text);
            item.drawn = ruler.bounding_rect(cell, flags, width);
            const QPointF baseline(TextRuler::left_edge(cell, flags, width),
                                   item.drawn.y() + ruler.ascent());
            if (is_straight)
                straight.draw(baseline);
            else if (straight.is_on_page())
                painter_.drawText(baseline, text);
            else
                painter_.drawText(cell, cell_flags(item), text);
        }
    }
}

} // namespace printman
