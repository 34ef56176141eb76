#include <printman/render/pageunits.h>
#include <printman/render/screenview.h>
#include <printman/render/textruler.h>
#include <printman/report/pagerows.h>
#include <printman/select/dragarea.h>
#include <printman/select/highlights.h>
#include <printman/select/itemcutter.h>

#include <QPainter>

#include <algorithm>
#include <utility>

namespace printman {

/// Calls @p paint with a painter on the page image, if there is one, and shows the image.
template <typename Paint>
void Highlights::change_image(const Paint& paint) {
    QPainter p;
    if (!screen_.begin_change(p))
        return;
    paint(p);
    p.end();
    screen_.show_image();
}

/// The pieces of the page that a drag covers; none when the page is not on screen.
HighlightSet::Records Highlights::pieces_under(QPoint from, QPoint to) {
    HighlightSet::Records pieces;
    QPainter p;
    if (!screen_.begin_change(p) || !screen_.shows(rows_))
        return pieces;
    const ScreenView::Painted& page = screen_.painted();
    const auto area = drag_area(from, to, page.margin, units_, page.grid.columns);
    const TextRuler ruler(p);
    const ItemCutter cutter(ruler);
    for (int row = 0; row < rows_.size(); ++row) {
        for (const StringItem& item : rows_.row(row)) {
            StringItem piece;
            const bool hit = std::any_of(area.begin(), area.end(), [&](const QRect& rectangle) {
                return cutter.cut(rectangle, item, piece);
            });
            if (!hit)
                continue;
            piece.source_text = item.text;
            piece.source_cell = item.cell;
            piece.source_align = item.align;
            pieces.push_back(std::move(piece));
        }
    }
    return pieces;
}

HighlightSet::Pointers Highlights::replace(QPoint from, QPoint to) {
    HighlightSet::Pointers fresh = set_.replace(pieces_under(from, to));
    match_.reset();
    shows_all_ = false;
    return fresh;
}

void Highlights::follow(QPoint from, QPoint to) {
    const HighlightSet::Pointers fresh_pieces = replace(from, to);
    QPainter p;
    if (!screen_.begin_change(p))
        return;
    set_.add_gaps();
    shows_all_ = true;
    const std::vector<QRect> fresh_gaps = set_.keep_gaps();
    const bool is_same = fresh_pieces.empty() && fresh_gaps.empty() &&
                         set_.waiting_pieces().empty() && set_.waiting_gaps().empty();
    if (is_same)
        return;
    painter_.paint_changes(p, set_, fresh_pieces, fresh_gaps);
    p.end();
    set_.forget_waiting();
    screen_.show_image();
}

void Highlights::show(bool merge) {
    if (list().empty())
        return;
    shows_all_ = true;
    change_image([&](QPainter& p) {
        if (merge)
            set_.add_gaps();
        painter_.paint(p, set_);
    });
}

void Highlights::repaint(QPainter& p) {
    if (shows_all_)
        painter_.paint(p, set_);
    else if (const StringItem* match = match_.current())
        painter_.paint(p, *match);
}

void Highlights::unshow() {
    if (set_.waiting_pieces().empty())
        return;
    change_image([&](QPainter& p) {
        // Gaps first: each covers the first pixels of the piece after it.
        painter_.restore(p, set_.waiting_gaps());
        painter_.restore(p, set_.waiting_pieces());
    });
    set_.forget_waiting();
}

void Highlights::clear() {
    set_.replace({});
    unshow();
    forget();
}

void Highlights::forget() {
    set_.clear();
    match_.reset();
    shows_all_ = false;
}

bool Highlights::first_match() {
    if (!match_.first())
        return false;
    show_match();
    return true;
}

bool Highlights::next_match() {
    if (!match_.next()) {
        clear();
        return false;
    }
    unshow_matches();
    show_match();
    return true;
}

void Highlights::show_match() {
    const StringItem* const match = match_.current();
    if (!match)
        return;
    change_image([&](QPainter& p) { painter_.paint(p, *match); });
    const QRect place = match->drawn;
    screen_.ensure_visible(QPoint(place.right() + 1, place.bottom() + 1));
}

void Highlights::unshow_matches() {
    if (list().empty())
        return;
    change_image([&](QPainter& p) {
        shows_all_ = false;
        painter_.restore(p, list());
    });
}

} // namespace printman
