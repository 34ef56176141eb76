#include "host/cli/commandline.h"
#include "host/cli/console.h"
#include "host/files/paths.h"
#include "host/jobs/interrupt.h"
#include "host/jobs/scopedvariable.h"
#include "host/settings/settings.h"
#include "host/viewer/viewerprogram.h"

#include <QApplication>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

using host::CommandLine;
using host::Outcome;

/// The display to which the toolkit is about to connect; empty once it is connected, and when it
/// needs none.
QByteArray awaited_display;

/// Only the program's own messages go to standard error: the toolkit's remarks on the locale and on
/// fonts are not for the user.
void handle_toolkit_message(QtMsgType type, const QMessageLogContext& /*context*/,
                            const QString& text) {
    if (type != QtFatalMsg)
        return;
    if (awaited_display.isEmpty()) {
        host::report_error(text.toLocal8Bit());
        return;
    }
    // Without this the toolkit would abort.
    host::report_error("cannot open a window: there is no " + awaited_display);
    std::_Exit(Outcome::failed);
}

/// The display that the environment names; empty for none.
QByteArray named_display() {
    for (const char* variable : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"}) {
        const QByteArray name = qgetenv(variable);
        if (!name.isEmpty())
            return "display for " + QByteArray(variable) + '=' + name;
    }
    return {};
}

/// Starts the toolkit, without a display unless @p on_display. Where the session has no directory
/// for sockets the toolkit would create one under TMPDIR, which is therefore one that it cannot
/// use.
std::unique_ptr<QApplication> start_toolkit(int& argc, char** argv, bool on_display) {
    if (on_display)
        awaited_display = named_display();
    else
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const host::ScopedVariable unusable("TMPDIR", "/dev/null");
    auto application = std::make_unique<QApplication>(argc, argv);
    awaited_display.clear();
    QApplication::setApplicationName(QStringLiteral("printman"));
    QApplication::setApplicationVersion(QStringLiteral(PRINTMAN_VERSION));
    return application;
}

void prepare_signals() {
    // The caller may have set them otherwise. A tool's exit status is needed, and a pipe without a
    // reader is a failed write.
    std::signal(SIGCHLD, SIG_DFL);
    std::signal(SIGPIPE, SIG_IGN);
    host::catch_interrupts();
}

void print_help_or_version(const CommandLine& line) {
    if (line.mode == CommandLine::Mode::version)
        host::print(host::version_text());
    else
        host::print(line.command ? host::command_help(*line.command) : host::program_help());
}

bool is_viewer(const CommandLine& line) {
    return line.command == &host::view_command;
}

Outcome run(const CommandLine& line) {
    if (line.settings && !host::is_text(*line.settings))
        return Outcome::failure(*line.settings + ": " + host::not_text);
    if (line.settings)
        host::host_settings() = host::Settings(host::absolute_path(*line.settings));
    return is_viewer(line) ? host::run_viewer(line.arguments.operand(0))
                           : line.command->run(line.arguments);
}

/// Reports an error.
///
/// @return the program's exit status
int finish(const CommandLine& line, Outcome outcome) {
    const Outcome printed = host::flush_output();
    if (outcome.ok())
        outcome = printed;
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
    qInstallMessageHandler(handle_toolkit_message);
    QList<QByteArray> arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QByteArray(argv[i]);
    const CommandLine line = host::parse_command_line(arguments);
    if (!line.error.ok())
        return finish(line, line.error);
    if (line.mode != CommandLine::Mode::run) {
        print_help_or_version(line);
        return finish(line, Outcome::success());
    }

    const bool on_display = is_viewer(line);
    if (on_display && named_display().isEmpty())
        return finish(line, Outcome::failure("cannot open a window: there is no display; neither "
                                             "DISPLAY nor WAYLAND_DISPLAY is set"));
    // The toolkit must not interpret the user's arguments.
    int one = argc > 0 ? 1 : 0;
    const auto application = start_toolkit(one, argv, on_display);
    return finish(line, run(line));
}
