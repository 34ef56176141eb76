#include "host/cli/command.h"

namespace host {

const Command view_command{
    .name = "view",
    .operands = {"REPORT"},
    .summary = "show a report in a window",
    .description = "Shows REPORT in a window, one page at a time: zoom, selection with the mouse,\n"
                   "search, copying, and saving as text or PDF. F1 lists the keys. It needs a\n"
                   "display.",
    .options = {},
    .examples = "printman view aging.rpt",
    .run = nullptr,
};

} // namespace host
