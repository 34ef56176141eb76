#include "host/cli/pdfoptions.h"

#include "host/cli/command.h"
#include "host/settings/numbers.h"

#include <QFile>

#include <array>

namespace host {

namespace {

constexpr double min_font_size = 1;
constexpr double max_font_size = 1000;
constexpr qsizetype max_family = 127; // bytes, the size of a printer record's field
constexpr int max_watermark_size = 1000;
constexpr int full_turn = 360;
constexpr double max_place = 100;

constexpr std::array page_options{"font", "size", "paper", "landscape", "portrait", "margins"};
constexpr std::array watermark_options{"watermark-font",   "watermark-size", "watermark-angle",
                                       "watermark-colour", "watermark-at",   "watermark-front"};

Outcome read_font(const Arguments& arguments, PageSetup& setup) {
    double size = PageSetup::default_font_size;
    if (const auto text = arguments.value("size")) {
        const auto number = parse_fraction(*text, min_font_size, max_font_size);
        if (!number)
            return Outcome::wrong_usage("--size needs a number of points from 1 to 1000, not " +
                                        *text);
        size = *number;
        setup.exact_size = true;
    }
    const QByteArray family = arguments.value("font").value_or(default_family);
    if (family.trimmed().isEmpty())
        return Outcome::wrong_usage("--font needs the name of a font");
    if (family.size() > max_family)
        return Outcome::wrong_usage("the name of the font is longer than " +
                                    QByteArray::number(max_family) + " bytes");
    setup.font = report_font(QFile::decodeName(family), size);
    return Outcome::success();
}

Outcome read_sheet(const Arguments& arguments, PageSetup& setup) {
    if (const auto text = arguments.value("paper")) {
        const auto number = paper_number(*text);
        if (!number)
            return Outcome::wrong_usage("unknown paper '" + *text + "'; known are " +
                                        paper_names());
        setup.paper = *number;
    }
    if (arguments.has("landscape") && arguments.has("portrait"))
        return Outcome::wrong_usage("--landscape and --portrait cannot be combined");
    if (arguments.has("landscape"))
        setup.orientation = QPageLayout::Landscape;
    if (arguments.has("portrait"))
        setup.orientation = QPageLayout::Portrait;
    if (const auto text = arguments.value("margins")) {
        setup.margins = parse_margins(*text);
        if (!setup.margins)
            return Outcome::wrong_usage("--margins needs top,bottom,left,right in inches, not " +
                                        *text);
    }
    return Outcome::success();
}

Outcome read_printer(const Arguments& arguments, PageSetup& setup) {
    for (const char* option : page_options) {
        if (arguments.has(option))
            return Outcome::wrong_usage(QByteArray("--printer and --") + option +
                                        " cannot be combined");
    }
    const QByteArray id = *arguments.value("printer");
    return id.isEmpty() ? Outcome::wrong_usage("--printer needs the id of a printer")
                        : read_printer_setup(id, setup);
}

Outcome too_long(const char* what, qsizetype size, qsizetype limit) {
    return Outcome::wrong_usage(QByteArray(what) + " is " + QByteArray::number(size) +
                                " bytes long; the limit is " + QByteArray::number(limit));
}

Outcome read_mark_text(const Arguments& arguments, Watermark& mark) {
    mark.text = *arguments.value("watermark");
    if (mark.text.trimmed().isEmpty())
        return Outcome::wrong_usage("--watermark needs a text");
    if (mark.text.size() > Watermark::max_text)
        return too_long("the watermark's text", mark.text.size(), Watermark::max_text);
    mark.family = arguments.value("watermark-font").value_or(mark.family);
    if (mark.family.trimmed().isEmpty())
        return Outcome::wrong_usage("--watermark-font needs the name of a font");
    if (mark.family.size() > Watermark::max_family)
        return too_long("the name of the watermark's font", mark.family.size(),
                        Watermark::max_family);
    return Outcome::success();
}

Outcome read_mark_numbers(const Arguments& arguments, Watermark& mark) {
    if (const auto text = arguments.value("watermark-size")) {
        mark.size = parse_whole(*text, 1, max_watermark_size);
        if (!mark.size)
            return Outcome::wrong_usage(
                "--watermark-size needs a whole number of points from 1 to 1000, not " + *text);
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

} // namespace

Outcome read_page_options(const Arguments& arguments, PageSetup& setup) {
    setup.title = QFile::decodeName(arguments.value("title").value_or(QByteArray()));
    if (arguments.has("printer"))
        return read_printer(arguments, setup);
    Outcome font = read_font(arguments, setup);
    return font.ok() ? read_sheet(arguments, setup) : font;
}

Outcome read_watermark_options(const Arguments& arguments, std::optional<Watermark>& mark) {
    mark.reset();
    if (!arguments.has("watermark")) {
        for (const char* option : watermark_options) {
            if (arguments.has(option))
                return Outcome::wrong_usage(QByteArray("--") + option + " requires --watermark");
        }
        return Outcome::success();
    }
    Watermark read;
    Outcome text = read_mark_text(arguments, read);
    if (!text.ok())
        return text;
    Outcome numbers = read_mark_numbers(arguments, read);
    if (!numbers.ok())
        return numbers;
    read.in_front = arguments.has("watermark-front");
    mark = read;
    return Outcome::success();
}

Outcome read_pdf_options(const Arguments& arguments, PdfSetup& setup) {
    Outcome page = read_page_options(arguments, setup.page);
    if (!page.ok())
        return page;
    if (const auto form = arguments.value("form")) {
        if (form->isEmpty())
            return Outcome::wrong_usage("--form needs the name of a PDF file");
        setup.form = *form;
    }
    return read_watermark_options(arguments, setup.watermark);
}

std::optional<QColor> parse_mark_colour(const QByteArray& text) {
    if (text.startsWith('#')) {
        bool ok = false;
        const uint number = text.mid(1).toUInt(&ok, 16);
        return ok && text.size() == 7 ? std::optional(QColor(QRgb(number))) : std::nullopt;
    }
    const auto numbers =
        parse_list<3>(text, [](const QByteArray& part) { return parse_whole(part, 0, 255); });
    return numbers ? std::optional(QColor((*numbers)[0], (*numbers)[1], (*numbers)[2]))
                   : std::nullopt;
}

std::optional<QPointF> parse_place(const QByteArray& text) {
    const auto numbers = parse_list<2>(
        text, [](const QByteArray& part) { return parse_fraction(part, -max_place, max_place); });
    return numbers ? std::optional(QPointF((*numbers)[0], (*numbers)[1])) : std::nullopt;
}

} // namespace host
