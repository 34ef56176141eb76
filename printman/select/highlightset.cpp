#include <printman/select/geometry.h>
#include <printman/select/highlightset.h>
#include <printman/select/recordindex.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace printman {

namespace {

void erase_drawn_at(std::list<StringItem>& records, const QRect& place) {
    const auto at =
        std::find_if(records.begin(), records.end(),
                     [&place](const StringItem& record) { return record.drawn == place; });
    if (at != records.end())
        records.erase(at);
}

StringItem gap_between(const QRect& left, const QRect& right) {
    StringItem gap;
    gap.drawn = merge_rect(left, right);
    gap.cell = right;
    return gap;
}

} // namespace

HighlightSet::Pointers HighlightSet::replace(Records pieces) {
    waiting_pieces_ = std::exchange(pieces_, std::move(pieces));
    waiting_gaps_ = std::exchange(gaps_, {});
    RecordIndex waiting_pieces(waiting_pieces_);
    RecordIndex waiting_gaps(waiting_gaps_);
    Pointers fresh;
    for (const StringItem& piece : pieces_) {
        if (!waiting_pieces.erase(piece.drawn))
            fresh.push_back(&piece);
        waiting_gaps.erase(piece.drawn);
    }
    return fresh;
}

void HighlightSet::add_gaps() {
    if (pieces_.empty())
        return;
    for (auto left = pieces_.begin(), right = std::next(left); right != pieces_.end();
         left = right++) {
        if (right->drawn.top() == left->drawn.top())
            gaps_.push_back(gap_between(left->drawn, right->drawn));
    }
}

std::vector<QRect> HighlightSet::keep_gaps() {
    RecordIndex waiting(waiting_gaps_);
    std::vector<QRect> fresh;
    for (const StringItem& gap : gaps_) {
        if (!waiting.erase(gap.drawn))
            fresh.push_back(gap.drawn);
    }
    return fresh;
}

void HighlightSet::keep(const QRect& place) {
    erase_drawn_at(waiting_pieces_, place);
    keep_gap(place);
}

void HighlightSet::keep_gap(const QRect& place) {
    erase_drawn_at(waiting_gaps_, place);
}

void HighlightSet::forget_waiting() {
    waiting_pieces_.clear();
    waiting_gaps_.clear();
}

void HighlightSet::clear() {
    pieces_.clear();
    gaps_.clear();
    forget_waiting();
}

} // namespace printman
