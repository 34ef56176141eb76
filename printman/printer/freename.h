#pragma once

#include <QString>

#include <functional>

namespace printman {

/// @p start, a number and @p end, with the first number under which nothing is found. Anything
/// counts, also a link to nothing: who writes to that name would write through it.
///
/// @param number the next number to try
QString free_name(const QString& start, const QString& end, const std::function<int()>& number);

} // namespace printman
