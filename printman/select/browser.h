#pragma once

#include <QString>

namespace printman {

/// Writes @p text, in the locale's encoding, to "printman0001.html" in the current directory and
/// starts the browser command "dlwbrw" on that file, through the shell, without waiting for it.
///
/// The file takes its name when it is complete, readable by its owner alone; a link of that name is
/// replaced, not followed. From the first start on SIGCHLD is ignored by the process, so that
/// browsers that have ended leave nothing behind.
///
/// An empty text and a directory whose name makes the command longer than 255 bytes are warned of
/// with qWarning().
///
/// @return empty, or why no browser was started; an earlier file is then as it was, unless it was
///         the shell that could not be started
QString show_in_browser(const QString& text);

} // namespace printman
