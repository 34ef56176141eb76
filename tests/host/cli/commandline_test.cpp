#include "host/cli/commandline.h"
#include "tests/host/program.h"

namespace {

using host::CommandLine;

host::CommandLine parse(std::initializer_list<const char*> words) {
    QList<QByteArray> arguments;
    for (const char* word : words)
        arguments << word;
    return host::parse_command_line(arguments);
}

QByteArray problem(std::initializer_list<const char*> words) {
    const CommandLine line = parse(words);
    EXPECT_EQ(line.error.status, host::Outcome::usage);
    return line.error.message;
}

class CommandLineProgram : public ProgramTest {};

} // namespace

TEST(CommandLineArguments, settingsStandBeforeOrBehindTheCommand) {
    EXPECT_EQ(parse({"--settings", "d", "info", "r"}).settings, QByteArray("d"));
    EXPECT_EQ(parse({"--settings=d", "info", "r"}).settings, QByteArray("d"));
    EXPECT_EQ(parse({"info", "--settings", "d", "r"}).settings, QByteArray("d"));
    EXPECT_EQ(parse({"info", "r", "--settings", "d"}).settings, QByteArray("d"));
    EXPECT_EQ(parse({"--settings", "a", "info", "r", "--settings", "b"}).settings, QByteArray("b"));
    EXPECT_EQ(parse({"info", "r"}).settings, std::nullopt);
    EXPECT_EQ(problem({"--settings", "", "info", "r"}), "--settings needs the name of a directory");
}

TEST(CommandLineArguments, operandsAndOptionsKeepTheirBytes) {
    const CommandLine line = parse({"pdf", "--title", "\xff\xc3\xa4 \"x\"", "a b\n\x80", "it's"});
    ASSERT_TRUE(line.error.ok());
    EXPECT_STREQ(line.command->name, "pdf");
    EXPECT_EQ(line.arguments.operand(0), "a b\n\x80");
    EXPECT_EQ(line.arguments.operand(1), "it's");
    EXPECT_EQ(line.arguments.value("title"), QByteArray("\xff\xc3\xa4 \"x\""));
    EXPECT_FALSE(line.arguments.has("landscape"));
    EXPECT_EQ(line.arguments.value("size"), std::nullopt);
}

TEST(CommandLineArguments, namesMayBeginWithADash) {
    const CommandLine line = parse({"text", "--", "-r.rpt", "--out"});
    ASSERT_TRUE(line.error.ok());
    EXPECT_EQ(line.arguments.operand(0), "-r.rpt");
    EXPECT_EQ(line.arguments.operand(1), "--out");
}

TEST(CommandLineArguments, helpAndVersion) {
    EXPECT_EQ(parse({"--help"}).mode, CommandLine::Mode::help);
    EXPECT_EQ(parse({"-h"}).command, nullptr);
    EXPECT_EQ(parse({"--version"}).mode, CommandLine::Mode::version);
    const CommandLine line = parse({"pdf", "--help"});
    EXPECT_EQ(line.mode, CommandLine::Mode::help);
    EXPECT_STREQ(line.command->name, "pdf");
}

TEST(CommandLineArguments, wrongUsage) {
    EXPECT_EQ(problem({}), "no command is given");
    EXPECT_EQ(problem({"prnt"}), "unknown command 'prnt'");
    EXPECT_EQ(problem({"--what"}), "unknown option 'what'");
    EXPECT_EQ(problem({"info"}), "missing operand REPORT");
    EXPECT_EQ(problem({"text", "r"}), "missing operand OUT.txt");
    EXPECT_EQ(problem({"text", "r", "o", "x"}), "unexpected operand 'x'");
    EXPECT_EQ(problem({"info", "--zoom", "r"}), "unknown option 'zoom'");
    EXPECT_EQ(problem({"pdf", "r", "o", "--size"}), "missing value after '--size'");
    EXPECT_EQ(problem({"info", "--settings"}), "missing value after '--settings'");
}

