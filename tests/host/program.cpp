#include "tests/host/program.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <csignal>

const QByteArray
    small_report("#!?PAGETOP 80,3\nfirst line\n\xe4\xf6\xfc and more\nlast\n#!?PAGEEND\n");

namespace {

constexpr int patience = 60000; // milliseconds

Ended result_of(QProcess& process) {
    Ended run;
    if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit)
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

Ended ProgramTest::run_program(const QString& file, const QStringList& arguments) const {
    QProcess process;
    process.setProcessEnvironment(environment_);
    process.setWorkingDirectory(directory_.path());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(file, arguments);
    return result_of(process);
}

QStringList ProgramTest::terminal_command(const QStringList& arguments) {
    const QString command =
        u'\'' + program() + QStringLiteral("' '") + arguments.join(QStringLiteral("' '")) + u'\'';
    return {QStringLiteral("-qec"), command, QStringLiteral("/dev/null")};
}

Ended ProgramTest::on_terminal(const QStringList& arguments) const {
    return run_program(QStringLiteral("script"), terminal_command(arguments));
}

Ended ProgramTest::interrupt(const QStringList& arguments, int number,
                             const std::function<bool()>& ready) const {
    QProcess process;
    process.setProcessEnvironment(environment_);
    process.setWorkingDirectory(directory_.path());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program(), arguments);
    EXPECT_TRUE(process.waitForStarted());
    QElapsedTimer clock;
    clock.start();
    while (!ready() && clock.elapsed() < patience)
        QThread::msleep(2);
    EXPECT_TRUE(ready());
    ::kill(static_cast<pid_t>(process.processId()), number);
    return result_of(process);
}

void ProgramTest::write(const QString& name, const QByteArray& bytes) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray ProgramTest::read(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
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
    const QString name = tools_.filePath(QString::fromLatin1(tool));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + script + '\n');
    file.close();
    ASSERT_TRUE(file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                    QFileDevice::ExeOwner));
    environment_.insert(QStringLiteral("PATH"), tools_.path() + QStringLiteral(":/usr/bin:/bin"));
}

void ProgramTest::expect_failure(const Ended& run, const QByteArray& line) {
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "printman: " + line + '\n');
}
