#pragma once

#include "host/cli/command.h"

namespace host {

/// A command line that has been read.
struct CommandLine {
    enum class Mode { run, help, version };

    Mode mode = Mode::run;
    const Command* command = nullptr; ///< null: the program as a whole
    Arguments arguments;
    std::optional<QByteArray> settings; ///< the settings directory, if one is given
    Outcome error;                      ///< wrong usage, or success
};

/// All commands, in the order in which the help lists them.
const std::vector<const Command*>& commands();

/// Reads the program's arguments; its own name is not among them.
CommandLine parse_command_line(const QList<QByteArray>& arguments);

/// The help of the program, and of one command.
QByteArray program_help();
QByteArray command_help(const Command& command);

/// The program's name and version.
QByteArray version_text();

} // namespace host
