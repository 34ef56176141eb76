#include <printman/system/externaltool.h>

#include <QStandardPaths>

namespace printman {

QByteArray command_tool(const QByteArray& command) {
    return command.split(' ').constFirst();
}

QString package_of(const QByteArray& tool) {
    if (tool == "ps2pdf")
        return QStringLiteral("ghostscript");
    if (tool == "pdftk")
        return QStringLiteral("pdftk-java");
    if (tool == "lp")
        return QStringLiteral("cups-client");
    if (tool == "lpr")
        return QStringLiteral("cups-bsd or lpr");
    return {};
}

QString tool_not_installed(const QByteArray& tool) {
    return QStringLiteral("%1 is not installed; the Debian package %2 has it")
        .arg(QString::fromLatin1(tool), package_of(tool));
}

QString missing_tool(const QByteArray& command) {
    const QByteArray tool = command_tool(command);
    const bool is_known = !package_of(tool).isEmpty();
    if (!is_known || !QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
        return {};
    return tool_not_installed(tool);
}

} // namespace printman
