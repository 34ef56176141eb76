#include <printman/select/patternlexer.h>

namespace printman {

namespace {

using Kind = PatternToken::Kind;

constexpr int max_back_reference = 14; // QRegExp refuses more
constexpr double ranges_per_step = 8.0;
constexpr double shorthand_ranges = 10.0;

} // namespace

bool PatternLexer::take(char16_t c) {
    const bool is_there = at(c);
    pos_ += is_there;
    return is_there;
}

void PatternLexer::next() {
    token_ = PatternToken();
    if (failed_ || pos_ >= in_.size())
        return;
    token_.kind = Kind::character;
    switch (in_.at(pos_++).unicode()) {
    case u'^':
    case u'$':
        token_.kind = Kind::anchor;
        break;
    case u'(':
        read_parenthesis();
        break;
    case u')':
        token_.kind = Kind::close;
        break;
    case u'|':
        token_.kind = Kind::bar;
        break;
    case u'*':
        token_ = {.kind = Kind::quantifier, .least = 0, .most = PatternToken::unbounded};
        break;
    case u'+':
        token_ = {.kind = Kind::quantifier, .least = 1, .most = PatternToken::unbounded};
        break;
    case u'?':
        token_ = {.kind = Kind::quantifier, .least = 0, .most = 1};
        break;
    case u'{':
        read_repetition();
        break;
    case u'.':
        token_.kind = Kind::set;
        break;
    case u'[':
        read_set();
        break;
    case u'\\':
        read_escape();
        break;
    case u']':
    case u'}':
        fail();
        break;
    default:
        break;
    }
}

void PatternLexer::read_escape() {
    if (pos_ >= in_.size())
        return fail();
    const QChar c = in_.at(pos_++);
    switch (c.unicode()) {
    case u'b':
    case u'B':
        token_.kind = Kind::anchor;
        return;
    case u'd':
    case u'D':
    case u's':
    case u'S':
    case u'w':
    case u'W':
        token_.kind = Kind::set;
        token_.weight += shorthand_ranges / ranges_per_step;
        return;
    case u'0':
        return read_octal();
    case u'x':
        return read_hexadecimal();
    default:
        if (c >= u'1' && c <= u'9')
            read_reference(c.unicode() - u'0');
    }
}

void PatternLexer::read_octal() {
    int value = 0;
    for (int i = 0; i < 3 && peek() >= u'0' && peek() <= u'7'; ++i)
        value = 8 * value + (in_.at(pos_++).unicode() - u'0');
    if (value > 0377)
        fail();
}

void PatternLexer::read_hexadecimal() {
    const auto is_hex = [](QChar digit) {
        const QChar low = digit.toLower();
        return (low >= u'0' && low <= u'9') || (low >= u'a' && low <= u'f');
    };
    for (int i = 0; i < 4 && is_hex(peek()); ++i)
        ++pos_;
}

void PatternLexer::read_reference(int first_digit) {
    token_.kind = Kind::reference;
    token_.reference = first_digit;
    while (peek() >= u'0' && peek() <= u'9') {
        token_.reference = 10 * token_.reference + (in_.at(pos_++).unicode() - u'0');
        if (token_.reference > max_back_reference)
            return fail();
    }
}

void PatternLexer::read_set() {
    double ranges = 0;
    take(u'^');
    // A bracket in the first place stands for itself.
    do {
        if (pos_ >= in_.size())
            return fail();
        ++ranges;
        if (in_.at(pos_++) != u'\\')
            continue;
        token_ = PatternToken{.kind = Kind::character};
        read_escape();
        if (token_.kind == Kind::set)
            ranges += shorthand_ranges;
        else if (token_.kind != Kind::character)
            return fail();
    } while (!at(u']') && !failed_);
    ++pos_;
    token_ = {.kind = Kind::set, .weight = 1.0 + ranges / ranges_per_step};
}

void PatternLexer::read_parenthesis() {
    token_.kind = Kind::open;
    token_.captures = !take(u'?');
    if (token_.captures)
        return;
    if (take(u'=') || take(u'!'))
        token_.kind = Kind::ahead;
    else if (!take(u':'))
        fail();
}

int PatternLexer::read_number(int missing) {
    if (!(peek() >= u'0' && peek() <= u'9'))
        return missing;
    int number = 0;
    while (peek() >= u'0' && peek() <= u'9') {
        number = 10 * number + (in_.at(pos_++).unicode() - u'0');
        if (number >= PatternToken::unbounded) {
            fail();
            return missing;
        }
    }
    return number;
}

void PatternLexer::read_repetition() {
    token_.kind = Kind::quantifier;
    token_.least = read_number(0);
    token_.most = take(u',') ? read_number(PatternToken::unbounded) : token_.least;
    if (token_.most < token_.least || !take(u'}'))
        fail();
}

} // namespace printman
