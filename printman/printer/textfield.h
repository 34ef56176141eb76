#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace printman {

/// The text in a fixed-size field, which need not be terminated: at most one byte less than the
/// field has.
template <size_t N>
std::string_view field_text(const char (&field)[N]) {
    return {field, strnlen(field, N - 1)};
}

/// Whether the field holds exactly @p text. A field without a terminator matches both all of its
/// bytes and its field_text().
template <size_t N>
bool field_is(const char (&field)[N], std::string_view text) {
    return text == std::string_view(field, strnlen(field, N)) || text == field_text(field);
}

/// Terminates a field that has no zero byte at its last byte.
template <size_t N>
void terminate_field(char (&field)[N]) {
    if (strnlen(field, N) == N)
        field[N - 1] = '\0';
}

/// Copies as much of @p text as fits into @p size bytes with a terminator. Nothing is written
/// beyond the terminator, and nothing at all to a null buffer.
inline void put_text(char* buffer, size_t size, std::string_view text) {
    if (!buffer || size == 0)
        return;
    const size_t length = std::min(text.size(), size - 1);
    text.copy(buffer, length);
    buffer[length] = '\0';
}

} // namespace printman
