#include <printman/render/itempainter.h>
#include <printman/render/pageunits.h>
#include <printman/render/screenview.h>
#include <printman/report/pagerows.h>
#include <printman/select/highlightpainter.h>
#include <printman/select/recordindex.h>

#include <QPainter>

#include <algorithm>

namespace printman {

namespace {

/// The item that a piece was cut from.
StringItem source_of(const StringItem& piece) {
    StringItem source;
    source.text = piece.source_text;
    source.cell = piece.source_cell;
    source.align = static_cast<int16_t>(piece.source_align);
    return source;
}

void fill(QPainter& p, const QRect& place, const QColor& color) {
    if (!place.isEmpty())
        p.fillRect(place, color);
}

void add_places(PlacesByLine& places, const HighlightSet::Records& records) {
    for (const StringItem& record : records)
        places.add(record.drawn);
}

/// Blackens the parts of @p records that lie on one of the @p places.
void blacken(QPainter& p, const HighlightSet::Records& records, const PlacesByLine& places) {
    for (const StringItem& record : records) {
        for (const QRect& place : places.beside(record.drawn))
            fill(p, record.drawn & place, Qt::black);
    }
}

} // namespace

void HighlightPainter::draw_text(QPainter& p, const StringItem& piece, const QRect& place) const {
    if (place.isEmpty())
        return;
    // The text's ink may not leave the place that is restored later.
    p.setClipRect(place);
    ItemPainter(p, units_).draw_highlight(piece);
}

void HighlightPainter::paint(QPainter& p, const StringItem& piece) {
    fill(p, piece.drawn, Qt::black);
    p.setPen(Qt::white);
    draw_text(p, piece, piece.drawn);
}

void HighlightPainter::paint(QPainter& p, const HighlightSet& set) {
    for (const StringItem& gap : set.gaps())
        fill(p, gap.drawn, Qt::black);
    for (const StringItem& piece : set.pieces())
        fill(p, piece.drawn, Qt::black);
    p.setPen(Qt::white);
    for (const StringItem& piece : set.pieces())
        draw_text(p, piece, piece.drawn);
}

void HighlightPainter::paint_changes(QPainter& p, const HighlightSet& set,
                                     const HighlightSet::Pointers& fresh_pieces,
                                     const std::vector<QRect>& fresh_gaps) {
    restore(p, set.waiting_gaps());
    restore(p, set.waiting_pieces());
    PlacesByLine restored(units_.line_height());
    add_places(restored, set.waiting_gaps());
    add_places(restored, set.waiting_pieces());
    PlacesByLine blackened(units_.line_height());
    p.setClipping(false);
    const auto blacken_fresh = [&](const QRect& place) {
        fill(p, place, Qt::black);
        blackened.add(place);
    };
    for (const QRect& gap : fresh_gaps)
        blacken_fresh(gap);
    for (const StringItem* piece : fresh_pieces)
        blacken_fresh(piece->drawn);
    blacken(p, set.gaps(), restored);
    blacken(p, set.pieces(), restored);
    p.setPen(Qt::white);
    auto next_fresh = fresh_pieces.begin();
    for (const StringItem& piece : set.pieces()) {
        if (next_fresh != fresh_pieces.end() && *next_fresh == &piece) {
            draw_text(p, piece, piece.drawn);
            ++next_fresh;
            continue;
        }
        // Of a piece that was painted before, only the parts that were painted over.
        for (const PlacesByLine* places : {&restored, &blackened}) {
            for (const QRect& place : places->beside(piece.drawn))
                draw_text(p, piece, piece.drawn & place);
        }
    }
}

void HighlightPainter::restore(QPainter& p, const Records& records) {
    ink_.measure(p);
    for (const StringItem& record : records)
        restore(p, record.drawn, record.source_text.isEmpty() ? nullptr : &record);
}

/// Restores the page at @p place.
///
/// @param piece the piece that is there; null for a gap
void HighlightPainter::restore(QPainter& p, const QRect& place, const StringItem* piece) const {
    if (place.isEmpty())
        return;
    p.setClipRect(place);
    p.fillRect(place, screen_.painted().colors.page);
    p.setPen(screen_.painted().colors.text);
    bool has_source = false;
    if (screen_.shows(rows_)) {
        const int line = place.center().y() / std::max(1, units_.line_height());
        draw_items(p, line - 1, place, piece);
        has_source = draw_items(p, line, place, piece);
        draw_items(p, line + 1, place, piece);
    }
    if (piece && !has_source)
        ItemPainter(p, units_).draw(source_of(*piece));
}

/// Draws the items of a line that may have ink in @p place.
///
/// @return whether the source of @p piece is one of them
bool HighlightPainter::draw_items(QPainter& p, int line, const QRect& place,
                                  const StringItem* piece) const {
    // The ink of a neighbour that reaches in was hidden too.
    const int overhang = std::max(1, units_.line_height() / 4);
    const QRect reach = place.adjusted(-overhang, -overhang, overhang, overhang);
    ItemPainter painter(p, units_);
    bool has_source = false;
    for (const StringItem& item : rows_.row(line)) {
        if (!item.drawn.intersects(reach) ||
            (item.drawn.bottom() < place.top() && !ink_.below(item.text)) ||
            (item.drawn.top() > place.bottom() && !ink_.above(item.text)) ||
            (item.drawn.right() < place.left() && !ink_.after(item.text)) ||
            (item.drawn.left() > place.right() && !ink_.before(item.text)))
            continue;
        painter.draw(item);
        has_source |= piece && item.cell == piece->source_cell;
    }
    return has_source;
}

} // namespace printman
