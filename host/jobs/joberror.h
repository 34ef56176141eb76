#pragma once

#include "host/files/outcome.h"

class CPrintMan;

namespace host {

/// While one of these lives, what is written to standard error, by the library or by the tools that
/// it runs, is kept and not shown: what went wrong is told once, by whoever began the job. Progress
/// on a terminal is still seen.
class HeldErrors {
public:
    HeldErrors();
    ~HeldErrors();
    HeldErrors(const HeldErrors&) = delete;
    HeldErrors& operator=(const HeldErrors&) = delete;

    /// The beginning of what was written so far.
    QByteArray text() const;

private:
    int shown_ = -1;
    int held_ = -1;
};

/// Why a job failed, in one line for a user: a tool by its name alone instead of the command, and
/// with it the first line of what it said itself.
///
/// @param error as the library tells it
/// @param said  what was written to standard error meanwhile
QByteArray plain_failure(const QByteArray& error, const QByteArray& said);

/// What the manager's last job came to.
///
/// @param done    what it answered
/// @param written what it wrote, for a fault that does not say which file or directory it is about
Outcome job_outcome(const CPrintMan& manager, bool done, const HeldErrors& errors,
                    const QByteArray& written);

/// @p error with @p written before it where it only is what the system says of a write that failed.
QByteArray placed_failure(const QByteArray& error, const QByteArray& written);

} // namespace host
