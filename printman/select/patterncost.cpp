#include <printman/select/patterncost.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace printman {

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

// A step takes about 10 ns.
constexpr double max_steps = 1e8;
constexpr double max_size = 1e5;
constexpr double max_capture_cells = 1e6;
constexpr double max_anchors = 16;
constexpr int max_depth = 100;
constexpr int max_look_aheads = 8;

// What QRegExp itself refuses.
constexpr int infinite_repetition = 1025;
constexpr int max_back_reference = 14;
constexpr double max_ahead_copies = 13;

constexpr double ranges_per_step = 8.0;
constexpr double captures_per_step = 40.0;
constexpr double atoms_per_step = 4.0;
constexpr double sleepers_per_step = 8.0;
constexpr double shorthand_ranges = 10.0;
constexpr double engine_size = 20.0; ///< of an automaton, whatever stands in it

enum class Kind { end, character, set, reference, anchor, ahead, open, close, bar, quantifier };

struct Token {
    Kind kind = Kind::end;
    double weight = 1.0;   ///< of a set: what a test costs
    bool captures = false; ///< of an opening parenthesis
    int least = 0;         ///< of a quantifier
    int most = 0;
    int reference = 0;
};

/// A part of an automaton under construction.
struct Box {
    double first = 0.0; ///< weighted number of the states that may be the first
    double first_refs = 0.0;
    double last = 0.0; ///< number of states that may be the last
    double longest = 0.0;
    bool is_nullable = true;
};

} // namespace

/// Reads an expression as QRegExp does, and counts what it would build.
class PatternCost::Parser {
public:
    explicit Parser(const QString& pattern) : in_(pattern) {}

    /// @return whether the expression is well formed and within the limits
    bool parse(Automaton& automaton);

private:
    QChar peek() const { return pos_ < in_.size() ? in_.at(pos_) : QChar(); }
    bool at(char16_t c) const { return pos_ < in_.size() && in_.at(pos_) == c; }
    bool take(char16_t c);
    void fail() { failed_ = true; }

    void next();
    void read_escape();
    void read_set();
    void read_parenthesis();
    void read_repetition();
    int read_number(int missing);
    void read_reference(int first_digit);

    bool at_term_end() const {
        return token_.kind == Kind::end || token_.kind == Kind::close || token_.kind == Kind::bar;
    }
    void parse_automaton();
    Box parse_expression();
    Box parse_term();
    Box parse_factor();
    Box parse_atom();
    Box parse_group();
    void parse_ahead();
    Box repeat(const Box& atom, const Token& quantifier, bool captures);
    Box concatenate(const Box& left, const Box& right);
    Box state(double weight, bool is_reference);
    void multiply(const Automaton& before, double copies);

    const QString& in_;
    qsizetype pos_ = 0;
    Token token_;
    Automaton* now_ = nullptr;
    int depth_ = 0;       ///< of groups in this automaton
    int total_depth_ = 0; ///< of groups and look aheads
    int look_aheads_ = 0;
    bool failed_ = false;
};

bool PatternCost::Parser::parse(Automaton& automaton) {
    now_ = &automaton;
    next();
    parse_automaton();
    return !failed_ && token_.kind == Kind::end;
}

bool PatternCost::Parser::take(char16_t c) {
    const bool is_there = at(c);
    pos_ += is_there;
    return is_there;
}

void PatternCost::Parser::next() {
    token_ = Token();
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
        token_ = {.kind = Kind::quantifier, .least = 0, .most = infinite_repetition};
        break;
    case u'+':
        token_ = {.kind = Kind::quantifier, .least = 1, .most = infinite_repetition};
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

void PatternCost::Parser::read_escape() {
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
    case u'0': {
        int value = 0;
        for (int i = 0; i < 3 && peek() >= u'0' && peek() <= u'7'; ++i)
            value = 8 * value + (in_.at(pos_++).unicode() - u'0');
        if (value > 0377)
            fail();
        return;
    }
    case u'x': {
        const auto is_hex = [](QChar digit) {
            const QChar low = digit.toLower();
            return (low >= u'0' && low <= u'9') || (low >= u'a' && low <= u'f');
        };
        for (int i = 0; i < 4 && is_hex(peek()); ++i)
            ++pos_;
        return;
    }
    default:
        if (c >= u'1' && c <= u'9')
            read_reference(c.unicode() - u'0');
    }
}

