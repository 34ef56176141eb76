#include "host/report.h"

#include "host/pendingfile.h"

#include <printman/core/printman.h>
#include <printman/core/reportcheck.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

// What a report's name may hold; the library refuses a longer one.
constexpr qsizetype max_report_name = 255;

/// Why the report has no geometry, as far as its faults tell.
Outcome missing_geometry(const QByteArray& path) {
    printman::ReportFault first;
    bool any = false;
    const int code =
        printman::check_report(path.toStdString(), [&](const printman::ReportFault& fault) {
            first = fault;
            any = true;
            return false;
        });
    if (code != 0)
        return Outcome::failure(path + ": " + std::strerror(code));
    QByteArray where = path;
    if (any && first.line > 0)
        where += ':' + QByteArray::number(static_cast<qlonglong>(first.line));
    return Outcome::failure(where + ": " +
                            (any ? QByteArray::fromStdString(first.what)
                                 : QByteArray("the report does not say its columns and lines")));
}

} // namespace

Outcome check_input(const QByteArray& path) {
    const int fd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0)
        return Outcome::failure(path + ": " + std::strerror(errno));
    struct stat status {};
    const int result = ::fstat(fd, &status);
    ::close(fd);
    if (result != 0)
        return Outcome::failure(path + ": " + std::strerror(errno));
    if (S_ISDIR(status.st_mode))
        return Outcome::failure(path + ": " + std::strerror(EISDIR));
    if (!S_ISREG(status.st_mode))
        return Outcome::failure(path + ": Not a regular file; it is read more than once");
    if (status.st_size == 0)
        return Outcome::failure(path + ": The file is empty");
    return Outcome::success();
}

Outcome open_report(CPrintMan& manager, const QByteArray& path) {
    if (path.size() > max_report_name)
        return Outcome::failure(path + ": The name is longer than " +
                                QByteArray::number(max_report_name) + " bytes");
    const Outcome readable = check_input(path);
    if (!readable.ok())
        return readable;
    manager.init_printman(path.constData());
    if (manager.get_columns() == 0 || manager.get_lines() == 0)
        return missing_geometry(path);
    if (manager.get_page_count() == 0)
        return Outcome::failure(path + ": The report has no page");
    return Outcome::success();
}

Outcome check_output(const QByteArray& in, const QByteArray& out) {
    if (out.isEmpty())
        return Outcome::wrong_usage("the output file has an empty name");
    if (same_file(in, out))
        return Outcome::wrong_usage(out + " is both read and written");
    return Outcome::success();
}

} // namespace host
