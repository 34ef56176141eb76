#include <printman/render/itempainter.h>
#include <printman/render/textruler.h>
#include <printman/toolkit/pstext.h>

#include <QPainter>

namespace printman {

void ItemPainter::draw(const StringItem& item) {
    painter_.drawText(units_.logical(item.cell), alignment_flags(item.align), item.text);
}

void ItemPainter::draw_highlight(const StringItem& item) {
    painter_.drawText(item.drawn, alignment_flags(item.align), item.text);
}

void ItemPainter::draw_page(std::span<QValueList<StringItem>> rows) {
    const TextRuler ruler(painter_);
    PsText straight(painter_);
    for (QValueList<StringItem>& row : rows) {
        for (StringItem& item : row) {
            const QRect cell = units_.logical(item.cell);
            const int flags = alignment_flags(item.align);
            if (straight.prepare(item.text)) {
                const double left = TextRuler::left_edge(cell, flags, straight.width());
                item.drawn = ruler.bounding_rect(cell, flags, straight.width());
                straight.draw(QPointF(left, item.drawn.y() + ruler.ascent()));
            } else {
                item.drawn = ruler.bounding_rect(cell, flags, item.text);
                painter_.drawText(cell, flags, item.text);
            }
        }
    }
}

} // namespace printman
