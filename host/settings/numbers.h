#pragma once

#include <QByteArray>
#include <QList>

#include <array>
#include <optional>

namespace host {

/// Reads a whole decimal number from @p low to @p high that is all of @p text.
inline std::optional<int> parse_whole(const QByteArray& text, int low, int high) {
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok && number >= low && number <= high ? std::optional(number) : std::nullopt;
}

/// The same for a decimal fraction; neither an infinity nor a NaN is one.
inline std::optional<double> parse_fraction(const QByteArray& text, double low, double high) {
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok && number >= low && number <= high ? std::optional(number) : std::nullopt;
}

/// Reads a list of exactly @p N numbers separated by commas.
///
/// @param parse reads one of them: a text to an optional number
template <size_t N, typename Parse>
auto parse_list(const QByteArray& text, const Parse& parse) {
    using Number = typename decltype(parse(text))::value_type;
    const QList<QByteArray> parts = text.split(',');
    std::array<Number, N> numbers{};
    bool ok = parts.size() == static_cast<qsizetype>(N);
    for (size_t i = 0; ok && i < N; ++i) {
        const std::optional<Number> number = parse(parts.at(static_cast<qsizetype>(i)).trimmed());
        ok = number.has_value();
        numbers[i] = number.value_or(Number{});
    }
    return ok ? std::optional(numbers) : std::nullopt;
}

} // namespace host
