#include "tests/support/tools.h"

#include "tests/support/waiting.h"

#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

#include <csignal>

namespace testsupport {

namespace {

/// What a tool that may not fail writes.
QByteArray expect_success(const QString& tool, const QStringList& arguments) {
    const ToolResult result = run(tool, arguments);
    EXPECT_EQ(result.status, 0) << tool.toStdString() << ' ' << arguments.join(u' ').toStdString()
                                << ": " << result.err.toStdString();
    return result.out;
}

} // namespace

ToolResult run(const QString& program, const QStringList& arguments) {
    // A paste leaves it ignored, and statuses with it.
    std::signal(SIGCHLD, SIG_DFL);
    QProcess process;
    process.start(program, arguments);
    ToolResult result;
    if (!process.waitForStarted(-1) ||
        !process.waitForFinished(static_cast<int>(hung_after.count())))
        return result;
    if (process.exitStatus() == QProcess::NormalExit)
        result.status = process.exitCode();
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    return result;
}

QByteArray read_file(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write_file(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size())
        << path.toStdString() << ": " << file.errorString().toStdString();
}

void write_script(const QString& path, const QByteArray& body) {
    write_file(path, "#!/bin/sh\n" + body);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString make_pdf(const QString& ps) {
    QString pdf = ps + QStringLiteral(".pdf");
    expect_success(QStringLiteral("ps2pdf"), {ps, pdf});
    return pdf;
}

QStringList pdf_words(const QString& pdf) {
    const QByteArray words = expect_success(QStringLiteral("pdftotext"),
                                            {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    return QString::fromUtf8(words).simplified().split(u' ');
}

QImage pdf_picture(const QString& pdf, int page, int dpi) {
    const QString number = QString::number(page);
    expect_success(QStringLiteral("pdftoppm"),
                   {QStringLiteral("-png"), QStringLiteral("-singlefile"), QStringLiteral("-r"),
                    QString::number(dpi), QStringLiteral("-f"), number, QStringLiteral("-l"),
                    number, pdf, pdf});
    return QImage(pdf + QStringLiteral(".png"));
}

EnvironmentGuard::EnvironmentGuard(const char* name, const QByteArray& value)
    : name_(name), old_(qgetenv(name)), was_set_(qEnvironmentVariableIsSet(name)) {
    qputenv(name, value);
}

EnvironmentGuard::~EnvironmentGuard() {
    if (was_set_)
        qputenv(name_.constData(), old_);
    else
        qunsetenv(name_.constData());
}

} // namespace testsupport
