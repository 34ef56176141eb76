#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace host {

/// Sets a fixed field of a record to a text, cut to what fits with a terminating zero byte.
template <size_t N>
void set_field(char (&field)[N], const QByteArray& text) {
    std::memset(field, 0, N);
    std::memcpy(field, text.constData(), std::min(static_cast<size_t>(text.size()), N - 1));
}

/// The text in a fixed field, which need not be terminated.
template <size_t N>
QByteArray field_text(const char (&field)[N]) {
    return {field, static_cast<qsizetype>(qstrnlen(field, N))};
}

} // namespace host
