#include "tests/host/program.h"

#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <QDir>
#include <QFile>

#include <csignal>

const QByteArray
    small_report("#!?PAGETOP 80,3\nfirst line\n\xe4\xf6\xfc and more\nlast\n#!?PAGEEND\n");

namespace {

constexpr int patience = static_cast<int>(testsupport::hung_after.count());

Ended result_of(QProcess& process) {
    Ended run;
    process.waitForFinished(patience);
    if (process.state() == QProcess::NotRunning && process.error() != QProcess::FailedToStart &&
        process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.error = process.readAllStandardError();
    return run;
}

QStringList all_in(const QString& path) {
    return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                QDir::NoDotAndDotDot);
}

} // namespace

void ProgramTest::SetUp() {
    ASSERT_TRUE(directory_.isValid() && scratch_.isValid() && tools_.isValid());
    environment_.clear();
    const auto system = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
        const QString key = QString::fromLatin1(name);
        if (system.contains(key))
            environment_.insert(key, system.value(key));
    }
    environment_.insert(QStringLiteral("HOME"), directory_.filePath(QStringLiteral("no-home")));
    environment_.insert(QStringLiteral("TMPDIR"), scratch_.path());
    environment_.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
}

QString ProgramTest::program() {
    return QStringLiteral(PRINTMAN_PROGRAM);
}

void ProgramTest::prepare(QProcess& process) const {
    process.setProcessEnvironment(environment_);
    process.setWorkingDirectory(directory_.path());
    process.setStandardInputFile(QProcess::nullDevice());
}

Ended ProgramTest::run_program(const QString& file, const QStringList& arguments) const {
    QProcess process;
    prepare(process);
    process.start(file, arguments);
    return result_of(process);
}

Ended ProgramTest::on_terminal(const QStringList& arguments, const QByteArray& words,
                               const std::function<void()>& then) const {
    const QString command =
        u'\'' + program() + QStringLiteral("' '") + arguments.join(QStringLiteral("' '")) + u'\'';
    QProcess process;
    prepare(process);
    process.start(QStringLiteral("script"),
                  {QStringLiteral("-qec"), command, QStringLiteral("/dev/null")});
    QByteArray said;
    while (!said.contains(words) && process.waitForReadyRead(patience))
        said += process.readAllStandardOutput();
    EXPECT_TRUE(said.contains(words)) << said.constData();
    then();
    Ended result = result_of(process);
    result.out.prepend(said);
    return result;
}

Ended ProgramTest::interrupt(const QStringList& arguments, int number,
                             const std::function<bool()>& ready) const {
    QProcess process;
    prepare(process);
    process.start(program(), arguments);
    EXPECT_TRUE(process.waitForStarted(-1));
    EXPECT_TRUE(testsupport::poll_until([&] { return ready() || process.waitForFinished(0); }));
    if (process.state() == QProcess::Running)
        ::kill(static_cast<pid_t>(process.processId()), number);
    return result_of(process);
}

void ProgramTest::write(const QString& name, const QByteArray& bytes) const {
    testsupport::write_file(path(name), bytes);
}

QByteArray ProgramTest::read(const QString& name) const {
    return exists(name) ? testsupport::read_file(path(name)) : QByteArray("(missing)");
}

bool ProgramTest::exists(const QString& name) const {
    return QFile::exists(path(name));
}

QStringList ProgramTest::files() const {
    return all_in(directory_.path());
}

QStringList ProgramTest::scratch() const {
    return all_in(scratch_.path());
}

void ProgramTest::stub(const char* tool, const QByteArray& script) {
    testsupport::write_script(tools_.filePath(QString::fromLatin1(tool)), script + '\n');
    environment_.insert(QStringLiteral("PATH"), tools_.path() + QStringLiteral(":/usr/bin:/bin"));
}

void ProgramTest::expect_failure(const Ended& run, const QByteArray& line) {
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "printman: " + line + '\n');
}
