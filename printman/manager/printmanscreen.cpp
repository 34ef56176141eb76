#include <printman/dialogs/kscolordlg.h>
#include <printman/manager/printmanprivate.h>
#include <printman/render/screen.h>
#include <printman/render/screensettings.h>
#include <printman/render/zoom.h>
#include <printman/toolkit/widgets.h>

// The facade's functions for the page on screen: view, zoom, colors.

using namespace printman;

int CPrintMan::init_rpt_view(QWidget* parent, const QSize* size, const QFont* font) {
    const PageGeometry& page = d->report.geometry();
    return page.known() && d->screen.lay_out(this, parent, size, font, page, get_page_size());
}

int CPrintMan::show_rpt_page(int request) {
    if (!d->screen.screen())
        return 0;
    load_screencolor();
    if (!check_rpt_page(request) || !d->load_page(request))
        return 0;
    return d->show_loaded_page(request != page_current);
}

int CPrintMan::goto_rpt_page(int page) {
    if (!d->report.read_page_number(page, d->fields))
        return 0;
    d->load_rows();
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
    if (!can_show_widgets())
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
