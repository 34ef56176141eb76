#pragma once

#include <QByteArray>
#include <QString>

namespace printman {

/// The name of the program that a shell command starts with.
QByteArray command_tool(const QByteArray& command);

/// The Debian package, or packages, that have one of the tools that print jobs run: ps2pdf, pdftk,
/// lp and lpr; empty for any other.
QString package_of(const QByteArray& tool);

/// That @p tool is not installed, and which package has it, in one line.
QString tool_not_installed(const QByteArray& tool);

/// The same for the tool of @p command when it is not on PATH; else empty.
QString missing_tool(const QByteArray& command);

} // namespace printman
