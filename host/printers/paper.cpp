#include "host/printers/paper.h"

#include "host/settings/numbers.h"

#include <printman/toolkit/pagesizes.h>

#include <QLocale>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace host {

namespace {

constexpr int paper_a4 = 0;
constexpr int paper_letter = 2;
constexpr double min_room = 0.5; // inches

} // namespace

std::optional<int> paper_number(const QByteArray& name) {
    for (int number = 0; number < printman::page_size_count; ++number) {
        if (name.compare(printman::page_size_name(number), Qt::CaseInsensitive) == 0)
            return number;
    }
    return std::nullopt;
}

QByteArray paper_names() {
    QByteArray list;
    for (int number = 0; number < printman::page_size_count; ++number)
        list += (number == 0 ? "" : ", ") + QByteArray(printman::page_size_name(number));
    return list;
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
    const auto numbers = parse_list<4>(
        text, [](const QByteArray& part) { return parse_fraction(part, 0, max_margin); });
    if (!numbers)
        return std::nullopt;
    const auto [top, bottom, left, right] = *numbers;
    return PageMargins{.top = top, .left = left, .bottom = bottom, .right = right};
}

bool leave_room(const PageMargins& margins, QSizeF inches) {
    return inches.width() - margins.left - margins.right >= min_room &&
           inches.height() - margins.top - margins.bottom >= min_room;
}

} // namespace host
