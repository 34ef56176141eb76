#include "host/viewer/icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

#include <algorithm>
#include <array>

namespace host {

namespace {

// The side of the square on which icons are drawn.
constexpr double grid = 24;
constexpr double line_width = 1.7;

struct Named {
    Picture picture;
    const char* name; ///< in icon themes
};

constexpr std::array names{
    Named{Picture::open, "document-open"},
    Named{Picture::first_page, "go-first"},
    Named{Picture::previous_page, "go-previous"},
    Named{Picture::next_page, "go-next"},
    Named{Picture::last_page, "go-last"},
    Named{Picture::zoom_in, "zoom-in"},
    Named{Picture::zoom_out, "zoom-out"},
    Named{Picture::find, "edit-find"},
    Named{Picture::copy, "edit-copy"},
    Named{Picture::save_text, "document-save-as"},
    Named{Picture::export_pdf, "document-export"},
    Named{Picture::print, "document-print"},
    Named{Picture::help, "help-contents"},
};

void add_lines(QPainterPath& path, std::initializer_list<QPointF> points) {
    path.moveTo(*points.begin());
    for (const QPointF& point : points)
        path.lineTo(point);
}

QPainterPath chevron(double tip, bool forward) {
    QPainterPath path;
    const double back = forward ? tip - 7 : tip + 7;
    add_lines(path, {{back, 5}, {tip, 12}, {back, 19}});
    return path;
}

QPainterPath chevron_to_end(bool forward) {
    QPainterPath path = chevron(forward ? 15 : 9, forward);
    const double end = forward ? 18.5 : 5.5;
    add_lines(path, {{end, 5}, {end, 19}});
    return path;
}

QPainterPath magnifier() {
    QPainterPath path;
    path.addEllipse(QPointF(10.5, 10.5), 6.5, 6.5);
    add_lines(path, {{15.3, 15.3}, {20.5, 20.5}});
    return path;
}

QPainterPath zoom(bool in) {
    QPainterPath path = magnifier();
    add_lines(path, {{7.5, 10.5}, {13.5, 10.5}});
    if (in)
        add_lines(path, {{10.5, 7.5}, {10.5, 13.5}});
    return path;
}

/// A sheet with its top right corner folded.
QPainterPath sheet() {
    QPainterPath path;
    add_lines(path,
              {{13.5, 3}, {5, 3}, {5, 21}, {19, 21}, {19, 8.5}, {13.5, 3}, {13.5, 8.5}, {19, 8.5}});
    return path;
}

QPainterPath text_sheet() {
    QPainterPath path = sheet();
    add_lines(path, {{8.5, 12.5}, {15.5, 12.5}});
    add_lines(path, {{8.5, 16.5}, {13, 16.5}});
    return path;
}

QPainterPath arrow_sheet() {
    QPainterPath path = sheet();
    add_lines(path, {{12, 11}, {12, 18}});
    add_lines(path, {{9, 15}, {12, 18}, {15, 15}});
    return path;
}

QPainterPath two_sheets() {
    QPainterPath path;
    path.addRoundedRect(QRectF(8.5, 8.5, 12, 12), 1.5, 1.5);
    add_lines(path, {{5.5, 15.5}, {3.5, 15.5}, {3.5, 3.5}, {15.5, 3.5}, {15.5, 5.5}});
    return path;
}

QPainterPath folder() {
    QPainterPath path;
    add_lines(path, {{3, 19}, {3, 5}, {9, 5}, {11, 7.5}, {19, 7.5}, {19, 10.5}});
    add_lines(path, {{3, 19}, {6.5, 10.5}, {22, 10.5}, {18.5, 19}, {3, 19}});
    return path;
}

QPainterPath printer() {
    QPainterPath path;
    add_lines(path, {{7, 8.5}, {7, 3.5}, {17, 3.5}, {17, 8.5}});
    add_lines(path, {{7, 17}, {3.5, 17}, {3.5, 8.5}, {20.5, 8.5}, {20.5, 17}, {17, 17}});
    path.addRect(QRectF(7, 13.5, 10, 7));
    return path;
}

QPainterPath question() {
    QPainterPath path;
    path.addEllipse(QPointF(12, 12), 9, 9);
    path.moveTo(9.3, 9.6);
    path.cubicTo(9.3, 6, 14.9, 6, 14.9, 9.6);
    path.cubicTo(14.9, 11.8, 12, 11.7, 12, 14);
    add_lines(path, {{12, 17}, {12, 17.1}});
    return path;
}

QPainterPath outline(Picture picture) {
    switch (picture) {
    case Picture::open:
        return folder();
    case Picture::first_page:
        return chevron_to_end(false);
    case Picture::previous_page:
        return chevron(8.5, false);
    case Picture::next_page:
        return chevron(15.5, true);
    case Picture::last_page:
        return chevron_to_end(true);
    case Picture::zoom_in:
        return zoom(true);
    case Picture::zoom_out:
        return zoom(false);
    case Picture::find:
        return magnifier();
    case Picture::copy:
        return two_sheets();
    case Picture::save_text:
        return text_sheet();
    case Picture::export_pdf:
        return arrow_sheet();
    case Picture::print:
        return printer();
    case Picture::help:
        return question();
    }
    return {};
}

/// Draws at the requested size in the current palette: no picture is scaled, and a change of the
/// palette shows at once.
class LineIcon : public QIconEngine {
public:
    explicit LineIcon(Picture picture) : picture_(picture) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State /*state*/) override {
        const double side = std::min(rect.width(), rect.height());
        const QPalette::ColorGroup group =
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor colour = QGuiApplication::palette().color(
            group, mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center() - QPointF(side / 2, side / 2));
        painter->scale(side / grid, side / grid);
        painter->setPen(QPen(colour, line_width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->setBrush(Qt::NoBrush);
        painter->drawPath(outline(picture_));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap image(size);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return image;
    }

    QIconEngine* clone() const override { return new LineIcon(picture_); }

private:
    Picture picture_;
};

const char* theme_name(Picture picture) {
    const auto* at = std::ranges::find(names, picture, &Named::picture);
    return at == names.end() ? "" : at->name;
}

bool theme_has_all() {
    return std::ranges::all_of(
        names, [](const Named& one) { return QIcon::hasThemeIcon(QString::fromLatin1(one.name)); });
}

QPixmap page_picture(int side) {
    QPixmap image(side, side);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / grid, side / grid);
    painter.setPen(QPen(QColor(38, 70, 83), 1.2));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(3.5, 1.5, 17, 21), 1.5, 1.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(42, 157, 143));
    painter.drawRect(QRectF(6.5, 5, 11, 2.6));
    painter.setBrush(QColor(38, 70, 83));
    for (int line = 0; line < 3; ++line) {
        painter.drawRect(QRectF(6.5, 10 + 3.2 * line, 5.5, 1.4));
        painter.drawRect(QRectF(14.5, 10 + 3.2 * line, 3, 1.4));
    }
    return image;
}

} // namespace

QIcon drawn_icon(Picture picture) {
    return QIcon(new LineIcon(picture));
}

QIcon icon_of(Picture picture) {
    return theme_has_all() ? QIcon::fromTheme(QString::fromLatin1(theme_name(picture)))
                           : drawn_icon(picture);
}

QIcon window_icon() {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(page_picture(side));
    return icon;
}

} // namespace host
