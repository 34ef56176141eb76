#include "host/cli/command.h"
#include "host/cli/console.h"
#include "host/files/inputfile.h"
#include "host/jobs/textjob.h"

namespace host {

namespace {

Outcome run_text(const Arguments& arguments) {
    const QByteArray path = arguments.operand(0);
    const QByteArray out = arguments.operand(1);
    Outcome names = check_output(path, out);
    if (!names.ok())
        return names;
    ConsoleWatch watch;
    return make_text(path, out, watch);
}

} // namespace

const Command text_command{
    .name = "text",
    .operands = {"REPORT", "OUT.txt"},
    .summary = "write a report as plain text",
    .description = "Writes every page of REPORT to OUT.txt, one line of text for each line of the\n"
                   "page and nothing between the pages. The markers of the report are left out.\n"
                   "The bytes are the report's, in Latin-1. OUT.txt appears when it is complete;\n"
                   "an earlier file stays whole until then.",
    .options = {},
    .examples = "printman text aging.rpt aging.txt",
    .run = run_text,
};

} // namespace host
