#include "host/jobs/textfont.h"

#include <QEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPaintDevice>

namespace host {

namespace {

/// Keeps the event of another font from the application, which would pass it on to all windows.
class FontChangeFilter : public QObject {
protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        return event->type() == QEvent::ApplicationFontChange;
    }
};

void set_quietly(const QFont& font) {
    FontChangeFilter filter;
    QCoreApplication::instance()->installEventFilter(&filter);
    QGuiApplication::setFont(font);
}

} // namespace

bool prints_text(const QString& printer_name) {
    return printer_name.contains(QLatin1String("generic"), Qt::CaseInsensitive);
}

QFont text_font(int columns, int lines, QPaintDevice& sheet) {
    constexpr double step = 0.25;
    constexpr double default_size = 10;
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::TypeWriter);
    double size = font.pointSizeF() > 0 ? font.pointSizeF() : default_size;
    const auto fits = [&] {
        font.setPointSizeF(size);
        const QFontMetrics metrics(font, &sheet);
        const double width = QFontMetricsF(font, &sheet).horizontalAdvance(u'0') * columns;
        return width <= sheet.width() && qint64{metrics.height()} * lines <= sheet.height();
    };
    while (!fits() && size > 1)
        size = std::max(1.0, size - step);
    return font;
}

ScopedDefaultFont::ScopedDefaultFont(const QFont& font) : earlier_(QGuiApplication::font()) {
    set_quietly(font);
}

ScopedDefaultFont::~ScopedDefaultFont() {
    set_quietly(earlier_);
}

} // namespace host
