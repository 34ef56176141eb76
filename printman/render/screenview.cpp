#include <printman/render/pageunits.h>
#include <printman/render/screen.h>
#include <printman/render/screenview.h>
#include <printman/render/zoom.h>
#include <printman/report/pagerows.h>
#include <printman/toolkit/qscrollview.h>
#include <printman/toolkit/widgets.h>

#include <QCoreApplication>
#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace printman {

namespace {

constexpr int sheet_margin = 20;
constexpr int preview_point_size = 6;
constexpr int grey = 64;
constexpr double max_side = 32767; // beyond, the raster engine draws nothing
constexpr double max_bytes = 512.0 * 1024 * 1024;
constexpr int pixel_bytes = 4;

QColor surround() {
    return {grey, grey, grey};
}

/// Fills what is in @p outer but not in @p inner.
void fill_around(QPainter& p, const QRect& outer, const QRect& inner, const QColor& color) {
    for (const QRect& part : QRegion(outer).subtracted(inner))
        p.fillRect(part, color);
}

} // namespace

ScreenView::~ScreenView() {
    // Without a parent nobody else owns the view.
    if (scroll_ && !scroll_->parent())
        delete scroll_;
}

QScrollView* ScreenView::scroll() const {
    return scroll_;
}

CScreen* ScreenView::screen() const {
    return screen_;
}

int ScreenView::margin() const {
    return preview ? 0 : sheet_margin;
}

void ScreenView::set_font(const QFont& font) {
    font_ = font;
    base_point_size_ = font.pointSize();
    // The size of a font that was set in pixels, in points.
    if (base_point_size_ <= 0)
        base_point_size_ = QFontInfo(font).pointSize();
    font_.setHintingPreference(QFont::PreferFullHinting);
}

void ScreenView::set_screen_font() {
    const qint64 zoomed = qint64{base_point_size_} * zoom / 100;
    const int size =
        preview ? preview_point_size : static_cast<int>(std::min<qint64>(zoomed, max_side));
    if (size > 0)
        font_.setPointSize(size);
    screen_->setFont(font_);
}

bool ScreenView::may_make_widgets(const QSize* size) const {
    return can_show_widgets() && (parent_ || (!had_parent_ && size));
}

void ScreenView::make_widgets(CPrintMan* owner) {
    scroll_ = new QScrollView(parent_, "report_view");
    QPalette dark = scroll_->viewport()->palette();
    dark.setColor(scroll_->viewport()->backgroundRole(), surround());
    scroll_->viewport()->setPalette(dark);
    screen_ = new CScreen(owner, scroll_->viewport(), "report_screen");
    scroll_->setFocusProxy(screen_);
    scroll_->setAccessibleName(QCoreApplication::translate("CScreen", "Report"));
    screen_->setAccessibleName(QCoreApplication::translate("CScreen", "Report page"));
    scroll_->addChild(screen_, 0, 0);
}

