#include "host/jobs/watermark.h"

#include "host/jobs/pdflayout.h"

#include <printman/printman.h>
#include <printman/toolkit/psprinter.h>

#include <QFile>
#include <QFont>
#include <QFontMetrics>
#include <QRectF>
#include <QTransform>

namespace host {

namespace {

constexpr int max_default_size = 60; // points

/// The size of the text as the library draws it, in device units.
QSizeF drawn_size(const Watermark& mark, int size, const PsPrinter& device) {
    QFont font(QString::fromUtf8(mark.family));
    font.setPointSize(size);
    const QFontMetrics metrics(font, &device);
    const QString text = QFile::decodeName(mark.text);
    return {double{1} * metrics.horizontalAdvance(text), double{1} * metrics.height()};
}

} // namespace

int size_in(const Watermark& mark, QSizeF room) {
    if (mark.size)
        return *mark.size;
    const PsPrinter device;
    const auto fits = [&](int size) {
        const QRectF text(QPointF(0, 0), drawn_size(mark, size, device));
        const QSizeF turned = QTransform().rotate(-mark.angle).mapRect(text).size();
        return turned.width() <= room.width() && turned.height() <= room.height();
    };
    int size = max_default_size;
    while (size > 1 && !fits(size))
        --size;
    return size;
}

void set_watermark(CPrintMan& manager, const Watermark& mark, const PdfLayout& layout) {
    const int size = size_in(mark, layout.room);
    const QPointF middle =
        layout.corner + QPointF(layout.room.width() / 2, layout.room.height() / 2);
    const QPointF on_sheet =
        mark.at ? layout.corner + *mark.at * units_per_inch
                : centred_corner(drawn_size(mark, size, PsPrinter()), mark.angle, middle);
    const QPoint place = (on_sheet - layout.origin).toPoint();
    manager.set_watermark_info(mark.text.constData(), mark.family.constData(), size, mark.angle,
                               mark.colour, place.x(), place.y(), mark.in_front);
}

} // namespace host
