#pragma once

#include <QString>

#include <vector>

namespace printman {

/// An estimate, on the safe side, of the work of compiling and of matching a regular expression,
/// made from its text alone.
///
/// QRegExp follows all ways through an expression at once, for every place where a match may start:
/// most expressions cost at most the square of the text's length. But a few characters suffice
/// for an expression that takes hours or all memory: repeated repetitions, a look ahead within a
/// look ahead, hundreds of groups. Nothing can stop it once it runs, so it is not begun.
class PatternCost {
public:
    /// @param pattern in QRegExp's own syntax
    explicit PatternCost(const QString& pattern);

    /// Whether the expression is well formed, and compiled in a fraction of a second.
    bool compiles() const { return compiles_; }

    /// Whether a text of @p length characters can be searched in about a second at the worst.
    bool allows(qsizetype length) const;

private:
    class Parser;

    /// One automaton: the expression, or what stands in a look ahead.
    struct Automaton {
        double states = 0.0;
        double transitions = 0.0;     ///< weighted with what it costs to test the character
        double ref_transitions = 0.0; ///< that lead to a back reference
        double reentering = 0.0;      ///< that begin a repeated group anew
        double atoms = 0.0;
        double captures = 0.0;
        double anchors = 0.0;    ///< within groups, where they may combine
        double longest = 0.0;    ///< characters of the longest match; may be infinite
        double heaviest = 1.0;   ///< the weight of the heaviest character test
        double copies = 1.0;     ///< how often the look ahead is compiled
        bool is_plain = true;    ///< characters alone: a plain text search
        bool is_straight = true; ///< one way through it: nothing repeated, no alternatives
        std::vector<Automaton> ahead;

        double size() const;
        bool combines_too_much() const;
        double steps_from_one_start(double length) const;
    };

    Automaton automaton_;
    bool compiles_ = false;
};

} // namespace printman
