#include "tools/images/artwork.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

const QColor ground_top(0x2b, 0x5c, 0x8f);
const QColor ground_bottom(0x1a, 0x3a, 0x5f);
const QColor paper(0xff, 0xff, 0xff);
const QColor paper_fold(0xb9, 0xcc, 0xdf);
const QColor paper_bar(0xdc, 0xe8, 0xf2);
const QColor paper_text(0x7d, 0x99, 0xb4);
const QColor accent(0xf2, 0xa5, 0x3a);
const QColor word(0xff, 0xff, 0xff);

void draw_ground(QPainter& painter, const QRectF& area) {
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    gradient.setColorAt(0, ground_top);
    gradient.setColorAt(1, ground_bottom);
    painter.fillRect(area, gradient);
}

/// A sheet with a folded corner and ruled lines, of which one is marked.
void draw_sheet(QPainter& painter, const QRectF& area, int lines) {
    const qreal fold = area.width() * 0.27;
    const QPointF fold_start(area.right() - fold, area.top());
    const QPointF fold_end(area.right(), area.top() + fold);
    const QPointF fold_inside(fold_start.x(), fold_end.y());
    painter.setPen(Qt::NoPen);
    painter.setBrush(paper);
    painter.drawPolygon(
        QPolygonF({area.topLeft(), fold_start, fold_end, area.bottomRight(), area.bottomLeft()}));
    painter.setBrush(paper_fold);
    painter.drawPolygon(QPolygonF({fold_start, fold_end, fold_inside}));
    // The lines stand on whole pixels, so that they are crisp.
    const int top = qRound(fold_end.y()) + 2;
    const int pitch = qMax(3, static_cast<int>((area.bottom() - top - 1) / lines));
    const int thick = qMax(1, pitch / 2 - 1);
    const int left = qRound(area.left() + area.width() * 0.14);
    const int width = qRound(area.width() * 0.72);
    for (int i = 0; i < lines; ++i) {
        const int y = top + i * pitch;
        const bool marked = i == lines / 2;
        if (i % 2 == 0 && pitch > 4)
            painter.fillRect(QRectF(area.left(), y - 2, area.width(), thick + 4), paper_bar);
        const int length = i % 2 == 0 ? width : width * 2 / 3;
        painter.fillRect(QRect(left, y, length, thick), marked ? accent : paper_text);
    }
}

/// The word's outline: the origin is the left end of its base line, a capital is 1 high.
QPainterPath word_path() {
    constexpr qreal small = 0.7; // the height of a small letter
    constexpr qreal gap = 0.3;
    QPainterPath path;
    qreal x = 0;
    path.moveTo(x, -1);
    path.lineTo(x, 0);
    path.moveTo(x + 0.6, -1);
    path.lineTo(x, -0.38);
    path.moveTo(x + 0.22, -0.6);
    path.lineTo(x + 0.64, 0);
    x += 0.64 + gap;
    path.addEllipse(QRectF(x, -small, small, small));
    x += small + gap;
    path.moveTo(x, -small);
    path.lineTo(x, 0);
    path.moveTo(x, -small * 0.5);
    path.quadTo(x + 0.02, -small, x + 0.34, -small);
    x += 0.34 + gap * 0.75;
    path.moveTo(x, -small);
    path.lineTo(x + 0.3, 0);
    path.lineTo(x + 0.6, -small);
    x += 0.6 + gap * 0.7;
    path.addEllipse(QRectF(x, -small, small, small));
    return path;
}

void draw_word(QPainter& painter, QPointF base, qreal height, qreal stroke) {
    painter.save();
    painter.translate(base);
    painter.scale(height, height);
    painter.strokePath(word_path(),
                       QPen(word, stroke / height, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.restore();
}

} // namespace

QImage draw_logo() {
    QImage image(200, 66, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw_ground(painter, image.rect());
    painter.fillRect(0, 63, 200, 3, accent);
    draw_sheet(painter, QRectF(14, 8, 35, 47), 5);
    draw_word(painter, QPointF(67.5, 46.5), 29, 5);
    return image;
}

QImage draw_icon() {
    QImage image(68, 25, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw_ground(painter, image.rect());
    draw_sheet(painter, QRectF(4, 3, 14, 19), 4);
    draw_word(painter, QPointF(24.5, 17.5), 9.7, 2);
    return image;
}
