#include <printman/toolkit/pagesizes.h>

#include <QSizeF>

#include <iterator>

namespace printman {

namespace {

struct Row {
    const char* name;
    QPageSize::PageSizeId id;
};

// In the order of the numbers.
constexpr Row rows[] = {
    {"A4", QPageSize::A4},
    {"B5", QPageSize::JisB5},
    {"Letter", QPageSize::Letter},
    {"Legal", QPageSize::Legal},
    {"Executive", QPageSize::Executive},
    {"A0", QPageSize::A0},
    {"A1", QPageSize::A1},
    {"A2", QPageSize::A2},
    {"A3", QPageSize::A3},
    {"A5", QPageSize::A5},
    {"A6", QPageSize::A6},
    {"A7", QPageSize::A7},
    {"A8", QPageSize::A8},
    {"A9", QPageSize::A9},
    {"B0", QPageSize::JisB0},
    {"B1", QPageSize::JisB1},
    {"B10", QPageSize::JisB10},
    {"B2", QPageSize::JisB2},
    {"B3", QPageSize::JisB3},
    {"B4", QPageSize::JisB4},
    {"B6", QPageSize::JisB6},
    {"B7", QPageSize::JisB7},
    {"B8", QPageSize::JisB8},
    {"B9", QPageSize::JisB9},
    {"C5E", QPageSize::C5E},
    {"Comm10E", QPageSize::Comm10E},
    {"DLE", QPageSize::DLE},
    {"Folio", QPageSize::Folio},
    {"Ledger", QPageSize::Ledger},
    {"Tabloid", QPageSize::Tabloid},
};
static_assert(std::size(rows) == page_size_count);

bool is_known(int number) {
    return number >= 0 && number < page_size_count;
}

} // namespace

QPageSize page_size_of(int number) {
    if (!is_known(number))
        return {};
    // Qt's C5E is a millimetre narrower than the paper that the number stands for.
    if (rows[number].id == QPageSize::C5E)
        return QPageSize(QSizeF(163, 229), QPageSize::Millimeter, QStringLiteral("C5E"),
                         QPageSize::ExactMatch);
    return QPageSize(rows[number].id);
}

const char* page_size_name(int number) {
    return is_known(number) ? rows[number].name : nullptr;
}

} // namespace printman
