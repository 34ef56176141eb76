#pragma once

#include "host/files/outcome.h"

#include <printman/result.h>

namespace host {

class StderrCapture;

/// The outcome of a job of the library, in one line for a user: a tool is named without the rest of
/// its command, and the first line of its own output is added.
///
/// @param output what was written to standard error during the job
Outcome job_outcome(const printman::Result& job, const QByteArray& output = {});

} // namespace host
