#pragma once

#include <printman/progress.h>
#include <printman/result.h>

#include <QByteArray>
#include <QString>

namespace printman {

/// How a command ended.
struct CommandResult {
    int status = 0; ///< exit status, when no signal ended it
    int signal = 0; ///< the signal that did, else 0
    QString error;  ///< why it could not be started, or why its end is not known; else empty
    bool is_canceled = false; ///< the job has ended it

    bool ok() const { return status == 0 && signal == 0 && error.isEmpty() && !is_canceled; }

    /// The signal that ended the command or, as a shell's exit status says it, the program that the
    /// command ran last; else 0.
    int ending_signal() const;

    /// Whether the user ended it from the terminal.
    bool is_interrupted() const;
};

/// Runs a command of the shell and waits for it. Signals are the host's as before: an interrupt
/// from the terminal reaches this process, too. The command finds nothing on its standard input,
/// its output goes to standard error, it has no descriptor that is closed on exec, and it ends with
/// this process.
///
/// @param control asked some twenty times a second: when it says to stop, the command is killed,
///                and all that it has started. The command then has a process group of its own:
///                what comes from the terminal reaches this process alone. May be null.
CommandResult run_command(const QByteArray& command, JobControl* control = nullptr);

/// Why @p command failed.
Result command_failure(const QByteArray& command, const CommandResult& result);

/// That @p command failed, with @p end for how.
Result tool_failure(const QByteArray& command, const QString& end);

/// Writes "printman: " and @p error to standard error.
void report_failure(const QString& error);

} // namespace printman
