#pragma once

#include <vector>

namespace printman {

/// What QRegExp builds for an expression, or for what stands in a look ahead: counted, not built.
struct PatternAutomaton {
    double states = 0.0;
    double transitions = 0.0;     ///< weighted with the cost of testing the character
    double ref_transitions = 0.0; ///< those that lead to a back reference
    double reentering = 0.0;      ///< those that begin a repeated group anew
    double atoms = 0.0;
    double captures = 0.0;
    double anchors = 0.0;                ///< within groups, where they may combine
    double longest = 0.0;                ///< characters of the longest match; may be infinite
    double heaviest = 1.0;               ///< the weight of the heaviest character test
    double copies = 1.0;                 ///< how often the look ahead is compiled
    bool is_plain = true;                ///< characters alone: a plain text search
    bool is_straight = true;             ///< one way through it: nothing repeated, no alternatives
    std::vector<PatternAutomaton> ahead; ///< its look aheads

    /// What is built in all, look aheads included.
    double size() const;

    /// Whether compiling it would combine too many anchors or captures, here or in a look ahead.
    bool combines_too_much() const;

    /// An upper estimate of the steps of a match that starts at one place in a text.
    ///
    /// @param length characters from there to the end of the text
    double steps_from_one_start(double length) const;
};

} // namespace printman
