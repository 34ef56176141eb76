#include <printman/dialogs/kscolordlg.h>
#include <printman/manager/printmanprivate.h>
#include <printman/render/itempainter.h>
#include <printman/render/screen.h>
#include <printman/render/screensettings.h>
#include <printman/render/textruler.h>
#include <printman/render/zoom.h>
#include <printman/select/itemcutter.h>
#include <printman/select/pagesearch.h>

#include <QApplication>
#include <QPainter>

// The door's part for the page on screen: view, zoom, selection.

using namespace printman;

bool CPrintMan::Private::show_loaded_page(bool is_another) {
    if (is_another || !screen.shows(rows))
        highlights.forget();
    QPainter p;
    const bool done = screen.begin_page(p, report.geometry(), rows);
    if (done) {
        if (!printing_aborted())
            ItemPainter(p, units).draw_page(rows.rows());
        highlights.repaint(p);
        p.end();
    }
    screen.show_image();
    return done;
}

int CPrintMan::init_rpt_view(QWidget* parent, const QSize* size, const QFont* font) {
    const PageGeometry& page = d->report.geometry();
    return page.known() && d->screen.lay_out(this, parent, size, font, page, get_page_size());
}

int CPrintMan::show_rpt_page(int request) {
    if (!d->screen.screen())
        return 0;
    load_screencolor();
    if (!check_rpt_page(request) || !get_rpt_page(request))
        return 0;
    return d->show_loaded_page(request != page_current);
}

int CPrintMan::goto_rpt_page(int page) {
    if (!d->report.read_page_number(page, d->fields))
        return 0;
    load_current_page();
    if (!d->screen.screen())
        return 1;
    load_screencolor();
    return d->show_loaded_page(true);
}

void CPrintMan::repaint_rpt_page(QWidget* widget) {
    // Only in its paint event can a widget be painted on.
    if (!widget || !widget->testAttribute(Qt::WA_WState_InPaintEvent)) {
        d->screen.show_image();
        return;
    }
    d->screen.paint_on(*widget);
    // Not from within the paint event, which it starts anew.
    if (d->screen.is_outdated())
        QMetaObject::invokeMethod(
            this, [this] { show_rpt_page(0); }, Qt::QueuedConnection);
}

void CPrintMan::resize(const QSize& size) {
    if (d->screen.resize(size) && d->screen.preview)
        zoomout();
}

void CPrintMan::scroll_rpt_view(const QPoint& p) {
    d->screen.ensure_visible(p);
}

void CPrintMan::set_preview(bool preview) {
    d->screen.preview = preview;
}

QSize CPrintMan::get_page_size() {
    return d->printer ? QSize(d->printer->width(), d->printer->height()) : QSize();
}

void CPrintMan::load_screenfont() {
    if (const auto font = read_screen_font())
        d->screen.set_font(*font);
}

void CPrintMan::load_screencolor() {
    d->screen.colors = read_screen_colors();
}

int CPrintMan::select_screencolor() {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return 0;
    KSColorDlg dialog(nullptr, nullptr, true);
    return dialog.exec() == QDialog::Accepted;
}

QStringList CPrintMan::zoom_ratio_names() {
    return zoom_names();
}

int CPrintMan::zoom_ratio_id(const char* name) {
    return zoom_ratio(name);
}

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

const QPixmap* CPrintMan::page_image() const {
    return d->screen.image();
}

int CPrintMan::zoomin() {
    d->highlights.clear();
    d->screen.preview = false;
    return init_rpt_view(nullptr, nullptr, nullptr) && show_rpt_page(page_current);
}

int CPrintMan::zoomout() {
    d->highlights.clear();
    d->screen.preview = true;
    return init_rpt_view(nullptr, nullptr, nullptr) && show_rpt_page(page_current);
}

int CPrintMan::zoom_rpt_page(const QString& zoomname) {
    d->screen.zoom = zoom_ratio_id(zoomname.toLatin1().constData());
    return zoomin();
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
