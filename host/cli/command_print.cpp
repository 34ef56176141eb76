#include "host/cli/command.h"
#include "host/cli/console.h"
#include "host/files/inputfile.h"
#include "host/jobs/printjob.h"
#include "host/settings/numbers.h"

namespace host {

namespace {

constexpr int max_copies = 999;

Outcome read_setup(const Arguments& arguments, PrintSetup& setup) {
    setup.printer = arguments.value("printer").value_or(QByteArray());
    if (setup.printer.isEmpty())
        return Outcome::wrong_usage("--printer ID is required");
    if (const auto text = arguments.value("copies")) {
        const auto copies = parse_whole(*text, 1, max_copies);
        if (!copies)
            return Outcome::wrong_usage("--copies needs a whole number from 1 to 999, not " +
                                        *text);
        setup.copies = *copies;
    }
    setup.collate = !arguments.has("no-collate");
    return Outcome::success();
}

Outcome run_print(const Arguments& arguments) {
    const QByteArray report = arguments.operand(0);
    PrintSetup setup;
    Outcome ready = read_setup(arguments, setup);
    const auto out = arguments.value("server");
    if (ready.ok() && out)
        ready = check_output(report, *out);
    if (!ready.ok())
        return ready;
    ConsoleWatch watch;
    return out ? serve_report(report, *out, setup, watch) : print_report(report, setup, watch);
}

} // namespace

const Command print_command{
    .name = "print",
    .operands = {"REPORT"},
    .summary = "print a report on a printer of the setup file",
    .description =
        "Prints REPORT on a printer that the setup file describes; 'printman printers'\n"
        "lists them. A page fills the sheet, less half an inch at the upright sheet's sides\n"
        "and a third of an inch at its top and bottom, and less the printer's margins.\n"
        "Where the setting NOPAGEMAP is yes the text has the font's own size, and the\n"
        "printer's margins do not count. A printer whose name has \"generic\" in it gets\n"
        "plain text in a font of fixed width that fits the page: font, paper and margins\n"
        "of the setup file do not count for it.",
    .options = {{"printer", "ID", "the printer, by its id; required"},
                {"copies", "N", "print N copies, 1 to 999 (default: 1)"},
                {"no-collate", "", "all copies of a page, then all of the next one"},
                {"server", "OUT",
                 "print into the PostScript file OUT, which appears when\n"
                 "it is complete, and not on paper"}},
    .examples = "printman print --printer LASER aging.rpt\n"
                "printman print --printer LASER --copies 2 --server aging.ps aging.rpt",
    .run = run_print,
};

} // namespace host
