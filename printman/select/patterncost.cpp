#include <printman/select/patterncost.h>
#include <printman/select/patternparser.h>

namespace printman {

namespace {

constexpr double max_steps = 1e8; // a step takes about 10 ns
constexpr double max_size = 1e5;

} // namespace

PatternCost::PatternCost(const QString& pattern) {
    if (!parse_pattern(pattern, automaton_))
        return;
    compiles_ = automaton_.size() <= max_size && !automaton_.combines_too_much();
}

bool PatternCost::allows(qsizetype length) const {
    const auto characters = static_cast<double>(length);
    return compiles_ && (characters + 1) * automaton_.steps_from_one_start(characters) <= max_steps;
}

} // namespace printman
