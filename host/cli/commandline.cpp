#include "host/cli/commandline.h"

#include <QCommandLineParser>

namespace host {

namespace {

const std::vector<OptionText>& common_options() {
    static const std::vector<OptionText> options{
        {"settings", "DIR", "read the settings files in DIR"},
        {"help", "", "show this help and stop"},
    };
    return options;
}

/// Bytes as text for the parser; toLatin1() turns them back: Latin-1 keeps every byte.
QString to_text(const QByteArray& bytes) {
    return QString::fromLatin1(bytes);
}

void add_options(QCommandLineParser& parser, const std::vector<OptionText>& options) {
    for (const OptionText& option : options) {
        QStringList names{QString::fromLatin1(option.name)};
        if (names.first() == QStringLiteral("help"))
            names.prepend(QStringLiteral("h"));
        parser.addOption(QCommandLineOption(names, QString(), QString::fromLatin1(option.value)));
    }
}

QStringList parser_list(const QList<QByteArray>& arguments, qsizetype from) {
    QStringList list{QStringLiteral("printman")};
    for (qsizetype i = from; i < arguments.size(); ++i)
        list << to_text(arguments.at(i));
    return list;
}

Outcome parser_error(const QCommandLineParser& parser) {
    QByteArray error = parser.errorText().toLatin1();
    if (error.endsWith('.'))
        error.chop(1);
    if (!error.isEmpty())
        error[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(error[0])));
    return Outcome::wrong_usage(error);
}

void read_settings(const QCommandLineParser& parser, CommandLine& line) {
    if (parser.isSet(QStringLiteral("settings")))
        line.settings = parser.value(QStringLiteral("settings")).toLatin1();
    if (line.settings && line.settings->isEmpty())
        line.error = Outcome::wrong_usage("--settings needs the name of a directory");
}

void parse_command(const QStringList& list, CommandLine& line) {
    const Command& command = *line.command;
    QCommandLineParser parser;
    add_options(parser, command.options);
    add_options(parser, common_options());
    const bool parsed = parser.parse(list);
    if (parser.isSet(QStringLiteral("help"))) {
        line.mode = CommandLine::Mode::help;
        return;
    }
    if (!parsed) {
        line.error = parser_error(parser);
        return;
    }
    QList<QByteArray> operands;
    for (const QString& operand : parser.positionalArguments())
        operands << operand.toLatin1();
    const auto required = static_cast<qsizetype>(command.operands.size());
    if (operands.size() < required) {
        line.error = Outcome::wrong_usage(QByteArray("missing operand ") +
                                          command.operands[static_cast<size_t>(operands.size())]);
        return;
    }
    if (operands.size() > required) {
        line.error = Outcome::wrong_usage("unexpected operand '" + operands.at(required) + '\'');
        return;
    }
    QHash<QByteArray, QByteArray> options;
    for (const OptionText& option : command.options) {
        const QString name = QString::fromLatin1(option.name);
        if (parser.isSet(name))
            options.insert(option.name, parser.value(name).toLatin1());
    }
    line.arguments = Arguments(std::move(operands), std::move(options));
    read_settings(parser, line);
}

QByteArray option_lines(const OptionText& option) {
    QByteArray head =
        QByteArray("  ") + (qstrcmp(option.name, "help") == 0 ? "-h, --" : "--") + option.name;
    if (*option.value)
        head += QByteArray(" ") + option.value;
    constexpr qsizetype column = 24;
    QByteArray text;
    for (const QByteArray& line : QByteArray(option.description).split('\n')) {
        if (head.size() >= column - 1) {
            text += head + '\n';
            head.clear();
        }
        text += head.leftJustified(column, ' ') + line + '\n';
        head.clear();
    }
    return text;
}

QByteArray indented(const char* lines) {
    QByteArray text;
    for (const QByteArray& line : QByteArray(lines).split('\n'))
        text += "  " + line + '\n';
    return text;
}

constexpr const char* exit_statuses = "0  done\n"
                                      "1  the job failed; one line on standard error says why\n"
                                      "2  the command line is wrong";

} // namespace

const std::vector<const Command*>& commands() {
    static const std::vector<const Command*> list{
        &view_command, &info_command,  &check_command,    &text_command,  &pdf_command,
        &png_command,  &print_command, &printers_command, &import_command};
    return list;
}

CommandLine parse_command_line(const QList<QByteArray>& arguments) {
    CommandLine line;
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    add_options(parser, common_options());
    parser.addOption(QCommandLineOption(QStringLiteral("version")));
    const bool parsed = parser.parse(parser_list(arguments, 0));
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("version"))) {
        line.mode = parser.isSet(QStringLiteral("help")) ? CommandLine::Mode::help
                                                         : CommandLine::Mode::version;
        return line;
    }
    if (!parsed) {
        line.error = parser_error(parser);
        return line;
    }
    read_settings(parser, line);
    if (!line.error.ok())
        return line;
    const QStringList rest = parser.positionalArguments();
    if (rest.isEmpty()) {
        line.error = Outcome::wrong_usage("no command is given");
        return line;
    }
    for (const Command* command : commands()) {
        if (rest.first() == QString::fromLatin1(command->name))
            line.command = command;
    }
    if (!line.command) {
        line.error = Outcome::wrong_usage("unknown command '" + rest.first().toLatin1() + '\'');
        return line;
    }
    parse_command(rest, line);
    return line;
}

QByteArray program_help() {
    QByteArray text =
        "Usage: printman [--settings DIR] COMMAND ...\n\n"
        "Shows and prints paged text reports, and turns them into plain text, pictures and PDF\n"
        "files.\n\n"
        "Commands:\n";
    for (const Command* command : commands()) {
        QByteArray head = QByteArray("  ") + command->name;
        for (const char* operand : command->operands)
            head += QByteArray(" ") + operand;
        text += head.leftJustified(28, ' ') + command->summary + '\n';
    }
    text += "\nOptions:\n";
    for (const OptionText& option : common_options())
        text += option_lines(option);
    text += option_lines({"version", "", "show the version and stop"});
    text += "\n'printman COMMAND --help' shows more about a command.\n\nExit status:\n";
    return text + indented(exit_statuses);
}

QByteArray command_help(const Command& command) {
    QByteArray text = QByteArray("Usage: printman ") + command.name + " [OPTION ...]";
    for (const char* operand : command.operands)
        text += QByteArray(" ") + operand;
    text += QByteArray("\n\n") + command.description + "\n\nOptions:\n";
    for (const OptionText& option : command.options)
        text += option_lines(option);
    for (const OptionText& option : common_options())
        text += option_lines(option);
    text += "\nExamples:\n" + indented(command.examples) + "\nExit status:\n";
    return text + indented(exit_statuses);
}

QByteArray version_text() {
    return "printman " PRINTMAN_VERSION "\n";
}

} // namespace host
