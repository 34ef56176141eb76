#include "host/jobs/openreport.h"

#include "host/files/inputfile.h"
#include "host/jobs/interrupt.h"

#include <printman/printman.h>
#include <printman/report/reportcheck.h>

#include <algorithm>
#include <cstring>

namespace host {

namespace {

/// The failure for a report without geometry: its fault that is about that, or about the whole
/// file.
Outcome missing_geometry(const QByteArray& path, const QByteArray& named) {
    QByteArray where = named;
    QByteArray error = "the report does not state its columns and lines";
    const auto choose = [&](const printman::ReportFault& fault) {
        const bool about_geometry = fault.kind == printman::ReportFault::geometry;
        if (about_geometry || fault.line == 0)
            error = QByteArray::fromStdString(fault.what);
        if (about_geometry && fault.line > 0)
            where += ':' + QByteArray::number(static_cast<qlonglong>(fault.line));
        return !about_geometry;
    };
    if (const int code = printman::check_report(path.toStdString(), choose))
        error = std::strerror(code);
    return Outcome::failure(where + ": " + error);
}

} // namespace

Outcome open_report(CPrintMan& manager, const QByteArray& path) {
    return open_report(manager, path, path);
}

Outcome open_report(CPrintMan& manager, const QByteArray& path, const QByteArray& named) {
    if (std::max(path.size(), named.size()) > max_report_name)
        return Outcome::failure(named + ": The name is longer than " +
                                QByteArray::number(max_report_name) + " bytes");
    Outcome readable = check_input(path, named);
    if (!readable.ok())
        return readable;
    const ExitOnInterrupt at_once;
    manager.init_printman(path.constData());
    if (manager.get_columns() == 0 || manager.get_lines() == 0)
        return missing_geometry(path, named);
    if (manager.get_page_count() == 0)
        return Outcome::failure(named + ": The report has no page");
    return Outcome::success();
}

} // namespace host