QSize ScreenView::sheet_size(PageGeometry grid, QSize paper) const {
    const QFontMetrics font(screen_->font(), screen_);
    const QSize text = QSize(grid.columns * font.maxWidth(), grid.lines * font.height())
                           .expandedTo(QSize(1, 1))
                           .boundedTo(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    if (paper.isEmpty())
        paper = text;
    if (!preview) {
        const int border = 2 * margin();
        return paper.scaled(text, Qt::KeepAspectRatioByExpanding) + QSize(border, border);
    }
    const QSize room = get_preview_size(size_.isValid() ? size_ : scroll_->size());
    return paper.scaled(room.expandedTo(QSize(1, 1)), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

bool ScreenView::lay_out(CPrintMan* owner, QWidget* parent, const QSize* size, const QFont* font,
                         PageGeometry grid, QSize paper) {
    if (parent) {
        parent_ = parent;
        had_parent_ = true;
    }
    if (size)
        size_ = *size;
    if (font)
        set_font(*font);
    else if (base_point_size_ == 0)
        set_font(font_);
    const bool is_new = !scroll_ || !screen_;
    if (is_new) {
        if (!may_make_widgets(size))
            return false;
        delete scroll_;
        make_widgets(owner);
    }
    set_screen_font();
    const QSize sheet = sheet_size(grid, paper);
    QPoint place(0, 0);
    if (preview)
        place = get_preview_loc(sheet, size_.isValid() ? size_ : scroll_->size());
    screen_->hide();
    screen_->resize(sheet);
    scroll_->moveChild(screen_, place.x(), place.y());
    scroll_->setContentsPos(0, 0);
    screen_->show();
    if (is_new) {
        if (size_.isValid())
            scroll_->resize(size_);
        scroll_->show();
    }
    screen_->setFocus();
    return true;
}

bool ScreenView::resize(QSize size) {
    if (!scroll_)
        return false;
    size_ = size;
    scroll_->resize(size);
    return true;
}

bool ScreenView::make_image() {
    const double ratio = screen_->devicePixelRatioF();
    const QSizeF pixels = QSizeF(screen_->size()) * ratio;
    const bool fits = pixels.width() <= max_side && pixels.height() <= max_side &&
                      pixels.width() * pixels.height() * pixel_bytes <= max_bytes;
    if (!fits) {
        image_.reset();
        return false;
    }
    const QSize size(static_cast<int>(std::ceil(pixels.width())),
                     static_cast<int>(std::ceil(pixels.height())));
    if (!image_ || image_->size() != size) {
        image_.reset();
        image_ = std::make_unique<QPixmap>(size);
    }
    if (image_->isNull())
        image_.reset();
    else
        image_->setDevicePixelRatio(ratio);
    return image_ != nullptr;
}

void ScreenView::begin(QPainter& p) {
    p.setFont(screen_->font());
    const int m = painted_.margin;
    units_.set_in(p, painted_.grid.columns, painted_.grid.lines,
                  QRect({0, 0}, painted_.size).adjusted(m, m, -m, -m));
}

bool ScreenView::shows(const PageRows& rows) const {
    return image_ && painted_.loads == rows.loads();
}

bool ScreenView::begin_page(QPainter& p, PageGeometry grid, const PageRows& rows) {
    if (!screen_ || !make_image())
        return false;
    painted_ = {.grid = grid,
                .margin = margin(),
                .colors = colors,
                .size = screen_->size(),
                .loads = rows.loads()};
    p.begin(image_.get());
    const int m = margin();
    const QRect all = screen_->rect();
    const QRect frame(QPoint(m - 1, m - 1), QPoint(all.width() - m, all.height() - m));
    const QRect sheet = frame.adjusted(1, 1, -1, -1);
    // Every pixel is filled once: at a high zoom there are many. The image may end with a part of a
    // logical pixel.
    fill_around(p, all.adjusted(0, 0, 1, 1), frame & all, surround());
    fill_around(p, frame & all, sheet, Qt::black);
    p.fillRect(sheet, colors.page);
    begin(p);
    p.setPen(colors.text);
    return true;
}

bool ScreenView::begin_change(QPainter& p) {
    if (!screen_ || !image_ || !p.begin(image_.get()))
        return false;
    begin(p);
    return true;
}

void ScreenView::show_image() {
    if (screen_)
        screen_->repaint();
}

void ScreenView::paint_on(QWidget& widget) const {
    QPainter p(&widget);
    if (!image_ || painted_.size != widget.size())
        p.fillRect(widget.rect(), surround());
    if (image_)
        p.drawPixmap(0, 0, *image_);
}

bool ScreenView::is_outdated() const {
    return screen_ && image_ && image_->devicePixelRatio() != screen_->devicePixelRatioF();
}

void ScreenView::ensure_visible(QPoint at) {
    if (scroll_)
        scroll_->ensureVisible(at.x(), at.y());
}

} // namespace printman
