#pragma once

#include <QByteArray>

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

} // namespace host
