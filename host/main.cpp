#include "host/commandline.h"
#include "host/console.h"
#include "host/interrupt.h"
#include "host/settings.h"

#include <QApplication>

#include <csignal>
#include <cstring>
#include <filesystem>

namespace {

using host::CommandLine;
using host::Outcome;

/// Standard error holds the program's own line and nothing else: the toolkit's remarks on the
/// locale and on fonts are not for the user.
void drop_toolkit_remarks(QtMsgType type, const QMessageLogContext& /*context*/,
                          const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        host::report_error(text.toLocal8Bit());
}

void prepare_signals() {
    // The caller may have left these ignored: a tool's status must be known, and a reader that goes
    // away is an error of writing.
    std::signal(SIGCHLD, SIG_DFL);
    std::signal(SIGPIPE, SIG_IGN);
    host::catch_interrupts();
}

QByteArray absolute(const QByteArray& path) {
    std::error_code error;
    const std::string directory = std::filesystem::current_path(error).native();
    return path.startsWith('/') ? path : QByteArray::fromStdString(directory) + '/' + path;
}

Outcome run(const CommandLine& line) {
    if (line.wish == CommandLine::Wish::help) {
        host::print(line.command ? host::command_help(*line.command) : host::program_help());
        return Outcome::success();
    }
    if (line.wish == CommandLine::Wish::version) {
        host::print(host::version_text());
        return Outcome::success();
    }
    if (line.settings)
        host::host_settings() = host::Settings(absolute(*line.settings));
    return line.command->run(line.arguments);
}

int finish(const CommandLine& line, Outcome outcome) {
    const int output_error = host::flush_output();
    if (outcome.ok() && output_error != 0)
        outcome = Outcome::failure(QByteArray("cannot write to standard output: ") +
                                   std::strerror(output_error));
    if (outcome.status == Outcome::failed && host::interrupted())
        outcome = Outcome::failure("interrupted");
    if (outcome.status == Outcome::usage) {
        const QByteArray command = line.command ? line.command->name : "";
        host::report_error((command.isEmpty() ? "" : command + ": ") + outcome.message +
                           "; see 'printman" + (command.isEmpty() ? "" : ' ' + command) +
                           " --help'");
    } else if (!outcome.ok()) {
        host::report_error(outcome.message);
    }
    return outcome.status;
}

} // namespace

int main(int argc, char** argv) {
    prepare_signals();
    qInstallMessageHandler(drop_toolkit_remarks);
    QList<QByteArray> arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QByteArray(argv[i]);
    const CommandLine line = host::parse_command_line(arguments);
    if (!line.problem.ok())
        return finish(line, line.problem);

    // No command needs a display, nor may the toolkit take arguments that are the user's.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int one = argc > 0 ? 1 : 0;
    const QApplication application(one, argv);
    QApplication::setApplicationName(QStringLiteral("printman"));
    QApplication::setApplicationVersion(QStringLiteral(PRINTMAN_VERSION));
    return finish(line, run(line));
}
