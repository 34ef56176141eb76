#include <printman/render/pageunits.h>
#include <printman/render/units.h>

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace printman {

namespace {

/// Clamped so that the width of a rectangle between two such values fits into an int.
int to_int(qint64 value) {
    constexpr qint64 limit = 1 << 29;
    return static_cast<int>(std::clamp(value, -limit, limit));
}

} // namespace

void PageUnits::measure(const QPainter& p) {
    const QFontMetrics font = p.fontMetrics();
    char_width_ = font.maxWidth();
    line_height_ = font.height();
}

void PageUnits::lay(QPainter& p, int columns, int lines, const QRect& area) {
    // A machine without fonts measures 0.
    window_ = QSize(to_int(qint64{columns} * char_width_), to_int(qint64{lines} * line_height_))
                  .expandedTo(QSize(1, 1));
    p.setWindow(0, 0, window_.width(), window_.height());
    // A grid far wider than tall would scale to a height of 0, which no painter can map to.
    const QSize room = area.size().expandedTo(QSize(1, 1));
    viewport_ = window_.scaled(room, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    p.setViewport(area.x(), area.y(), viewport_.width(), viewport_.height());
}

void PageUnits::set(QPainter& p, int columns, int lines, bool keep, int margin_x, int margin_y) {
    measure(p);
    const QPaintDeviceMetrics device(p.device());
    pixels_ = {itopY(margins.top, device), itopY(margins.bottom, device),
               itopX(margins.left, device), itopX(margins.right, device)};
    if (keep || no_page_map)
        return;

    const QRect all = p.viewport();
    const qint64 x = qint64{all.left()} + pixels_.left + margin_x;
    const qint64 y = qint64{all.top()} + pixels_.top + margin_y;
    const qint64 width = qint64{all.width()} - pixels_.left - pixels_.right - 2 * qint64{margin_x};
    const qint64 height =
        qint64{all.height()} - pixels_.top - pixels_.bottom - 2 * qint64{margin_y};
    lay(p, columns, lines, QRect(to_int(x), to_int(y), to_int(width), to_int(height)));
}

void PageUnits::set_in(QPainter& p, int columns, int lines, const QRect& area) {
    measure(p);
    lay(p, columns, lines, area);
}

QRect PageUnits::logical(const QRect& cells) const {
    const qint64 x = cells.x();
    const qint64 y = cells.y();
    return QRect(QPoint(to_int(x * char_width_), to_int(y * line_height_)),
                 QPoint(to_int((x + cells.width()) * char_width_ - 1),
                        to_int((y + cells.height()) * line_height_ - 1)));
}

} // namespace printman
