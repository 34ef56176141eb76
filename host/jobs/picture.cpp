#include "host/jobs/picture.h"

#include "host/files/pendingfile.h"
#include "host/jobs/interrupt.h"
#include "host/jobs/openreport.h"
#include "host/jobs/reportfont.h"
#include "host/settings/settings.h"

#include <printman/printman.h>

#include <QBuffer>
#include <QFile>
#include <QFontMetrics>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

namespace host {

namespace {

constexpr int sheet_margin = 20;
constexpr qint64 max_side = 32767;
constexpr qint64 max_bytes = 512LL * 1024 * 1024;
constexpr int pixel_bytes = 4;
constexpr int dots_per_metre = 3780; // 96 per inch

QColor setting_colour(const char* key) {
    const Colour colour = host_settings().colour(key);
    return {colour.red, colour.green, colour.blue};
}

/// An image whose resolution, and with it the size of text, is the same everywhere.
QImage blank_sheet(QSize size) {
    QImage sheet(size, QImage::Format_RGB32);
    sheet.setDotsPerMeterX(dots_per_metre);
    sheet.setDotsPerMeterY(dots_per_metre);
    return sheet;
}

void paint_sheet(CPrintMan& manager, const QFont& font, QImage& sheet) {
    QPainter painter(&sheet);
    painter.setFont(font);
    painter.setPen(QPen(Qt::black, 0));
    painter.setBrush(setting_colour("KRV_COLOR_SBG"));
    painter.drawRect(0, 0, sheet.width() - 1, sheet.height() - 1);
    manager.set_logical_unit(&painter, 0, sheet_margin, sheet_margin);
    painter.setPen(setting_colour("KRV_COLOR_DBG"));
    manager.print_page(&painter);
}

} // namespace

Outcome make_picture(const QByteArray& report, const QByteArray& out, const PictureSetup& setup) {
    CPrintMan manager;
    Outcome opened = open_report(manager, report);
    if (!opened.ok())
        return opened;
    const QByteArray page = QByteArray::number(setup.page);
    const int pages = manager.get_page_count();
    if (setup.page > pages)
        return Outcome::failure(report + ": There is no page " + page + "; the report has " +
                                QByteArray::number(pages) + (pages == 1 ? " page" : " pages"));
    const QFont font = screen_font(setup.zoom);
    const QImage probe = blank_sheet({1, 1});
    const QFontMetrics metrics(font, &probe);
    const qint64 width = qint64{manager.get_columns()} * metrics.maxWidth() + 2 * sheet_margin;
    const qint64 height = qint64{manager.get_lines()} * metrics.height() + 2 * sheet_margin;
    if (width > max_side || height > max_side || width * height * pixel_bytes > max_bytes)
        return Outcome::failure("a picture of " + QByteArray::number(width) + " x " +
                                QByteArray::number(height) + " pixels is too large");
    PendingFile pending;
    opened = pending.open(out);
    if (!opened.ok())
        return opened;
    if (manager.goto_rpt_page(setup.page) != 1)
        return Outcome::failure(report + ": Page " + page + " cannot be read");
    QImage sheet = blank_sheet({static_cast<int>(width), static_cast<int>(height)});
    if (sheet.isNull())
        return Outcome::failure("not enough memory for the picture");
    paint_sheet(manager, font, sheet);
    if (interrupted())
        return Outcome::failure("interrupted");
    QByteArray png;
    QBuffer buffer(&png);
    QImageWriter writer(&buffer, "png");
    if (!writer.write(sheet))
        return Outcome::failure("cannot write " + out + ": " +
                                QFile::encodeName(writer.errorString()));
    pending.write(png);
    return pending.commit();
}

} // namespace host