TEST_F(CommandLineProgram, wrongUsageIsOneLineAndStatusTwo) {
    for (const auto& [arguments, line] : std::initializer_list<std::pair<QString, QByteArray>>{
             {QString(), "no command is given; see 'printman --help'"},
             {QStringLiteral("nothing"), "unknown command 'nothing'; see 'printman --help'"},
             {QStringLiteral("png r o --zoom 75%"), "png: unknown zoom '75%'; known are 50%, 100%, "
                                                    "150%, 200%, 250%, 300%; see 'printman png "
                                                    "--help'"},
             {QStringLiteral("png r o --page 0"),
              "png: --page needs a number from 1 on, not 0; see 'printman png --help'"},
             {QStringLiteral("import r o --lines 32768"),
              "import: --lines needs a number from 1 to 32767, not 32768; see 'printman import "
              "--help'"},
             {QStringLiteral("import r o --columns x"),
              "import: --columns needs a number from 1 to 32767, not x; see 'printman import "
              "--help'"},
             {QStringLiteral("pdf r o --size NaN"),
              "pdf: --size needs a number of points from 1 to 1000, not NaN; see 'printman pdf "
              "--help'"}}) {
        const Ended result = run(arguments.split(u' ', Qt::SkipEmptyParts));
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.error, "printman: " + line + '\n');
        EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(files(), QStringList());
}

TEST_F(CommandLineProgram, theOutputIsNotTheInput) {
    write(QStringLiteral("r.rpt"), small_report);
    for (const char* command : {"text", "pdf", "png", "import"}) {
        const Ended result =
            run({QString::fromLatin1(command), QStringLiteral("r.rpt"), QStringLiteral("./r.rpt")});
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.error.contains("./r.rpt is both input and output"));
    }
    EXPECT_EQ(read(QStringLiteral("r.rpt")), small_report);
}

TEST_F(CommandLineProgram, helpTellsEveryOption) {
    const Ended program_help = run({QStringLiteral("--help")});
    EXPECT_EQ(program_help.status, 0);
    for (const host::Command* command : host::commands()) {
        EXPECT_TRUE(program_help.out.contains(command->summary));
        const Ended help = run({QString::fromLatin1(command->name), QStringLiteral("--help")});
        EXPECT_EQ(help.status, 0);
        EXPECT_EQ(help.error, "");
        EXPECT_TRUE(help.out.contains(command->examples[0] ? "Examples:" : "nothing"));
        EXPECT_TRUE(help.out.contains("Exit status:"));
        for (const host::OptionText& option : command->options)
            EXPECT_TRUE(help.out.contains(QByteArray("--") + option.name)) << option.name;
        for (const QByteArray& line : help.out.split('\n'))
            EXPECT_LE(line.size(), 90) << line.constData();
    }
}

TEST_F(CommandLineProgram, version) {
    const Ended result = run({QStringLiteral("--version")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "printman " PRINTMAN_VERSION "\n");
}

TEST_F(CommandLineProgram, nothingButOurLineIsOnStandardError) {
    environment_.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    environment_.insert(QStringLiteral("DISPLAY"), QStringLiteral(":99"));
    environment_.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    write(QStringLiteral("r.rpt"), small_report);
    const Ended result = run({QStringLiteral("info"), QStringLiteral("r.rpt")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.out, "columns: 80\nlines: 3\npages: 1\nbytes: " +
                              QByteArray::number(small_report.size()) + '\n');
}

TEST_F(CommandLineProgram, closedStandardOutputIsAnError) {
    write(QStringLiteral("r.rpt"), small_report);
    const QString shell = QStringLiteral("/bin/sh");
    const QString full = QStringLiteral("\"$0\" info r.rpt > /dev/full");
    expect_failure(run_program(shell, {QStringLiteral("-c"), full, program()}),
                   "cannot write to standard output: No space left on device");
    // The reader closes the pipe, and says so before anything is written.
    const QString pipe = QStringLiteral(
        "{ until [ -e closed ]; do sleep 0.01; done; \"$0\" info r.rpt; echo $? >&2; "
        "} | { exec <&-; : > closed; }");
    const Ended result = run_program(shell, {QStringLiteral("-c"), pipe, program()});
    EXPECT_EQ(result.error, "printman: cannot write to standard output: Broken pipe\n1\n");
}
