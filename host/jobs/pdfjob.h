#pragma once

#include "host/files/outcome.h"
#include "host/jobs/pagesetup.h"
#include "host/jobs/watermark.h"

namespace host {

class JobWatch;

/// How a PDF is made from a report.
struct PdfSetup {
    PageSetup page = {};
    QByteArray form = {}; ///< a PDF whose first page is laid behind every page; empty for none
    std::optional<Watermark> watermark = std::nullopt;
};

/// Makes the PDF file @p out from the report file @p report: the library makes it, as a server job,
/// in a directory of the job's own, and only the complete result replaces @p out. On failure or
/// interruption @p out is as it was and no temporary files are left.
///
/// @param watch may stop the job, which is a failure then
Outcome make_pdf(const QByteArray& report, const QByteArray& out, const PdfSetup& setup,
                 JobWatch& watch);

} // namespace host
