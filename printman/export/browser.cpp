#include <printman/export/browser.h>
#include <printman/system/detachedchildren.h>
#include <printman/system/shellword.h>

#include <QFile>
#include <QStringConverter>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace printman {

namespace {

constexpr qsizetype max_command_bytes = 255;

/// The current directory's name in the bytes that it has; empty when it has none any more.
QByteArray current_directory() {
    const std::unique_ptr<char, decltype(&std::free)> name(::getcwd(nullptr, 0), &std::free);
    return QByteArray(name.get());
}

/// Writes all bytes: 0 or an errno.
int write_all(int fd, const QByteArray& bytes) {
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.constData() + done, bytes.size() - done);
        if (n < 0 && errno != EINTR)
            return errno;
        done += std::max<ssize_t>(n, 0);
    }
    return 0;
}

/// Puts a new file with @p bytes in the place of whatever file or link has the name @p path.
///
/// @return 0 or an errno; nothing has changed then
int replace_file(const QByteArray& path, const QByteArray& bytes) {
    std::string beside = path.toStdString() + "-XXXXXX";
    const int fd = ::mkostemp(beside.data(), O_CLOEXEC);
    if (fd < 0)
        return errno;
    int error = write_all(fd, bytes);
    if (::close(fd) != 0 && error == 0)
        error = errno;
    if (error == 0 && ::rename(beside.c_str(), path.constData()) != 0)
        error = errno;
    if (error != 0)
        ::unlink(beside.c_str());
    return error;
}

/// Writes @p bytes over a file of this user that has no name but @p path, nor is a link.
///
/// @return 0 or an errno
int rewrite_own_file(const QByteArray& path, const QByteArray& bytes) {
    // Not waiting for whoever reads a pipe of that name.
    const int fd = ::open(path.constData(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return errno;
    struct stat status = {};
    int error = ::fstat(fd, &status) != 0 ? errno : 0;
    if (error == 0 &&
        (!S_ISREG(status.st_mode) || status.st_uid != ::geteuid() || status.st_nlink != 1))
        error = EACCES;
    if (error == 0 && ::ftruncate(fd, 0) != 0)
        error = errno;
    if (error == 0)
        error = write_all(fd, bytes);
    if (::close(fd) != 0 && error == 0)
        error = errno;
    return error;
}

int write_file(const QByteArray& path, const QByteArray& bytes) {
    const int error = replace_file(path, bytes);
    return error == EACCES && rewrite_own_file(path, bytes) == 0 ? 0 : error;
}

/// Runs a shell command on its own: 0 or an errno.
int start_command(QByteArray command) {
    std::signal(SIGCHLD, SIG_IGN);
    reap_detached_children();
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // What this process ignores the browser would ignore too.
    sigset_t restored;
    sigemptyset(&restored);
    sigaddset(&restored, SIGCHLD);
    sigaddset(&restored, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &restored);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    char shell[] = "sh";
    char option[] = "-c";
    char* arguments[] = {shell, option, command.data(), nullptr};
    pid_t child = 0;
    const int error = ::posix_spawn(&child, "/bin/sh", nullptr, &attributes, arguments, environ);
    posix_spawnattr_destroy(&attributes);
    if (error == 0)
        detach_child(child);
    return error;
}

Result warn(const QString& message) {
    qWarning("%s", qUtf8Printable(message));
    return Result::failure(message);
}

} // namespace

Result show_in_browser(const QString& text) {
    if (text.isEmpty())
        return warn(QStringLiteral("No data to paste!"));
    const QByteArray directory = current_directory();
    if (directory.isEmpty())
        return Result::failure(QStringLiteral("the current directory is gone"));
    const QByteArray path = directory + "/printman0001.html";
    const QByteArray command = "dlwbrw " + shell_word(path);
    if (command.size() > max_command_bytes)
        return warn(QStringLiteral("the current directory's name is too long to paste in it"));
    QStringEncoder locale_encoding(QStringConverter::System);
    if (const int error = write_file(path, locale_encoding.encode(text)))
        return Result::failure(QStringLiteral("cannot write %1: %2")
                                   .arg(QFile::decodeName(path), qt_error_string(error)));
    if (const int error = start_command(command))
        return Result::failure(
            QStringLiteral("cannot start the browser: %1").arg(qt_error_string(error)));
    return {};
}

} // namespace printman
