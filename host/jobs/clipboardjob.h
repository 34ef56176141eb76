#pragma once

#include "host/files/outcome.h"

namespace host {

class JobWatch;

/// Copies every page of the report file @p report to the clipboard. When the report cannot be
/// opened or the job is stopped the clipboard stays as it was; when a page cannot be read it has
/// the pages before that one.
///
/// @param watch may stop the job, which is a failure then
Outcome copy_report_text(const QByteArray& report, JobWatch& watch);

} // namespace host
