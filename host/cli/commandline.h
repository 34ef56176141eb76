#pragma once

#include "host/cli/command.h"

namespace host {

/// What a command line asks for.
struct CommandLine {
    enum class Wish { run, help, version };

    Wish wish = Wish::run;
    const Command* command = nullptr; ///< null: the program as a whole
    Arguments arguments;
    std::optional<QByteArray> settings; ///< the settings directory, when one is named
    Outcome problem;                    ///< wrong usage, when it is
};

/// All commands, in the order in which the help lists them.
const std::vector<const Command*>& commands();

/// Reads the program's arguments, without its name.
CommandLine parse_command_line(const QList<QByteArray>& arguments);

/// The help of the program, and of one command.
QByteArray program_help();
QByteArray command_help(const Command& command);

/// The program's name and version.
QByteArray version_text();

} // namespace host
