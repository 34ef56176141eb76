#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace host {

/// Puts a text into a fixed field of a record, cut to what fits with its end.
template <size_t N>
void put(char (&field)[N], const QByteArray& text) {
    std::memset(field, 0, N);
    std::memcpy(field, text.constData(), std::min(static_cast<size_t>(text.size()), N - 1));
}

/// The text in a fixed field, which need not have an end.
template <size_t N>
QByteArray text_of(const char (&field)[N]) {
    return {field, static_cast<qsizetype>(qstrnlen(field, N))};
}

} // namespace host
