#include "host/jobs/report.h"

#include "host/files/pendingfile.h"
#include "host/jobs/interrupt.h"

#include <printman/printman.h>
#include <printman/report/reportcheck.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

/// Why the report has no geometry: what its faults say about that, or about the file as a whole.
Outcome missing_geometry(const QByteArray& path, const QByteArray& named) {
    QByteArray where = named;
    QByteArray why = "the report does not say its columns and lines";
    const auto choose = [&](const printman::ReportFault& fault) {
        const bool about_geometry = fault.what.find("geometry") != std::string::npos;
        if (about_geometry || fault.line == 0)
            why = QByteArray::fromStdString(fault.what);
        if (about_geometry && fault.line > 0)
            where += ':' + QByteArray::number(static_cast<qlonglong>(fault.line));
        return !about_geometry;
    };
    if (const int code = printman::check_report(path.toStdString(), choose))
        why = std::strerror(code);
    return Outcome::failure(where + ": " + why);
}

/// check_input() with the name that is told.
Outcome check_file(const QByteArray& path, const QByteArray& named) {
    const int fd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0)
        return Outcome::failure(named + ": " + std::strerror(errno));
    struct stat status {};
    const int result = ::fstat(fd, &status);
    ::close(fd);
    if (result != 0)
        return Outcome::failure(named + ": " + std::strerror(errno));
    if (S_ISDIR(status.st_mode))
        return Outcome::failure(named + ": " + std::strerror(EISDIR));
    if (!S_ISREG(status.st_mode))
        return Outcome::failure(named + ": Not a regular file; it is read more than once");
    if (status.st_size == 0)
        return Outcome::failure(named + ": The file is empty");
    return Outcome::success();
}

} // namespace

Outcome check_input(const QByteArray& path) {
    return check_file(path, path);
}

Outcome open_report(CPrintMan& manager, const QByteArray& path) {
    return open_report(manager, path, path);
}

Outcome open_report(CPrintMan& manager, const QByteArray& path, const QByteArray& named) {
    if (std::max(path.size(), named.size()) > max_report_name)
        return Outcome::failure(named + ": The name is longer than " +
                                QByteArray::number(max_report_name) + " bytes");
    Outcome readable = check_file(path, named);
    if (!readable.ok())
        return readable;
    const InterruptsEndProgram at_once;
    manager.init_printman(path.constData());
    if (manager.get_columns() == 0 || manager.get_lines() == 0)
        return missing_geometry(path, named);
    if (manager.get_page_count() == 0)
        return Outcome::failure(named + ": The report has no page");
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
