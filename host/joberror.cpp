#include "host/joberror.h"

#include "host/console.h"

#include <printman/core/printman.h>

#include <QFile>
#include <QRegularExpression>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace host {

namespace {

constexpr qsizetype max_kept = 4096;
constexpr qsizetype max_quoted = 200;
constexpr int shell_signal_base = 128;

/// The first line that a tool wrote; the library's own begin with its name.
QByteArray first_words(const QByteArray& said) {
    for (const QByteArray& line : said.split('\n')) {
        const QByteArray words = line.trimmed();
        if (!words.isEmpty() && !words.startsWith("printman: "))
            return words.left(max_quoted);
    }
    return {};
}

} // namespace

HeldErrors::HeldErrors() {
    held_ = ::memfd_create("errors", MFD_CLOEXEC);
    shown_ = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (held_ < 0 || shown_ < 0 || ::dup2(held_, STDERR_FILENO) < 0)
        return;
    show_progress_on(shown_);
}

HeldErrors::~HeldErrors() {
    if (held_ >= 0 && shown_ >= 0) {
        show_progress_on(STDERR_FILENO);
        ::dup2(shown_, STDERR_FILENO);
    }
    for (const int fd : {held_, shown_}) {
        if (fd >= 0)
            ::close(fd);
    }
}

QByteArray HeldErrors::text() const {
    QByteArray bytes(max_kept, '\0');
    const ssize_t size = ::pread(held_, bytes.data(), max_kept, 0);
    bytes.truncate(size < 0 ? 0 : size);
    return bytes;
}

QByteArray plain_failure(const QByteArray& error, const QByteArray& said) {
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
        line = QString(match.captured(1) + u' ' + match.captured(2) + match.captured(4)).toLatin1();
        // So a shell tells that a signal has ended what it ran.
        const int signal = match.captured(3).toInt() - shell_signal_base;
        if (signal > 0)
            return match.captured(1).toLatin1() + " was ended by signal " +
                   QByteArray::number(signal);
    }
    const QByteArray words = first_words(said);
    return words.isEmpty() ? line : line + ": " + words;
}

Outcome job_outcome(const CPrintMan& manager, bool done, const HeldErrors& errors) {
    if (done)
        return Outcome::success();
    const QByteArray error = QFile::encodeName(manager.last_job_error());
    return Outcome::failure(error == "canceled" ? QByteArray("interrupted")
                                                : plain_failure(error, errors.text()));
}

} // namespace host
