#pragma once

#include <QByteArray>

#include <string>
#include <string_view>

namespace printman {

/// PostScript source being written: texts, numbers and strings appended to a buffer.
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

    /// Appends @p value with at most @p decimals digits (0 to 6) behind the point, without trailing
    /// zeros. What is no number becomes 0, what is beyond 10 million is cut there.
    PsStream& number(double value, int decimals);

    /// Appends a string literal that holds @p bytes whatever they are: parentheses, backslashes and
    /// all that is not printable ASCII are escaped, and no line becomes longer than 204 characters.
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

/// Makes a text safe for a document structuring comment: one line of printable ASCII.
QByteArray ps_comment_text(const QString& text);

} // namespace printman
