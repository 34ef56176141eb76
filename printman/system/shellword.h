#pragma once

#include <QByteArray>

namespace printman {

/// @p argument as one word of a shell command: as it is when it holds only ASCII letters, digits
/// and `_ - + = . , : / @ %` and does not start with `-`, else in single quotes. The shell runs
/// nothing that it says. A zero byte ends it, as it would end the command.
QByteArray shell_word(const QByteArray& argument);

/// The same for the name of a file: one that starts with `-` gets `./` in front, so that no command
/// takes it for an option.
QByteArray shell_file_word(const QByteArray& name);

} // namespace printman
