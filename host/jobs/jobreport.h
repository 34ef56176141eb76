#pragma once

#include "host/files/outcome.h"

#include <QString>

class CPrintMan;

namespace host {

class JobWatch;

/// The report file of a job, which the job can read from any current directory.
class JobReport {
public:
    /// @param path relative to the current directory at this time
    explicit JobReport(const QByteArray& path);
    ~JobReport();
    JobReport(const JobReport&) = delete;
    JobReport& operator=(const JobReport&) = delete;

    /// Opens it in @p manager, as open_report() does; error messages name the file as it was given.
    Outcome open(CPrintMan& manager) const;

private:
    QByteArray named_;
    QByteArray path_;
    int fd_ = -1;
};

/// The title of a document made from a report: the file's name without directory and suffix.
QString title_of(const QByteArray& report);

/// Lets @p watch follow and stop the manager's jobs. It outlives them.
void watch_job(CPrintMan& manager, JobWatch& watch);

} // namespace host