void PatternCost::Parser::read_reference(int first_digit) {
    token_.kind = Kind::reference;
    token_.reference = first_digit;
    while (peek() >= u'0' && peek() <= u'9') {
        token_.reference = 10 * token_.reference + (in_.at(pos_++).unicode() - u'0');
        if (token_.reference > max_back_reference)
            return fail();
    }
}

void PatternCost::Parser::read_set() {
    double ranges = 0;
    take(u'^');
    // A bracket that comes first stands for itself.
    do {
        if (pos_ >= in_.size())
            return fail();
        ++ranges;
        if (in_.at(pos_++) != u'\\')
            continue;
        token_ = Token{.kind = Kind::character};
        read_escape();
        if (token_.kind == Kind::set)
            ranges += shorthand_ranges;
        else if (token_.kind != Kind::character)
            return fail();
    } while (!at(u']') && !failed_);
    ++pos_;
    token_ = {.kind = Kind::set, .weight = 1.0 + ranges / ranges_per_step};
}

void PatternCost::Parser::read_parenthesis() {
    token_.kind = Kind::open;
    token_.captures = !take(u'?');
    if (token_.captures)
        return;
    if (take(u'=') || take(u'!'))
        token_.kind = Kind::ahead;
    else if (!take(u':'))
        fail();
}

int PatternCost::Parser::read_number(int missing) {
    if (!(peek() >= u'0' && peek() <= u'9'))
        return missing;
    int number = 0;
    while (peek() >= u'0' && peek() <= u'9') {
        number = 10 * number + (in_.at(pos_++).unicode() - u'0');
        if (number >= infinite_repetition) {
            fail();
            return missing;
        }
    }
    return number;
}

void PatternCost::Parser::read_repetition() {
    token_.kind = Kind::quantifier;
    token_.least = read_number(0);
    token_.most = take(u',') ? read_number(infinite_repetition) : token_.least;
    if (token_.most < token_.least || !take(u'}'))
        fail();
}

void PatternCost::Parser::parse_automaton() {
    const Box box = parse_expression();
    now_->transitions += box.first + box.last + 1;
    now_->ref_transitions += box.first_refs;
    now_->longest = box.longest;
    now_->states += 2;
    double copies = 0;
    for (const Automaton& inner : now_->ahead)
        copies += inner.copies;
    // Beyond its limit QRegExp does not stop, but reads on in what it has read before.
    if (copies > max_ahead_copies)
        fail();
}

Box PatternCost::Parser::parse_expression() {
    Box box = parse_term();
    while (token_.kind == Kind::bar) {
        now_->is_plain = now_->is_straight = false;
        next();
        const Box other = parse_term();
        box.first += other.first;
        box.first_refs += other.first_refs;
        box.last += other.last;
        box.longest = std::max(box.longest, other.longest);
        box.is_nullable |= other.is_nullable;
    }
    return box;
}

Box PatternCost::Parser::parse_term() {
    Box box;
    while (!at_term_end() && !failed_)
        box = concatenate(box, parse_factor());
    return box;
}

Box PatternCost::Parser::parse_factor() {
    const Automaton before = *now_;
    const bool captures = token_.kind == Kind::open && token_.captures;
    ++now_->atoms;
    Box box = parse_atom();
    if (token_.kind != Kind::quantifier || failed_)
        return box;
    const Token quantifier = token_;
    now_->is_plain = now_->is_straight = false;
    multiply(before, std::max({1, quantifier.least,
                               quantifier.most == infinite_repetition ? 1 : quantifier.most}));
    box = repeat(box, quantifier, captures);
    next();
    return box;
}

Box PatternCost::Parser::parse_atom() {
    Box box;
    now_->is_plain &= token_.kind == Kind::character;
    switch (token_.kind) {
    case Kind::character:
    case Kind::set:
        box = state(token_.weight, false);
        break;
    case Kind::reference:
        now_->captures = std::max<double>(now_->captures, token_.reference);
        now_->anchors += depth_ > 0;
        now_->is_straight = false;
        box = state(1.0, true);
        break;
    case Kind::anchor:
        now_->anchors += depth_ > 0;
        break;
    case Kind::ahead:
        now_->anchors += depth_ > 0;
        parse_ahead();
        break;
    case Kind::open:
        return parse_group();
    default:
        fail();
    }
    next();
    return box;
}

Box PatternCost::Parser::parse_group() {
    now_->captures += token_.captures;
    if (++total_depth_ > max_depth)
        fail();
    ++depth_;
    next();
    const Box box = failed_ ? Box() : parse_expression();
    if (token_.kind != Kind::close)
        fail();
    --depth_;
    --total_depth_;
    next();
    return box;
}

