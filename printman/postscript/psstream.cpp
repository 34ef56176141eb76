#include <printman/postscript/psstream.h>

#include <QString>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace printman {

namespace {

// A line of a structured document has at most 255 characters.
constexpr size_t max_string_line = 200;
constexpr qsizetype max_comment_text = 100;

} // namespace

PsStream& PsStream::integer(qint64 value) {
    char digits[24];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    buffer_.append(digits, result.ptr);
    return *this;
}

PsStream& PsStream::number(double value, int decimals) {
    static constexpr int scales[] = {1, 10, 100, 1000, 10000, 100000, 1000000};
    constexpr double limit = 1e7;
    const int scale = scales[decimals];
    const double cut = std::isnan(value) ? 0.0 : std::clamp(value, -limit, limit);
    qint64 units = std::llround(cut * scale);
    if (units < 0) {
        buffer_.push_back('-');
        units = -units;
    }
    integer(units / scale);
    qint64 rest = units % scale;
    if (rest == 0)
        return *this;
    buffer_.push_back('.');
    for (int place = scale / 10; rest != 0; place /= 10) {
        buffer_.push_back(static_cast<char>('0' + rest / place));
        rest %= place;
    }
    return *this;
}

PsStream& PsStream::string(std::string_view bytes) {
    buffer_.push_back('(');
    size_t line = buffer_.size();
    for (const char c : bytes) {
        if (buffer_.size() - line >= max_string_line) {
            buffer_.append("\\\n");
            line = buffer_.size();
        }
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7f) {
            const char octal[] = {'\\', static_cast<char>('0' + (byte >> 6)),
                                  static_cast<char>('0' + ((byte >> 3) & 7)),
                                  static_cast<char>('0' + (byte & 7))};
            buffer_.append(octal, sizeof octal);
            continue;
        }
        if (c == '(' || c == ')' || c == '\\')
            buffer_.push_back('\\');
        buffer_.push_back(c);
    }
    buffer_.push_back(')');
    return *this;
}

PsStream& PsStream::hex(std::string_view bytes) {
    static constexpr char digits[] = "0123456789abcdef";
    constexpr size_t bytes_a_line = 120;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        buffer_.push_back(digits[byte >> 4]);
        buffer_.push_back(digits[byte & 15]);
        if (i % bytes_a_line == bytes_a_line - 1)
            buffer_.push_back('\n');
    }
    return *this;
}

QByteArray ps_comment_text(const QString& text) {
    QByteArray ascii = text.toLatin1().left(max_comment_text);
    for (char& c : ascii) {
        if (c < 0x20 || c > 0x7e)
            c = '?';
    }
    return ascii;
}

} // namespace printman
