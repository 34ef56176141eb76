#include "host/jobs/watermark.h"

#include "host/cli/command.h"
#include "host/jobs/pdflayout.h"
#include "host/settings/numbers.h"

#include <printman/printman.h>
#include <printman/toolkit/psprinter.h>

#include <QFile>
#include <QFont>
#include <QFontMetrics>
#include <QRectF>
#include <QTransform>

#include <array>
#include <cmath>

namespace host {

namespace {

constexpr double units_an_inch = 600;
constexpr qsizetype max_text = 79; // bytes, that the library keeps
constexpr qsizetype max_family = 51;
constexpr int max_size = 1000;
constexpr int usual_size = 60;
constexpr int full_turn = 360;
constexpr double max_place = 100;

constexpr std::array detail_options{"watermark-font",   "watermark-size", "watermark-angle",
                                    "watermark-colour", "watermark-at",   "watermark-front"};

Outcome too_long(const char* what, qsizetype size, qsizetype limit) {
    return Outcome::wrong_usage(QByteArray(what) + " is " + QByteArray::number(size) +
                                " bytes long; " + QByteArray::number(limit) +
                                " is the most there can be");
}

Outcome read_text(const Arguments& arguments, Watermark& mark) {
    mark.text = *arguments.value("watermark");
    if (mark.text.trimmed().isEmpty())
        return Outcome::wrong_usage("--watermark needs a text");
    if (mark.text.size() > max_text)
        return too_long("the watermark's text", mark.text.size(), max_text);
    mark.family = arguments.value("watermark-font").value_or(mark.family);
    if (mark.family.trimmed().isEmpty())
        return Outcome::wrong_usage("--watermark-font needs the name of a font");
    if (mark.family.size() > max_family)
        return too_long("the name of the watermark's font", mark.family.size(), max_family);
    return Outcome::success();
}

Outcome read_numbers(const Arguments& arguments, Watermark& mark) {
    if (const auto text = arguments.value("watermark-size")) {
        const auto size = parse_whole(*text, 1, max_size);
        if (!size)
            return Outcome::wrong_usage(
                "--watermark-size needs a whole number of points from 1 to 1000, not " + *text);
        mark.size = *size;
    }
    if (const auto text = arguments.value("watermark-angle")) {
        const auto angle = parse_whole(*text, -full_turn, full_turn);
        if (!angle)
            return Outcome::wrong_usage(
                "--watermark-angle needs a whole number of degrees from -360 to 360, not " + *text);
        mark.angle = *angle;
    }
    if (const auto text = arguments.value("watermark-colour")) {
        const auto colour = parse_mark_colour(*text);
        if (!colour)
            return Outcome::wrong_usage(
                "--watermark-colour needs R,G,B from 0 to 255, or #rrggbb, not " + *text);
        mark.colour = *colour;
    }
    if (const auto text = arguments.value("watermark-at")) {
        mark.at = parse_place(*text);
        if (!mark.at)
            return Outcome::wrong_usage("--watermark-at needs X,Y in inches, not " + *text);
    }
    return Outcome::success();
}

/// The size of the text as the library draws it, in units of 1/600 inch.
QSizeF drawn_size(const Watermark& mark, int size, const PsPrinter& device) {
    QFont font(QString::fromUtf8(mark.family));
    font.setPointSize(size);
    const QFontMetrics metrics(font, &device);
    const QString text = QFile::decodeName(mark.text);
    return {double{1} * metrics.horizontalAdvance(text), double{1} * metrics.height()};
}

} // namespace

std::optional<QColor> parse_mark_colour(const QByteArray& text) {
    if (text.startsWith('#')) {
        bool ok = false;
        const uint number = text.mid(1).toUInt(&ok, 16);
        return ok && text.size() == 7 ? std::optional(QColor(QRgb(number))) : std::nullopt;
    }
    const QList<QByteArray> parts = text.split(',');
    if (parts.size() != 3)
        return std::nullopt;
    std::array<int, 3> numbers{};
    for (size_t i = 0; i < numbers.size(); ++i) {
        const auto number = parse_whole(parts.at(static_cast<qsizetype>(i)).trimmed(), 0, 255);
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
    }
    return QColor(numbers[0], numbers[1], numbers[2]);
}

std::optional<QPointF> parse_place(const QByteArray& text) {
    const QList<QByteArray> parts = text.split(',');
    if (parts.size() != 2)
        return std::nullopt;
    const auto x = parse_fraction(parts[0].trimmed(), -max_place, max_place);
    const auto y = parse_fraction(parts[1].trimmed(), -max_place, max_place);
    return x && y ? std::optional(QPointF(*x, *y)) : std::nullopt;
}

Outcome Watermark::read(const Arguments& arguments, std::optional<Watermark>& mark) {
    mark.reset();
    if (!arguments.has("watermark")) {
        for (const char* option : detail_options) {
            if (arguments.has(option))
                return Outcome::wrong_usage(QByteArray("--") + option +
                                            " says nothing without --watermark");
        }
        return Outcome::success();
    }
    Watermark read;
    Outcome text = read_text(arguments, read);
    if (!text.ok())
        return text;
    Outcome numbers = read_numbers(arguments, read);
    if (!numbers.ok())
        return numbers;
    read.in_front = arguments.has("watermark-front");
    mark = read;
    return Outcome::success();
}

int size_in(const Watermark& mark, QSizeF room) {
    if (mark.size)
        return *mark.size;
    const PsPrinter device;
    const auto fits = [&](int size) {
        const QRectF text(QPointF(0, 0), drawn_size(mark, size, device));
        const QSizeF turned = QTransform().rotate(-mark.angle).mapRect(text).size();
        return turned.width() <= room.width() && turned.height() <= room.height();
    };
    int size = usual_size;
    while (size > 1 && !fits(size))
        --size;
    return size;
}

void set_watermark(CPrintMan& manager, const Watermark& mark, const PdfLayout& layout) {
    const int size = size_in(mark, layout.room);
    const QPointF middle =
        layout.corner + QPointF(layout.room.width() / 2, layout.room.height() / 2);
    const QPointF on_sheet =
        mark.at ? layout.corner + *mark.at * units_an_inch
                : centred_corner(drawn_size(mark, size, PsPrinter()), mark.angle, middle);
    const QPoint place = (on_sheet - layout.origin).toPoint();
    manager.set_watermark_info(mark.text.constData(), mark.family.constData(), size, mark.angle,
                               mark.colour, place.x(), place.y(), mark.in_front);
}

} // namespace host
