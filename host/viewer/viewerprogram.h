#pragma once

#include "host/files/outcome.h"

namespace host {

/// Shows the report file @p report in a window until the window is closed or the user interrupts
/// the program.
Outcome run_viewer(const QByteArray& report);

} // namespace host
