#include <printman/select/patternautomaton.h>

#include <algorithm>
#include <cmath>

namespace printman {

namespace {

constexpr double max_capture_cells = 1e6;
constexpr double max_anchors = 16;
constexpr double captures_per_step = 40.0;
constexpr double atoms_per_step = 4.0;
constexpr double sleepers_per_step = 8.0;
constexpr double engine_size = 20.0; // of an automaton, whatever it holds

} // namespace

double PatternAutomaton::size() const {
    double total = engine_size + states + transitions + anchors;
    for (const PatternAutomaton& inner : ahead)
        total += inner.copies * inner.size();
    return total;
}

bool PatternAutomaton::combines_too_much() const {
    return anchors > max_anchors || states * captures > max_capture_cells ||
           std::any_of(ahead.begin(), ahead.end(),
                       [](const PatternAutomaton& inner) { return inner.combines_too_much(); });
}

double PatternAutomaton::steps_from_one_start(double length) const {
    if (is_plain)
        return 1.0;
    double test = std::pow(3.0, anchors / 3.0) + captures / captures_per_step;
    for (const PatternAutomaton& inner : ahead)
        test += inner.copies * (inner.steps_from_one_start(length) + inner.size());
    double step = is_straight ? heaviest * test : transitions * test;
    step += ref_transitions * (length / sleepers_per_step);
    step += reentering * (atoms / atoms_per_step);
    return (std::min(length, longest) + 1) * step;
}

} // namespace printman
