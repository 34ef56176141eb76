#pragma once

#include "host/files/outcome.h"

#include <QByteArray>
#include <QHash>

#include <optional>
#include <vector>

namespace host {

/// The operands and options of a command. Everything is bytes, as the system gave them: a file name
/// need not be text in any encoding.
class Arguments {
public:
    Arguments() = default;
    Arguments(QList<QByteArray> operands, QHash<QByteArray, QByteArray> options)
        : operands_(std::move(operands)), options_(std::move(options)) {}

    /// The operand at @p index, from 0; empty when there is none.
    QByteArray operand(qsizetype index) const { return operands_.value(index); }

    /// Whether the option --@p name was given.
    bool has(const QByteArray& name) const { return options_.contains(name); }

    /// The value of the option --@p name, the last one when it was given twice; none when it was
    /// not given.
    std::optional<QByteArray> value(const QByteArray& name) const {
        const auto at = options_.constFind(name);
        return at == options_.constEnd() ? std::nullopt : std::optional(at.value());
    }

private:
    QList<QByteArray> operands_;
    QHash<QByteArray, QByteArray> options_;
};

/// An option and its help.
struct OptionText {
    const char* name;        ///< without the dashes
    const char* value;       ///< the name of its value in the help; empty for an option without one
    const char* description; ///< one or more lines
};

/// One of the program's commands with its help.
struct Command {
    const char* name;
    std::vector<const char*> operands; ///< their names in the help; all are required
    const char* summary;               ///< one line
    const char* description;           ///< lines that fit a terminal
    std::vector<OptionText> options;
    const char* examples; ///< command lines, one on each line

    /// Runs it; null for view_command, which main() runs: the viewer stands above this folder.
    Outcome (*run)(const Arguments& arguments);
};

// The commands, each in a file of its own.
extern const Command view_command;
extern const Command info_command;
extern const Command check_command;
extern const Command text_command;
extern const Command pdf_command;
extern const Command png_command;
extern const Command print_command;
extern const Command printers_command;
extern const Command import_command;

} // namespace host
