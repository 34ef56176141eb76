#include <printman/printer/papersize.h>
#include <printman/printer/textfield.h>
#include <printman/toolkit/pagesizes.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

struct PaperText {
    std::string_view name; ///< as printman::page_size_name() returns it
    std::string_view text;
};

constexpr PaperText paper_texts[] = {
    {"A0", "841 x 1189 mm"},
    {"A1", "594 x 841 mm"},
    {"A2", "420 x 594 mm"},
    {"A3", "297 x 420 mm"},
    {"A4", "210 x 297 mm, 8.26 x 11.7 inches"},
    {"A5", "148 x 210 mm"},
    {"A6", "105 x 148 mm"},
    {"A7", "74 x 105 mm"},
    {"A8", "52 x 74 mm"},
    {"A9", "37 x 52 mm"},
    {"B0", "1030 x 1456 mm"},
    {"B1", "728 x 1030 mm"},
    {"B10", "32 x 45 mm"},
    {"B2", "515 x 728 mm"},
    {"B3", "364 x 515 mm"},
    {"B4", "257 x 364 mm"},
    {"B5", "182 x 257 mm, 7.17 x 10.13 inches"},
    {"B6", "128 x 182 mm"},
    {"B7", "91 x 128 mm"},
    {"B8", "64 x 91 mm"},
    {"B9", "45 x 64 mm"},
    {"C5E", "163 x 229 mm"},
    {"Comm10E", "105 x 241 mm, US Common #10 Emvelope"},
    {"DLE", "110 x 220 mm"},
    {"Executive", "7.5 x 10 inches, 191 x 254 mm"},
    {"Folio", "210 x 330 mm"},
    {"Ledger", "432 x 279 mm"},
    {"Legal", "8.5 x 14 inches, 216 x 356 mm"},
    {"Letter", "8.5 x 11 inches, 216 x 279 mm"},
    {"Tabloid", "279 x 432 mm"},
};
static_assert(std::size(paper_texts) == printman::page_size_count);

int store(char* buffer, int size, std::string_view text) {
    if (!buffer || size <= 0)
        return 0;
    std::memset(buffer, 0, static_cast<size_t>(size));
    return static_cast<int>(text.copy(buffer, static_cast<size_t>(size) - 1));
}

} // namespace

int get_paper_size(short number, char* buffer, int size) {
    const char* const name = printman::page_size_name(number);
    if (!name)
        return 0;
    const auto* const found = std::ranges::find(paper_texts, name, &PaperText::name);
    return found == std::end(paper_texts) ? 0 : store(buffer, size, found->text);
}

int get_paper_size(const DLWDEVMODE* devmode, char* buffer, int size) {
    return store(buffer, size,
                 devmode ? printman::field_text(devmode->form_name) : std::string_view());
}
