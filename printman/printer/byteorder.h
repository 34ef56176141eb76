#pragma once

#include <printman/printer/prtsetup.h>
#include <printman/printer/setupfile.h>

#include <algorithm>
#include <bit>
#include <span>
#include <type_traits>

// Conversion between the setup file's byte order, little-endian, and that of a machine; it is the
// same in both directions. The machine's order is a template parameter, so that both can be tested
// on every machine.

namespace printman {

/// Reverses the bytes of @p number.
template <typename Number>
void reverse_bytes(Number& number) {
    static_assert(std::is_arithmetic_v<Number>);
    std::ranges::reverse(std::as_writable_bytes(std::span(&number, 1)));
}

template <std::endian Machine, typename... Numbers>
void convert_numbers(Numbers&... numbers) {
    if constexpr (Machine != std::endian::little)
        (reverse_bytes(numbers), ...);
}

template <std::endian Machine>
void convert_log_font(DLWLOGFONT& font) {
    convert_numbers<Machine>(font.height, font.width, font.escapement, font.orientation,
                             font.weight);
}

template <std::endian Machine>
void convert_font(FontInfo& font) {
    convert_numbers<Machine>(font.point_size);
    convert_log_font<Machine>(font.log_font);
}

template <std::endian Machine>
void convert_devmode(DLWDEVMODE& devmode) {
    convert_numbers<Machine>(devmode.word_128, devmode.word_130, devmode.word_132,
                             devmode.word_134);
    convert_numbers<Machine>(devmode.fields, devmode.orientation, devmode.paper_size);
    convert_numbers<Machine>(devmode.word_148, devmode.word_150, devmode.word_152, devmode.word_154,
                             devmode.word_156, devmode.word_158);
    convert_numbers<Machine>(devmode.word_160);
    convert_numbers<Machine>(devmode.word_164, devmode.word_166, devmode.word_168,
                             devmode.word_170);
    convert_numbers<Machine>(devmode.word_220, devmode.word_222);
    convert_numbers<Machine>(devmode.word_224, devmode.word_228, devmode.word_232, devmode.word_236,
                             devmode.from_page, devmode.to_page);
}

template <std::endian Machine>
void convert_page(PageInfo& page) {
    convert_numbers<Machine>(page.use_default_page_length, page.page_length, page.word_8,
                             page.first_line, page.last_line);
}

template <std::endian Machine>
void convert_margins(MarginInfo& margins) {
    convert_numbers<Machine>(margins.top, margins.bottom, margins.left, margins.right);
}

template <std::endian Machine>
void convert_record(SetupRecord& record) {
    convert_numbers<Machine>(record.in_use, record.setup_value);
    convert_font<Machine>(record.font);
    convert_devmode<Machine>(record.devmode);
    convert_page<Machine>(record.page);
    convert_margins<Machine>(record.margins);
}

} // namespace printman
