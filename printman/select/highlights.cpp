#include <printman/render/itempainter.h>
#include <printman/render/pageunits.h>
#include <printman/render/screenview.h>
#include <printman/render/textruler.h>
#include <printman/report/pagerows.h>
#include <printman/select/dragarea.h>
#include <printman/select/geometry.h>
#include <printman/select/highlights.h>
#include <printman/select/itemcutter.h>
#include <printman/select/recordindex.h>

#include <QPainter>

#include <algorithm>

namespace printman {

namespace {

void erase_drawn_at(std::list<StringItem>& records, const QRect& place) {
    const auto at =
        std::find_if(records.begin(), records.end(),
                     [&place](const StringItem& record) { return record.drawn == place; });
    if (at != records.end())
        records.erase(at);
}

StringItem source_of(const StringItem& record) {
    StringItem source;
    source.text = record.source_text;
    source.cell = record.source_cell;
    source.align = static_cast<int16_t>(record.source_align);
    return source;
}

StringItem gap_between(const QRect& left, const QRect& right) {
    StringItem gap;
    gap.drawn = merge_rect(left, right);
    gap.cell = right;
    return gap;
}

void fill(QPainter& p, const QRect& place, const QColor& color) {
    if (!place.isEmpty())
        p.fillRect(place, color);
}

} // namespace

void Highlights::collect(QPoint from, QPoint to) {
    previous_ = std::move(list_);
    previous_gaps_ = std::move(gaps_);
    list_.clear();
    gaps_.clear();
    fresh_.clear();
    current_ = list_.end();
    all_shown_ = false;
    QPainter p;
    if (!screen_.begin_change(p) || !screen_.shows(rows_))
        return;
    const ScreenView::Painted& page = screen_.painted();
    const auto area = drag_area(from, to, page.margin, units_, page.grid.columns);
    const TextRuler ruler(p);
    const ItemCutter cutter(ruler);
    RecordIndex waiting(previous_);
    RecordIndex waiting_gaps(previous_gaps_);
    for (int row = 0; row < rows_.size(); ++row) {
        for (const StringItem& item : rows_.row(row)) {
            StringItem record;
            const bool hit = std::any_of(area.begin(), area.end(), [&](const QRect& rectangle) {
                return cutter.cut(rectangle, item, record);
            });
            if (!hit)
                continue;
            record.source_text = item.text;
            record.source_cell = item.cell;
            record.source_align = item.align;
            const bool is_kept = waiting.erase(record.drawn);
            waiting_gaps.erase(record.drawn);
            list_.push_back(std::move(record));
            if (!is_kept)
                fresh_.push_back(&list_.back());
        }
    }
}

void Highlights::keep(const StringItem& record) {
    erase_drawn_at(previous_, record.drawn);
    keep_gap(record.drawn);
}

void Highlights::keep_gap(const QRect& gap) {
    erase_drawn_at(previous_gaps_, gap);
}

void Highlights::add_gaps() {
    if (list_.empty())
        return;
    for (auto left = list_.begin(), right = std::next(left); right != list_.end(); left = right++) {
        if (right->drawn.top() == left->drawn.top())
            gaps_.push_back(gap_between(left->drawn, right->drawn));
    }
}

void Highlights::follow(QPoint from, QPoint to) {
    collect(from, to);
    QPainter p;
    if (!screen_.begin_change(p))
        return;
    add_gaps();
    all_shown_ = true;
    RecordIndex waiting_gaps(previous_gaps_);
    std::vector<QRect> fresh;
    for (const StringItem& gap : gaps_) {
        if (!waiting_gaps.erase(gap.drawn))
            fresh.push_back(gap.drawn);
    }
    for (const StringItem* record : fresh_)
        fresh.push_back(record->drawn);
    if (fresh.empty() && previous_.empty() && previous_gaps_.empty())
        return;
    restore(p, previous_gaps_);
    restore(p, previous_);
    paint_changes(p, fresh);
    p.end();
    previous_.clear();
    screen_.show_image();
}

void Highlights::paint_changes(QPainter& p, const std::vector<QRect>& fresh) {
    PlacesByLine gone(units_.line_height());
    for (const Records* records : {&previous_gaps_, &previous_}) {
        for (const StringItem& record : *records)
            gone.add(record.drawn);
    }
    PlacesByLine blackened(units_.line_height());
    p.setClipping(false);
    for (const QRect& place : fresh) {
        fill(p, place, Qt::black);
        blackened.add(place);
    }
    for (const Records* records : {&gaps_, &list_}) {
        for (const StringItem& record : *records) {
            for (const QRect& place : gone.beside(record.drawn))
                fill(p, record.drawn & place, Qt::black);
        }
    }
    p.setPen(Qt::white);
    auto next_fresh = fresh_.begin();
    for (const StringItem& record : list_) {
        if (next_fresh != fresh_.end() && *next_fresh == &record) {
            draw_text(p, record, record.drawn);
            ++next_fresh;
            continue;
        }
        // Of a piece that was there before, only what was painted over.
        for (const PlacesByLine* places : {&gone, &blackened}) {
            for (const QRect& place : places->beside(record.drawn))
                draw_text(p, record, record.drawn & place);
        }
    }
}

void Highlights::draw_text(QPainter& p, const StringItem& record, const QRect& place) {
    if (place.isEmpty())
        return;
    // The text's ink may not leave the place that is restored later.
    p.setClipRect(place);
    ItemPainter(p, units_).draw_highlight(record);
}

void Highlights::show(bool merge) {
    if (list_.empty())
        return;
    all_shown_ = true;
    QPainter p;
    if (!screen_.begin_change(p))
        return;
    if (merge)
        add_gaps();
    repaint(p);
    p.end();
    screen_.show_image();
}

void Highlights::repaint(QPainter& p) {
    if (!all_shown_) {
        if (current_ != list_.end())
            repaint(p, *current_);
        return;
    }
    for (const StringItem& gap : gaps_)
        fill(p, gap.drawn, Qt::black);
    for (const StringItem& record : list_)
        fill(p, record.drawn, Qt::black);
    p.setPen(Qt::white);
    for (const StringItem& record : list_)
        draw_text(p, record, record.drawn);
}

void Highlights::repaint(QPainter& p, const StringItem& record) {
    fill(p, record.drawn, Qt::black);
    p.setPen(Qt::white);
    draw_text(p, record, record.drawn);
}

void Highlights::restore(QPainter& p, const QRect& place, const StringItem* record) {
    if (place.isEmpty())
        return;
    p.setClipRect(place);
    p.fillRect(place, screen_.painted().colors.page);
    p.setPen(screen_.painted().colors.text);
    bool has_source = false;
    if (screen_.shows(rows_)) {
        const int line = place.center().y() / std::max(1, units_.line_height());
        draw_items(p, line - 1, place, record);
        has_source = draw_items(p, line, place, record);
        draw_items(p, line + 1, place, record);
    }
    if (record && !has_source)
        ItemPainter(p, units_).draw(source_of(*record));
}

bool Highlights::draw_items(QPainter& p, int line, const QRect& place,
                            const StringItem* source_of) {
    // What hangs over from a neighbour was hidden too.
    const int overhang = std::max(1, units_.line_height() / 4);
    const QRect reach = place.adjusted(-overhang, -overhang, overhang, overhang);
    ItemPainter painter(p, units_);
    bool has_source = false;
    for (const StringItem& item : rows_.row(line)) {
        if (!item.drawn.intersects(reach) ||
            (item.drawn.bottom() < place.top() && !ink_.below(item.text)) ||
            (item.drawn.top() > place.bottom() && !ink_.above(item.text)) ||
            (item.drawn.right() < place.left() && !ink_.behind(item.text)) ||
            (item.drawn.left() > place.right() && !ink_.before(item.text)))
            continue;
        painter.draw(item);
        has_source |= source_of && item.cell == source_of->source_cell;
    }
    return has_source;
}

void Highlights::restore(QPainter& p, const Records& records) {
    ink_.measure(p);
    for (const StringItem& record : records)
        restore(p, record.drawn, record.source_text.isEmpty() ? nullptr : &record);
}

void Highlights::unshow() {
    if (previous_.empty())
        return;
    QPainter p;
    if (screen_.begin_change(p)) {
        // A gap covers the first pixels of the piece behind it.
        restore(p, previous_gaps_);
        restore(p, previous_);
        p.end();
        screen_.show_image();
    }
    previous_.clear();
}

void Highlights::clear() {
    previous_ = list_;
    previous_gaps_ = gaps_;
    unshow();
    forget();
}

void Highlights::forget() {
    list_.clear();
    previous_.clear();
    gaps_.clear();
    previous_gaps_.clear();
    current_ = list_.end();
    all_shown_ = false;
}

void Highlights::append(std::list<StringItem> matches) {
    list_.splice(list_.end(), matches);
}

bool Highlights::first_match() {
    if (list_.empty())
        return false;
    current_ = list_.begin();
    show_match();
    return true;
}

bool Highlights::next_match() {
    if (current_ != list_.end())
        ++current_;
    if (current_ == list_.end()) {
        clear();
        return false;
    }
    unshow_matches();
    show_match();
    return true;
}

void Highlights::show_match() {
    if (current_ == list_.end())
        return;
    QPainter p;
    if (screen_.begin_change(p)) {
        repaint(p, *current_);
        p.end();
        screen_.show_image();
    }
    const QRect place = current_->drawn;
    screen_.ensure_visible(QPoint(place.right() + 1, place.bottom() + 1));
}

void Highlights::unshow_matches() {
    QPainter p;
    if (list_.empty() || !screen_.begin_change(p))
        return;
    all_shown_ = false;
    restore(p, list_);
    p.end();
    screen_.show_image();
}

} // namespace printman
