#pragma once

#include <printman/result.h>

#include <QString>

namespace printman {

/// Writes @p text, in the locale's encoding, to "printman0001.html" in the current directory and
/// starts the browser command "dlwbrw" on that file, through the shell, without waiting for it.
///
/// The file takes its name when it is complete, readable by its owner alone; a link of that name is
/// replaced, not followed. Where the directory takes no new file, an earlier one of that name is
/// written again, if it is this user's own and has no other name. From the first start on SIGCHLD
/// is ignored by the process, so that browsers that have ended leave nothing behind; one that ended
/// while it was not is cleared away by the next call.
///
/// An empty text and a directory whose name makes the command longer than 255 bytes are warned of
/// with qWarning().
///
/// @return a failure when no browser was started; an earlier file is then as it was, unless it was
///         the shell that could not be started, or an earlier file that was written again
Result show_in_browser(const QString& text);

} // namespace printman
