#pragma once

#include "host/files/outcome.h"
#include "host/jobs/pagesetup.h"
#include "host/jobs/watermark.h"

namespace host {

class JobWatch;

/// What a PDF is made of beside the report.
struct PdfSetup {
    PageSetup page;
    QByteArray form; ///< a PDF that is laid behind every page; empty for none
    std::optional<Watermark> watermark;

    /// Reads the options of a command line: wrong usage when one makes no sense, a failure when the
    /// printer that one names is not in the setup file.
    static Outcome read(const Arguments& arguments, PdfSetup& setup);
};

/// Makes the PDF file @p out of the report file @p report: the library makes it, as a server job,
/// in a directory of the job's own, and the whole result takes the place of @p out. On failure or
/// interruption @p out is as it was and no scratch is left.
///
/// @param watch may stop the job, which then is a failure
Outcome make_pdf(const QByteArray& report, const QByteArray& out, const PdfSetup& setup,
                 JobWatch& watch);

} // namespace host
