#include <printman/manager/printmanprivate.h>
#include <printman/render/textruler.h>
#include <printman/select/itemcutter.h>
#include <printman/select/pagesearch.h>

#include <QPainter>

// The facade's functions for selection and for the search of the shown page.

using namespace printman;

int CPrintMan::item_left(QPainter* painter, const StringItem& item, int width, StringItem& out) {
    return painter && ItemCutter(TextRuler(*painter)).left(item, width, out);
}

int CPrintMan::item_right(QPainter* painter, const StringItem& item, int width, StringItem& out) {
    return painter && ItemCutter(TextRuler(*painter)).right(item, width, out);
}

int CPrintMan::item_center(QPainter* painter, const StringItem& item, int start, int width,
                           StringItem& out) {
    if (!painter)
        return 0;
    ItemCutter(TextRuler(*painter)).centre(item, start, width, out);
    return 1;
}

int CPrintMan::get_stringitem(QPainter* painter, const QRect& sel, const StringItem& item,
                              StringItem& out) {
    return painter && ItemCutter(TextRuler(*painter)).cut(sel, item, out);
}

void CPrintMan::collect_hilights(const QPoint& from, const QPoint& to) {
    d->highlights.collect(from, to);
}

void CPrintMan::show_page_hilights(bool merge) {
    d->highlights.show(merge);
}

void CPrintMan::unshow_page_hilights() {
    d->highlights.unshow();
}

void CPrintMan::clear_hilights() {
    d->highlights.clear();
}

void CPrintMan::keep_hilight(StringItem& rec) {
    d->highlights.keep(rec);
}

void CPrintMan::keep_himergerect(QRect& r) {
    d->highlights.keep_gap(r);
}

int CPrintMan::find_string_item(const QString& text, bool forward, bool case_sensitive,
                                bool whole_word) {
    return d->screen_search.find_matches(text, {forward, case_sensitive, whole_word});
}

int CPrintMan::get_stringitems(QPainter* painter, const QString& text, const StringItem& item,
                               bool forward, bool case_sensitive, bool whole_word) {
    if (!painter)
        return 0;
    SearchPattern pattern(text, {forward, case_sensitive, whole_word});
    std::list<StringItem> matches;
    const bool has_text = find_in_item(TextRuler(*painter), pattern, item, matches);
    d->highlights.append(std::move(matches));
    return has_text;
}

int CPrintMan::first_item_hilight() {
    return d->highlights.first_match();
}

int CPrintMan::next_item_hilight() {
    return d->highlights.next_match();
}

void CPrintMan::show_item_hilight() {
    d->highlights.show_match();
}

void CPrintMan::unshow_item_hilight() {
    d->highlights.unshow_matches();
}

const std::list<StringItem>& CPrintMan::hilights() const {
    return d->highlights.list();
}

void CPrintMan::mouse_press(const QPoint& p) {
    clear_hilights();
    d->press = p;
}

void CPrintMan::mouse_move(const QPoint& p) {
    scroll_rpt_view(p);
    if (d->press.isNull())
        return;
    d->highlights.follow(d->press, p);
}

void CPrintMan::mouse_release(const QPoint& p) {
    if (p == d->press) {
        clear_hilights();
        d->press = QPoint();
        return;
    }
    if (d->press.isNull())
        return;
    collect_hilights(d->press, p);
    // In this order what is un-shown also takes gaps away that were shown during the drag.
    show_page_hilights(true);
    unshow_page_hilights();
}

void CPrintMan::search_text() {
    if (d->screen.scroll())
        d->search.run(d->screen_search);
}
