#pragma once

#include "host/files/outcome.h"

#include <QString>

class CPrintMan;

namespace host {

class JobWatch;

/// A report file that a job reads wherever it works.
class JobReport {
public:
    /// @param path from the current directory of now
    explicit JobReport(const QByteArray& path);
    ~JobReport();
    JobReport(const JobReport&) = delete;
    JobReport& operator=(const JobReport&) = delete;

    /// Hands it to @p manager, as open_report() does; faults are told of the file as it was named.
    Outcome open(CPrintMan& manager) const;

private:
    QByteArray named_;
    QByteArray path_;
    int fd_ = -1;
};

/// What a document made of a report is called: the file's name without directory and suffix.
QString title_of(const QByteArray& report);

/// Lets @p watch hear how far the manager's jobs are, and stop them. It outlives them.
void watch_job(CPrintMan& manager, JobWatch& watch);

} // namespace host
