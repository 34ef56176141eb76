#include "host/jobs/pagesetup.h"

#include "host/cli/command.h"
#include "host/printers/setupfile.h"
#include "host/settings/numbers.h"
#include "host/settings/settings.h"

#include <printman/printer/prtsetup.h>
#include <printman/printman.h>
#include <printman/toolkit/pagesizes.h>

#include <QFile>
#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>

namespace host {

namespace {

constexpr int paper_a4 = 0;
constexpr int paper_letter = 2;
constexpr double min_font_size = 1;
constexpr double max_font_size = 1000;
constexpr double max_margin = 100;
constexpr double least_room = 0.5;
constexpr double default_font_size = 12;
constexpr qsizetype max_family = 127; // bytes, that a printer's record takes

QByteArray names_of_papers() {
    QByteArray list;
    for (int number = 0; number < printman::page_size_count; ++number)
        list += (number == 0 ? "" : ", ") + QByteArray(printman::page_size_name(number));
    return list;
}

} // namespace

std::optional<int> paper_number(const QByteArray& name) {
    for (int number = 0; number < printman::page_size_count; ++number) {
        if (name.compare(printman::page_size_name(number), Qt::CaseInsensitive) == 0)
            return number;
    }
    return std::nullopt;
}

int usual_paper(const QLocale& locale) {
    static constexpr std::array letter_countries{
        QLocale::Belize,       QLocale::Canada,     QLocale::Chile,       QLocale::Colombia,
        QLocale::CostaRica,    QLocale::ElSalvador, QLocale::Guatemala,   QLocale::Mexico,
        QLocale::Nicaragua,    QLocale::Panama,     QLocale::Philippines, QLocale::PuertoRico,
        QLocale::UnitedStates, QLocale::Venezuela};
    return std::ranges::find(letter_countries, locale.territory()) != letter_countries.end()
               ? paper_letter
               : paper_a4;
}

int usual_paper() {
    for (const char* variable : {"LC_ALL", "LC_PAPER", "LANG"}) {
        const char* name = std::getenv(variable);
        if (name && *name)
            return usual_paper(QLocale(QString::fromLatin1(name)));
    }
    return paper_a4;
}

std::optional<PageMargins> parse_margins(const QByteArray& text) {
    const QList<QByteArray> parts = text.split(',');
    if (parts.size() != 4)
        return std::nullopt;
    std::array<double, 4> numbers{};
    for (size_t i = 0; i < numbers.size(); ++i) {
        const auto number = parse_fraction(parts.at(static_cast<qsizetype>(i)), 0, max_margin);
        if (!number)
            return std::nullopt;
        numbers[i] = *number;
    }
    return PageMargins{
        .top = numbers[0], .left = numbers[2], .bottom = numbers[1], .right = numbers[3]};
}

bool leave_room(const PageMargins& margins, QSizeF inches) {
    return inches.width() - margins.left - margins.right >= least_room &&
           inches.height() - margins.top - margins.bottom >= least_room;
}

QFont report_font(const QString& family, double point_size) {
    QFont font(family);
    font.setStyleHint(QFont::TypeWriter);
    font.setPointSizeF(point_size);
    return font;
}

QPageLayout::Orientation orientation_of(QSize grid) {
    return grid.width() > grid.height() ? QPageLayout::Landscape : QPageLayout::Portrait;
}

namespace {

/// Takes everything but the title from the options.
Outcome read_options(const Arguments& arguments, PageSetup& setup) {
    double size = default_font_size;
    if (const auto text = arguments.value("size")) {
        const auto number = parse_fraction(*text, min_font_size, max_font_size);
        if (!number)
            return Outcome::wrong_usage("--size needs a number of points from 1 to 1000, not " +
                                        *text);
        size = *number;
        setup.exact_size = true;
    }
    const QByteArray family = arguments.value("font").value_or("Courier New");
    if (family.trimmed().isEmpty())
        return Outcome::wrong_usage("--font needs the name of a font");
    if (family.size() > max_family)
        return Outcome::wrong_usage("the name of the font is longer than " +
                                    QByteArray::number(max_family) + " bytes");
    setup.font = report_font(QFile::decodeName(family), size);

    setup.paper = usual_paper();
    if (const auto text = arguments.value("paper")) {
        const auto number = paper_number(*text);
        if (!number)
            return Outcome::wrong_usage("there is no paper '" + *text + "', but " +
                                        names_of_papers());
        setup.paper = *number;
    }
    if (arguments.has("landscape") && arguments.has("portrait"))
        return Outcome::wrong_usage("--landscape and --portrait exclude each other");
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

double usable_margin(double inches) {
    return std::isfinite(inches) ? std::clamp(inches, 0.0, max_margin) : 0.0;
}

/// Takes everything but the title from a printer of the setup file.
Outcome read_printer(const Arguments& arguments, PageSetup& setup) {
    for (const char* option : {"font", "size", "paper", "landscape", "portrait", "margins"}) {
        if (arguments.has(option))
            return Outcome::wrong_usage(QByteArray("--printer and --") + option +
                                        " exclude each other");
    }
    const QByteArray id = *arguments.value("printer");
    if (id.isEmpty())
        return Outcome::wrong_usage("--printer needs the id of a printer");
    Outcome readable = check_setup_file_for(id);
    if (!readable.ok())
        return readable;
    DLWDEVMODE devmode{};
    FontInfo font{};
    MarginInfo margins{};
    if (get_prt_data(id.constData(), nullptr, nullptr, nullptr, &devmode, &font, nullptr,
                     &margins) != 0)
        return Outcome::failure(printer_not_found(id));
    const std::unique_ptr<QFont> record_font(CPrintMan().create_font(font));
    setup.font = *record_font;
    setup.font.setStyleHint(QFont::TypeWriter);
    setup.exact_size = host_settings().turns_page_map_off();
    setup.paper = printman::page_size_name(devmode.paper_size) ? devmode.paper_size : usual_paper();
    setup.orientation = devmode.orientation == 1 ? QPageLayout::Landscape : QPageLayout::Portrait;
    setup.margins = PageMargins{.top = usable_margin(margins.top),
                                .left = usable_margin(margins.left),
                                .bottom = usable_margin(margins.bottom),
                                .right = usable_margin(margins.right)};
    return Outcome::success();
}

} // namespace

Outcome PageSetup::read(const Arguments& arguments, PageSetup& setup) {
    setup.title = QFile::decodeName(arguments.value("title").value_or(QByteArray()));
    return arguments.has("printer") ? read_printer(arguments, setup)
                                    : read_options(arguments, setup);
}

} // namespace host
