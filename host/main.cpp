#include "host/cli/commandline.h"
#include "host/cli/console.h"
#include "host/files/pendingfile.h"
#include "host/jobs/interrupt.h"
#include "host/jobs/scopedvariable.h"
#include "host/settings/settings.h"

#include <QApplication>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

using host::CommandLine;
using host::Outcome;

/// What the toolkit is about to connect to; empty when it is connected or needs no display.
QByteArray awaited_display;

/// Standard error holds the program's own line and nothing else: the toolkit's remarks on the
/// locale and on fonts are not for the user.
void drop_toolkit_remarks(QtMsgType type, const QMessageLogContext& /*context*/,
                          const QString& text) {
    if (type != QtFatalMsg)
        return;
    if (awaited_display.isEmpty()) {
        host::report_error(text.toLocal8Bit());
        return;
    }
    // The toolkit would abort now; without a display that is nobody's fault.
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

/// The toolkit, without a display unless @p on_display. Where the session has no directory for
/// sockets it would make one among the user's temporary files: it finds no place for that.
std::unique_ptr<QApplication> start_toolkit(int& argc, char** argv, bool on_display) {
    if (on_display)
        awaited_display = named_display();
    else
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const host::VariableMeanwhile nowhere("TMPDIR", "/dev/null");
    auto application = std::make_unique<QApplication>(argc, argv);
    awaited_display.clear();
    QApplication::setApplicationName(QStringLiteral("printman"));
    QApplication::setApplicationVersion(QStringLiteral(PRINTMAN_VERSION));
    return application;
}

void prepare_signals() {
    // The caller may have left these ignored: a tool's status must be known, and a reader that goes
    // away is an error of writing.
    std::signal(SIGCHLD, SIG_DFL);
    std::signal(SIGPIPE, SIG_IGN);
    host::catch_interrupts();
}

Outcome tell(const CommandLine& line) {
    if (line.wish == CommandLine::Wish::version)
        host::print(host::version_text());
    else
        host::print(line.command ? host::command_help(*line.command) : host::program_help());
    return Outcome::success();
}

Outcome run(const CommandLine& line) {
    if (line.settings && !host::is_text(*line.settings))
        return Outcome::failure(*line.settings +
                                ": The name is not valid in the locale's encoding");
    if (line.settings)
        host::host_settings() = host::Settings(host::absolute_path(*line.settings));
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
    if (line.wish != CommandLine::Wish::run)
        return finish(line, tell(line));

    const bool on_display = line.command->on_display;
    if (on_display && named_display().isEmpty())
        return finish(line, Outcome::failure("cannot open a window: there is no display; neither "
                                             "DISPLAY nor WAYLAND_DISPLAY is set"));
    // The toolkit may not take arguments that are the user's.
    int one = argc > 0 ? 1 : 0;
    const auto application = start_toolkit(one, argv, on_display);
    return finish(line, run(line));
}
