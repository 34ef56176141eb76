#pragma once

#include <printman/select/patternautomaton.h>

#include <QString>

namespace printman {

/// A cautious estimate of the work of compiling and matching a regular expression, made from its
/// text alone.
///
/// QRegExp follows all ways through an expression at once, from every place where a match may
/// start: most expressions cost at most the square of the text's length. But a few characters are
/// enough for an expression that takes hours or all memory: repeated repetitions, a look ahead
/// within a look ahead, hundreds of groups. As nothing can stop it once it runs, it is not started.
class PatternCost {
public:
    /// @param pattern in QRegExp's own syntax
    explicit PatternCost(const QString& pattern);

    /// Whether the expression is well formed, and compiled in a fraction of a second.
    bool compiles() const { return compiles_; }

    /// Whether a text of @p length characters can be searched in about a second at the worst.
    bool allows(qsizetype length) const;

private:
    PatternAutomaton automaton_;
    bool compiles_ = false;
};

} // namespace printman
