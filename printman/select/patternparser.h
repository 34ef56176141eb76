#pragma once

#include <printman/select/patternautomaton.h>

#include <QString>

namespace printman {

/// Reads an expression as QRegExp does, and counts what QRegExp would build for it.
///
/// @param pattern   in QRegExp's own syntax
/// @param automaton a new one; receives the counts, which are of use only when all was read
/// @return whether the expression is well formed and not nested too deeply
bool parse_pattern(const QString& pattern, PatternAutomaton& automaton);

} // namespace printman
