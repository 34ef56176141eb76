#include "host/jobs/joberror.h"

#include "host/jobs/stderrcapture.h"
#include "host/jobs/tool.h"

#include <printman/printman.h>

#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <cstring>

namespace host {

namespace {

constexpr int shell_signal_base = 128;

/// The meaning of a shell's exit status: that a signal has ended its command, or else @p message.
QString describe_status(int status, const QString& message) {
    constexpr int last_signal = 31;
    const int signal = status - shell_signal_base;
    return signal >= 1 && signal <= last_signal
               ? QStringLiteral("was ended by signal %1").arg(signal)
               : message;
}

} // namespace

QByteArray plain_failure(const QByteArray& error, const QByteArray& output) {
    static const QRegularExpression command(
        QStringLiteral("^'([\\w-]+) .*' (failed with status (\\d+)|was ended by signal|made no "
                       "whole file|cannot be started)(.*)$"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression program(QStringLiteral("^[\\w-]+ (failed with status|was "
                                                           "killed by signal)"));
    const QString text = QString::fromLatin1(error);
    const auto match = command.match(text);
    if (!match.hasMatch() && !program.match(text).hasMatch())
        return error;
    QByteArray line = error;
    if (match.hasMatch()) {
        const QString message = match.captured(2) + match.captured(4);
        line =
            QString(match.captured(1) + u' ' + describe_status(match.captured(3).toInt(), message))
                .toLatin1();
    }
    const QByteArray words = first_words(output);
    return words.isEmpty() ? line : line + ": " + words;
}

QByteArray placed_failure(const QByteArray& error, const QByteArray& written) {
    const auto is = [&error](int code) { return error == std::strerror(code); };
    const bool is_bare = is(ENOSPC) || is(EDQUOT) || is(EFBIG) || is(EIO);
    return is_bare && !written.isEmpty() ? written + ": " + error : error;
}

Outcome job_outcome(const CPrintMan& manager, bool done, const StderrCapture& capture,
                    const QByteArray& written) {
    if (done)
        return Outcome::success();
    const QByteArray error = QFile::encodeName(manager.last_job_error());
    return Outcome::failure(error == "canceled"
                                ? QByteArray("interrupted")
                                : plain_failure(placed_failure(error, written), capture.text()));
}

} // namespace host
