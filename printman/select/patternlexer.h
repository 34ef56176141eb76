#pragma once

#include <QString>

namespace printman {

/// A token of a regular expression in QRegExp's syntax.
struct PatternToken {
    enum class Kind { end, character, set, reference, anchor, ahead, open, close, bar, quantifier };

    /// Stands for the upper bound of a repetition that has none; QRegExp refuses such a number.
    static constexpr int unbounded = 1025;

    Kind kind = Kind::end;
    double weight = 1.0;   ///< of a set: the cost of a test, where that of a character is 1
    bool captures = false; ///< of an opening parenthesis
    int least = 0;         ///< of a quantifier
    int most = 0;          ///< of a quantifier
    int reference = 0;     ///< of a back reference: its number, from 1
};

/// Splits an expression into tokens as QRegExp reads it, and refuses what QRegExp refuses.
class PatternLexer {
public:
    /// @param pattern outlives the lexer
    explicit PatternLexer(const QString& pattern) : in_(pattern) {}

    /// The token that next() has read; an end before the first call.
    const PatternToken& token() const { return token_; }

    /// Reads the next token; an end at the end of the expression, and once it has failed.
    void next();

    /// Whether the expression is malformed.
    bool failed() const { return failed_; }

    /// Marks the expression as malformed.
    void fail() { failed_ = true; }

private:
    QChar peek() const { return pos_ < in_.size() ? in_.at(pos_) : QChar(); }
    bool at(char16_t c) const { return pos_ < in_.size() && in_.at(pos_) == c; }
    bool take(char16_t c);

    void read_escape();
    void read_octal();
    void read_hexadecimal();
    void read_set();
    void read_parenthesis();
    void read_repetition();
    int read_number(int missing);
    void read_reference(int first_digit);

    const QString& in_;
    qsizetype pos_ = 0;
    PatternToken token_;
    bool failed_ = false;
};

} // namespace printman
