#pragma once

#include <QByteArray>

#include <chrono>
#include <functional>

class QWidget;

namespace testsupport {

// A test waits for what it waits for and not for a while. The limit ends a test that hangs, on a
// machine however slow.
inline constexpr std::chrono::milliseconds hung_after = std::chrono::minutes(5);

/// Handles events until @p condition holds.
///
/// @return whether it does
bool wait_for(const std::function<bool()>& condition);

/// Activates a shown window and handles events until it is the active one.
///
/// @return whether it is
bool wait_until_active(QWidget& window);

/// Handles events at least until every timer of up to @p time that runs now has fired.
void let_timers_fire(std::chrono::milliseconds time);

/// Looks again and again, without handling events, until @p condition holds.
///
/// @return whether it does
bool poll_until(const std::function<bool()>& condition);

/// Waits until a process is no more, or only waits to be collected: one that was sent a signal
/// takes a moment to end.
///
/// @param id its number in decimal digits; blanks around them do not matter
/// @return whether it has ended
bool process_ends(const QByteArray& id);

} // namespace testsupport