void PatternCost::Parser::parse_ahead() {
    if (++look_aheads_ > max_look_aheads || ++total_depth_ > max_depth)
        return fail();
    Automaton inner;
    Automaton* const outer = now_;
    const int outer_depth = depth_;
    now_ = &inner;
    depth_ = 0;
    next();
    parse_automaton();
    if (token_.kind != Kind::close)
        fail();
    now_ = outer;
    depth_ = outer_depth;
    --total_depth_;
    now_->ahead.push_back(inner);
}

Box PatternCost::Parser::state(double weight, bool is_reference) {
    ++now_->states;
    now_->heaviest = std::max(now_->heaviest, weight);
    return {.first = weight,
            .first_refs = is_reference ? 1.0 : 0.0,
            .last = 1.0,
            .longest = is_reference ? infinite : 1.0,
            .is_nullable = is_reference};
}

Box PatternCost::Parser::concatenate(const Box& left, const Box& right) {
    now_->transitions += left.last * right.first;
    now_->ref_transitions += left.last * right.first_refs;
    Box box = left;
    if (left.is_nullable) {
        box.first += right.first;
        box.first_refs += right.first_refs;
    }
    box.last = right.last + (right.is_nullable ? left.last : 0.0);
    box.longest += right.longest;
    box.is_nullable &= right.is_nullable;
    return box;
}

/// Counts what was added since @p before @p copies times.
void PatternCost::Parser::multiply(const Automaton& before, double copies) {
    const auto scale = [copies](double& now, double then) { now = then + (now - then) * copies; };
    scale(now_->states, before.states);
    scale(now_->transitions, before.transitions);
    scale(now_->ref_transitions, before.ref_transitions);
    scale(now_->reentering, before.reentering);
    scale(now_->atoms, before.atoms);
    scale(now_->anchors, before.anchors);
    for (size_t i = before.ahead.size(); i < now_->ahead.size(); ++i)
        now_->ahead[i].copies *= copies;
}

/// A repeated atom is a chain of its copies, the optional ones each within the one before.
Box PatternCost::Parser::repeat(const Box& atom, const Token& quantifier, bool captures) {
    const bool is_endless = quantifier.most == infinite_repetition;
    Box last = quantifier.most == 0 ? Box() : atom;
    if (is_endless) {
        now_->transitions += atom.last * atom.first;
        now_->ref_transitions += atom.last * atom.first_refs;
        if (captures)
            now_->reentering += atom.last * atom.first;
        last.longest = atom.longest > 0 ? infinite : 0.0;
    }
    last.is_nullable |= quantifier.least == 0;
    const int needed = std::max(0, quantifier.least - 1);
    const int optional = is_endless ? 0 : quantifier.most - needed - 1;
    Box chain;
    for (int i = 0; i < optional; ++i) {
        chain = concatenate(atom, chain);
        chain.is_nullable = true;
    }
    for (int i = 0; i < needed; ++i)
        chain = concatenate(atom, chain);
    return concatenate(chain, last);
}

double PatternCost::Automaton::size() const {
    double total = engine_size + states + transitions + anchors;
    for (const Automaton& inner : ahead)
        total += inner.copies * inner.size();
    return total;
}

bool PatternCost::Automaton::combines_too_much() const {
    return anchors > max_anchors || states * captures > max_capture_cells ||
           std::any_of(ahead.begin(), ahead.end(),
                       [](const Automaton& inner) { return inner.combines_too_much(); });
}

double PatternCost::Automaton::steps_from_one_start(double length) const {
    if (is_plain)
        return 1.0;
    double test = std::pow(3.0, anchors / 3.0) + captures / captures_per_step;
    for (const Automaton& inner : ahead)
        test += inner.copies * (inner.steps_from_one_start(length) + inner.size());
    double step = is_straight ? heaviest * test : transitions * test;
    step += ref_transitions * (length / sleepers_per_step);
    step += reentering * (atoms / atoms_per_step);
    return (std::min(length, longest) + 1) * step;
}

PatternCost::PatternCost(const QString& pattern) {
    if (!Parser(pattern).parse(automaton_))
        return;
    compiles_ = automaton_.size() <= max_size && !automaton_.combines_too_much();
}

bool PatternCost::allows(qsizetype length) const {
    const auto characters = static_cast<double>(length);
    return compiles_ && (characters + 1) * automaton_.steps_from_one_start(characters) <= max_steps;
}

} // namespace printman
