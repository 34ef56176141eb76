#pragma once

#include "host/jobs/printjob.h"
#include "host/printers/hostprinters.h"

namespace host {

/// Prints the report file @p report as a server job of this host, into a file of the job's own,
/// which lp, or lpr where there is none, then sends to the printer's queue.
///
/// @param setup its printer and setup file are ignored
/// @param watch may stop the job, which is a failure then
Outcome print_on_queue(const QByteArray& report, const ServerPrinter& printer, PrintSetup setup,
                       JobWatch& watch);

} // namespace host
