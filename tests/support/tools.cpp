#include "tests/support/tools.h"

#include <QFile>
#include <QProcess>

#include <csignal>

namespace testsupport {

ToolResult run(const QString& program, const QStringList& arguments) {
    // A paste leaves it ignored, and statuses with it.
    std::signal(SIGCHLD, SIG_DFL);
    QProcess process;
    process.start(program, arguments);
    ToolResult result;
    if (!process.waitForStarted() || !process.waitForFinished(60000))
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
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

void write_script(const QString& path, const QByteArray& body) {
    write_file(path, "#!/bin/sh\n" + body);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString make_pdf(const QString& ps) {
    const QString pdf = ps + QStringLiteral(".pdf");
    return run(QStringLiteral("ps2pdf"), {ps, pdf}).status == 0 ? pdf : QString();
}

QStringList pdf_words(const QString& pdf) {
    const QByteArray text =
        run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")}).out;
    return QString::fromUtf8(text).simplified().split(u' ');
}

QImage pdf_picture(const QString& pdf, int page, int dpi) {
    const QString number = QString::number(page);
    run(QStringLiteral("pdftoppm"),
        {QStringLiteral("-png"), QStringLiteral("-singlefile"), QStringLiteral("-r"),
         QString::number(dpi), QStringLiteral("-f"), number, QStringLiteral("-l"), number, pdf,
         pdf});
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
