#pragma once

#include "host/outcome.h"
#include "host/pagesetup.h"

namespace host {

class JobWatch;

/// Makes the PDF file @p out of the report file @p report: the library paints its pages as
/// PostScript into a directory of the job's own, ps2pdf turns that into PDF, and the whole result
/// takes the place of @p out. On failure or interruption @p out is as it was and no scratch is
/// left.
///
/// @param watch may stop the job, which then is a failure
Outcome make_pdf(const QByteArray& report, const QByteArray& out, const PageSetup& setup,
                 JobWatch& watch);

} // namespace host
