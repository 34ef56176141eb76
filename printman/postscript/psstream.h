#pragma once

#include <QByteArray>

#include <string>
#include <string_view>

namespace printman {

/// PostScript source: texts, numbers and strings that are appended to a buffer.
class PsStream {
public:
    PsStream& operator<<(std::string_view text) {
        buffer_.append(text);
        return *this;
    }

    PsStream& operator<<(char c) {
        buffer_.push_back(c);
        return *this;
    }

    /// Appends an integer.
    PsStream& integer(qint64 value);

    /// Appends @p value with at most @p decimals digits (0 to 6) after the point, without trailing
    /// zeros. NaN becomes 0, and the value is clamped to plus and minus 10 million.
    PsStream& number(double value, int decimals);

    /// Appends a string literal that holds any @p bytes: parentheses, backslashes and everything
    /// that is not printable ASCII are escaped, and no line becomes longer than 204 characters.
    PsStream& string(std::string_view bytes);

    /// Appends @p bytes as a hexadecimal string in lines of at most 240 characters, without the
    /// angle brackets.
    PsStream& hex(std::string_view bytes);

    std::string_view text() const { return buffer_; }
    size_t size() const { return buffer_.size(); }
    void clear() { buffer_.clear(); }

private:
    std::string buffer_;
};

/// A text in a form that is safe in a document structuring comment: one line of printable ASCII.
QByteArray ps_comment_text(const QString& text);

} // namespace printman
