#pragma once

#include "host/files/outcome.h"

namespace host {

class JobWatch;

/// Writes every page of the report file @p report to @p out as plain text. On failure or
/// interruption @p out is as it was.
///
/// @param watch may stop the job, which is a failure then
Outcome make_text(const QByteArray& report, const QByteArray& out, JobWatch& watch);

} // namespace host
