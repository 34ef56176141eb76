#include "host/jobs/joberror.h"

#include "host/cli/console.h"
#include "host/jobs/tool.h"

#include <printman/printman.h>

#include <QFile>
#include <QRegularExpression>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace host {

namespace {

constexpr qsizetype max_kept = 4096;
constexpr int shell_signal_base = 128;

/// What a shell's exit status tells: that a signal has ended what it ran, or the status itself.
QString end_of(int status, const QString& told) {
    constexpr int last_signal = 31;
    const int signal = status - shell_signal_base;
    return signal >= 1 && signal <= last_signal
               ? QStringLiteral("was ended by signal %1").arg(signal)
               : told;
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
        const QString told = match.captured(2) + match.captured(4);
        line =
            QString(match.captured(1) + u' ' + end_of(match.captured(3).toInt(), told)).toLatin1();
    }
    const QByteArray words = first_words(said);
    return words.isEmpty() ? line : line + ": " + words;
}

QByteArray placed_failure(const QByteArray& error, const QByteArray& written) {
    const auto says = [&error](int code) { return error == std::strerror(code); };
    const bool is_bare = says(ENOSPC) || says(EDQUOT) || says(EFBIG) || says(EIO);
    return is_bare && !written.isEmpty() ? written + ": " + error : error;
}

Outcome job_outcome(const CPrintMan& manager, bool done, const HeldErrors& errors,
                    const QByteArray& written) {
    if (done)
        return Outcome::success();
    const QByteArray error = QFile::encodeName(manager.last_job_error());
    return Outcome::failure(error == "canceled"
                                ? QByteArray("interrupted")
                                : plain_failure(placed_failure(error, written), errors.text()));
}

} // namespace host
