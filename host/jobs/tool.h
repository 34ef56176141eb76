#pragma once

#include "host/files/outcome.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace host {

/// Runs the program at @p path without a shell, with nothing on its standard input, and waits for
/// it. It and what it started are ended when the user interrupts, and with this program.
///
/// @param directory its working directory
/// @param goes_on   asked some twenty times a second; false ends the tool. May be empty.
/// @return a failure that says what the tool's end was and the first line of what it wrote
Outcome run_tool(const QString& path, const QStringList& arguments, const QString& directory,
                 const std::function<bool()>& goes_on = {});

/// The first line that a tool wrote, cut to what can be told. Where it ends with a colon the next
/// one belongs to it, and a third that is indented. The library's own lines begin with "printman: "
/// and are none of the tool's.
QByteArray first_words(const QByteArray& said);

/// How a tool ended that did not succeed.
struct ToolEnd {
    QByteArray name;
    int status = 0; ///< exit status, or the signal's number
    bool killed = false;
    QByteArray said; ///< what it wrote
};

/// Tells that end in one line.
QByteArray describe(const ToolEnd& end);

} // namespace host
