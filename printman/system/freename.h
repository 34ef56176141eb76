#pragma once

#include <QString>

#include <chrono>
#include <functional>

namespace printman {

/// The first unused name of @p start, a number and @p end. Any entry counts as taken, even a
/// dangling symbolic link, which a writer would follow.
///
/// @param number the next number to try
QString free_name(const QString& start, const QString& end, const std::function<int()>& number);

/// The same with a random number.
QString random_free_name(const QString& start, const QString& end);

/// The time of day, and how to wait until it is another. Tests have their own.
struct WallClock {
    std::function<std::chrono::milliseconds()> now; ///< since the epoch
    std::function<void(std::chrono::milliseconds)> sleep_for;

    static WallClock system();
};

/// A free name whose number is the first that the C library's random() gives after srandom() with
/// the current second. The process's own generator is not touched. A name that is taken is asked
/// for again when the second has changed; after five seconds the numbers that follow in the
/// sequence are taken instead, so that a directory filled on purpose holds nobody up.
QString timed_free_name(const QString& start, const QString& end,
                        const WallClock& clock = WallClock::system());

} // namespace printman
