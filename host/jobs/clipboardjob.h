#pragma once

#include "host/files/outcome.h"

namespace host {

class JobWatch;

/// Puts every page of the report file @p report on the clipboard. When the report cannot be opened
/// or the job is stopped the clipboard stays as it was; when a page cannot be read it has those
/// before.
///
/// @param watch may stop the job, which then is a failure
Outcome copy_report_text(const QByteArray& report, JobWatch& watch);

} // namespace host
