#pragma once

#include "host/files/outcome.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace host {

/// The path of the program @p name; empty when it is not on PATH.
QString find_tool(const char* name);

/// Whether the program @p name is on PATH; the failure names the Debian package that has it.
Outcome check_tool(const char* name, const char* package);

/// Runs the program at @p path without a shell, with nothing on its standard input, and waits for
/// it. It and its children are killed when the user interrupts, and when this program ends.
///
/// @param directory  its working directory
/// @param keep_going called some twenty times a second; false kills the tool. May be empty.
/// @return a failure says how the tool ended and has the first line of its output
Outcome run_tool(const QString& path, const QStringList& arguments, const QString& directory,
                 const std::function<bool()>& keep_going = {});

/// The first line of a tool's output, cut to what fits an error message. After a colon the next
/// line belongs to it, and a third one that is indented. Lines that begin with "printman: " are the
/// library's own and are left out.
QByteArray first_words(const QByteArray& output);

/// The result of a tool that failed.
struct ToolResult {
    QByteArray name;
    int status = 0; ///< exit status, or the signal's number
    bool killed = false;
    QByteArray output;
};

/// An error message for it, in one line.
QByteArray describe(const ToolResult& result);

} // namespace host
