#pragma once

#include "host/files/outcome.h"

class CPrintMan;

namespace host {

class StderrCapture;

/// The reason why a job failed, in one line for a user: a tool is named without the rest of its
/// command, and the first line of its own output is added.
///
/// @param error  the library's error message
/// @param output what was written to standard error during the job
QByteArray plain_failure(const QByteArray& error, const QByteArray& output);

/// The outcome of the manager's last job.
///
/// @param done    whether the job succeeded
/// @param written the file or directory that was written, for an error message without one
Outcome job_outcome(const CPrintMan& manager, bool done, const StderrCapture& capture,
                    const QByteArray& written);

/// @p error with @p written before it when it is only the system's message for a failed write.
QByteArray placed_failure(const QByteArray& error, const QByteArray& written);

} // namespace host
