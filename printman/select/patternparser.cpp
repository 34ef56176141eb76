#include <printman/select/patternlexer.h>
#include <printman/select/patternparser.h>

#include <algorithm>
#include <limits>

namespace printman {

namespace {

using Kind = PatternToken::Kind;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr int max_depth = 100;
constexpr int max_look_aheads = 8;
constexpr double max_ahead_copies = 13; // QRegExp's own limit

/// A part of an automaton under construction.
struct Box {
    double first = 0.0; ///< weighted number of the states that may be first
    double first_refs = 0.0;
    double last = 0.0; ///< number of the states that may be last
    double longest = 0.0;
    bool is_nullable = true;
};

/// Reads an expression as QRegExp does, and counts what it would build.
class Parser {
public:
    explicit Parser(const QString& pattern) : lexer_(pattern) {}

    /// @return whether the expression is well formed and within the limits
    bool parse(PatternAutomaton& automaton);

private:
    const PatternToken& token() const { return lexer_.token(); }
    bool failed() const { return lexer_.failed(); }

    bool at_term_end() const {
        return token().kind == Kind::end || token().kind == Kind::close ||
               token().kind == Kind::bar;
    }
    void parse_automaton();
    Box parse_expression();
    Box parse_term();
    Box parse_factor();
    Box parse_atom();
    Box parse_group();
    void parse_ahead();
    Box repeat(const Box& atom, const PatternToken& quantifier, bool captures);
    Box concatenate(const Box& left, const Box& right);
    Box state(double weight, bool is_reference);
    void multiply(const PatternAutomaton& before, double copies);

    PatternLexer lexer_;
    PatternAutomaton* automaton_ = nullptr;
    int depth_ = 0;       ///< of groups in this automaton
    int total_depth_ = 0; ///< of groups and look aheads
    int look_aheads_ = 0;
};

bool Parser::parse(PatternAutomaton& automaton) {
    automaton_ = &automaton;
    lexer_.next();
    parse_automaton();
    return !failed() && token().kind == Kind::end;
}

void Parser::parse_automaton() {
    const Box box = parse_expression();
    automaton_->transitions += box.first + box.last + 1;
    automaton_->ref_transitions += box.first_refs;
    automaton_->longest = box.longest;
    automaton_->states += 2;
    double copies = 0;
    for (const PatternAutomaton& inner : automaton_->ahead)
        copies += inner.copies;
    // Beyond its limit QRegExp does not stop, but reads on in what it has read before.
    if (copies > max_ahead_copies)
        lexer_.fail();
}

Box Parser::parse_expression() {
    Box box = parse_term();
    while (token().kind == Kind::bar) {
        automaton_->is_plain = automaton_->is_straight = false;
        lexer_.next();
        const Box other = parse_term();
        box.first += other.first;
        box.first_refs += other.first_refs;
        box.last += other.last;
        box.longest = std::max(box.longest, other.longest);
        box.is_nullable |= other.is_nullable;
    }
    return box;
}

Box Parser::parse_term() {
    Box box;
    while (!at_term_end() && !failed())
        box = concatenate(box, parse_factor());
    return box;
}

Box Parser::parse_factor() {
    const PatternAutomaton before = *automaton_;
    const bool captures = token().kind == Kind::open && token().captures;
    ++automaton_->atoms;
    Box box = parse_atom();
    if (token().kind != Kind::quantifier || failed())
        return box;
    const PatternToken quantifier = token();
    automaton_->is_plain = automaton_->is_straight = false;
    multiply(before, std::max({1, quantifier.least,
                               quantifier.most == PatternToken::unbounded ? 1 : quantifier.most}));
    box = repeat(box, quantifier, captures);
    lexer_.next();
    return box;
}

Box Parser::parse_atom() {
    Box box;
    automaton_->is_plain &= token().kind == Kind::character;
    switch (token().kind) {
    case Kind::character:
    case Kind::set:
        box = state(token().weight, false);
        break;
    case Kind::reference:
        automaton_->captures = std::max<double>(automaton_->captures, token().reference);
        automaton_->anchors += depth_ > 0;
        automaton_->is_straight = false;
        box = state(1.0, true);
        break;
    case Kind::anchor:
        automaton_->anchors += depth_ > 0;
        break;
    case Kind::ahead:
        automaton_->anchors += depth_ > 0;
        parse_ahead();
        break;
    case Kind::open:
        return parse_group();
    default:
        lexer_.fail();
    }
    lexer_.next();
    return box;
}

Box Parser::parse_group() {
    automaton_->captures += token().captures;
    if (++total_depth_ > max_depth)
        lexer_.fail();
    ++depth_;
    lexer_.next();
    const Box box = failed() ? Box() : parse_expression();
    if (token().kind != Kind::close)
        lexer_.fail();
    --depth_;
    --total_depth_;
    lexer_.next();
    return box;
}

void Parser::parse_ahead() {
    if (++look_aheads_ > max_look_aheads || ++total_depth_ > max_depth)
        return lexer_.fail();
    PatternAutomaton inner;
    PatternAutomaton* const outer = automaton_;
    const int outer_depth = depth_;
    automaton_ = &inner;
    depth_ = 0;
    lexer_.next();
    parse_automaton();
    if (token().kind != Kind::close)
        lexer_.fail();
    automaton_ = outer;
    depth_ = outer_depth;
    --total_depth_;
    automaton_->ahead.push_back(inner);
}

Box Parser::state(double weight, bool is_reference) {
    ++automaton_->states;
    automaton_->heaviest = std::max(automaton_->heaviest, weight);
    return {.first = weight,
            .first_refs = is_reference ? 1.0 : 0.0,
            .last = 1.0,
            .longest = is_reference ? infinite : 1.0,
            .is_nullable = is_reference};
}

Box Parser::concatenate(const Box& left, const Box& right) {
    automaton_->transitions += left.last * right.first;
    automaton_->ref_transitions += left.last * right.first_refs;
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

/// Multiplies what was added since @p before by @p copies.
void Parser::multiply(const PatternAutomaton& before, double copies) {
    const auto scale = [copies](double& now, double then) { now = then + (now - then) * copies; };
    scale(automaton_->states, before.states);
    scale(automaton_->transitions, before.transitions);
    scale(automaton_->ref_transitions, before.ref_transitions);
    scale(automaton_->reentering, before.reentering);
    scale(automaton_->atoms, before.atoms);
    scale(automaton_->anchors, before.anchors);
    for (size_t i = before.ahead.size(); i < automaton_->ahead.size(); ++i)
        automaton_->ahead[i].copies *= copies;
}

/// A repeated atom is a chain of copies, of which each optional one is nested in the one before.
Box Parser::repeat(const Box& atom, const PatternToken& quantifier, bool captures) {
    const bool is_endless = quantifier.most == PatternToken::unbounded;
    Box last = quantifier.most == 0 ? Box() : atom;
    if (is_endless) {
        automaton_->transitions += atom.last * atom.first;
        automaton_->ref_transitions += atom.last * atom.first_refs;
        if (captures)
            automaton_->reentering += atom.last * atom.first;
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

} // namespace

bool parse_pattern(const QString& pattern, PatternAutomaton& automaton) {
    return Parser(pattern).parse(automaton);
}

} // namespace printman
