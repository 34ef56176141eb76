#include "host/jobs/picture.h"

#include "host/cli/console.h"
#include "host/files/pendingfile.h"
#include "host/jobs/interrupt.h"
#include "host/jobs/pagesetup.h"
#include "host/jobs/report.h"

#include <printman/printer/hostservices.h>
#include <printman/printman.h>

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
constexpr int dots_per_metre = 3780; // 96 to the inch
constexpr double base_point_size = 10;

enum Request { first = 1, next = 2, previous = 3, last = 4 };

/// Loads a page, from the nearer end of the report; only the page itself is cut into items.
Outcome load_page(CPrintMan& manager, const QByteArray& report, int page) {
    const int total = manager.get_page_count();
    const bool forward = page - 1 <= total - page;
    const int steps = forward ? page - 1 : total - page;
    Progress progress("page");
    int request = forward ? first : last;
    for (int step = 0; step < steps; ++step) {
        char ignored = 0;
        if (manager.get_rpt_page(&ignored, 1, request) != 1)
            return Outcome::failure(report + ": The pages cannot be read");
        request = forward ? next : previous;
        if (!progress.step(step + 1, steps))
            return Outcome::failure("interrupted");
    }
    return manager.get_rpt_page(request) == 1
               ? Outcome::success()
               : Outcome::failure(report + ": page " + QByteArray::number(page) +
                                  " cannot be read");
}

QColor setting_colour(const char* key) {
    int red = 0;
    int green = 0;
    int blue = 0;
    GetRGB(key, &red, &green, &blue);
    return {red, green, blue};
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

Outcome make_picture(const QByteArray& report, const QByteArray& out, int page, int zoom) {
    CPrintMan manager;
    Outcome opened = open_report(manager, report);
    if (!opened.ok())
        return opened;
    if (page > manager.get_page_count())
        return Outcome::failure(report + ": There is no page " + QByteArray::number(page) +
                                ", but " + QByteArray::number(manager.get_page_count()));
    // Characters as wide as their cells, to the pixel: hinted ones are.
    QFont font = report_font(QStringLiteral("Courier New"), base_point_size * zoom / 100);
    font.setHintingPreference(QFont::PreferFullHinting);
    const QImage probe = blank_sheet({1, 1});
    const QFontMetrics metrics(font, &probe);
    const qint64 width = qint64{manager.get_columns()} * metrics.maxWidth() + 2 * sheet_margin;
    const qint64 height = qint64{manager.get_lines()} * metrics.height() + 2 * sheet_margin;
    if (width > max_side || height > max_side || width * height * pixel_bytes > max_bytes)
        return Outcome::failure("a picture of " + QByteArray::number(width) + " x " +
                                QByteArray::number(height) + " pixels is too large");
    PendingFile pending;
    if (!pending.open(out))
        return Outcome::failure(pending.error());
    Outcome loaded = load_page(manager, report, page);
    if (!loaded.ok())
        return loaded;
    QImage sheet = blank_sheet({static_cast<int>(width), static_cast<int>(height)});
    if (sheet.isNull())
        return Outcome::failure("not enough memory for the picture");
    paint_sheet(manager, font, sheet);
    if (interrupted())
        return Outcome::failure("interrupted");
    QImageWriter writer(pending.device(), "png");
    const bool written = writer.write(sheet);
    if (!pending.commit())
        return Outcome::failure(pending.error());
    return written ? Outcome::success()
                   : Outcome::failure("cannot write " + out + ": " +
                                      QFile::encodeName(writer.errorString()));
}

} // namespace host
