#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace printman {

/// How a command ended.
struct CommandEnd {
    int status = 0;  ///< exit status, when no signal ended it
    int signal = 0;  ///< the signal that did, else 0
    QString trouble; ///< why it could not be started, or why its end is not known; else empty
    bool is_stopped = false; ///< the caller had enough

    bool ok() const { return status == 0 && signal == 0 && trouble.isEmpty() && !is_stopped; }

    /// Whether the user ended it from the terminal.
    bool is_interrupted() const;
};

/// Runs a command of the shell and waits for it. Signals are the host's as before: an interrupt
/// from the terminal reaches this process, too. The command finds nothing on its standard input,
/// its output goes to standard error, it has no descriptor that is closed on exec, and it ends with
/// this process.
///
/// @param goes_on asked some twenty times a second: when it answers false the command is killed,
///                and all that it has started. The command then has a process group of its own:
///                what comes from the terminal reaches this process alone. May be empty.
CommandEnd run_command(const QByteArray& command, const std::function<bool()>& goes_on = {});

/// Why @p command failed, in one line.
QString describe_failure(const QByteArray& command, const CommandEnd& end);

/// @p text with blanks and question marks for what would end its line or change the terminal.
QString one_line(const QString& text);

/// What is answered by an operation that its caller has stopped.
QString canceled();

/// Writes "printman: " and @p why to standard error.
void tell_failure(const QString& why);

} // namespace printman
