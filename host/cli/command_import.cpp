#include "host/cli/command.h"
#include "host/cli/console.h"
#include "host/import/importer.h"
#include "host/jobs/report.h"
#include "host/settings/numbers.h"

namespace host {

namespace {

constexpr int max_columns = 32767;
constexpr int max_lines = 32767;

Outcome run_import(const Arguments& arguments) {
    const QByteArray listing = arguments.operand(0);
    const QByteArray out = arguments.operand(1);
    Outcome names = check_output(listing, out);
    if (!names.ok())
        return names;
    ListingRules rules;
    rules.asa = arguments.has("asa");
    if (const auto text = arguments.value("columns")) {
        rules.columns = parse_whole(*text, 1, max_columns).value_or(0);
        if (rules.columns == 0)
            return Outcome::wrong_usage("--columns needs a number from 1 to 32767, not " + *text);
    }
    if (const auto text = arguments.value("lines")) {
        rules.page_lines = parse_whole(*text, 1, max_lines).value_or(0);
        if (rules.page_lines == 0)
            return Outcome::wrong_usage("--lines needs a number from 1 to 32767, not " + *text);
    }
    return import_listing(listing, out, rules);
}

} // namespace

const Command import_command{
    .name = "import",
    .operands = {"LISTING", "OUT.rpt"},
    .summary = "make a report of a plain-text listing",
    .about = "Makes the report OUT.rpt of LISTING, a plain text whose pages end with form\n"
             "feeds; a text without any is cut into pages of 66 lines. Tabs go to the next\n"
             "multiple of 8, lines end with LF or CRLF, and what follows another CR is\n"
             "printed over the line (blanks give way, '_' underlines; any other clash is\n"
             "refused). All other bytes are kept; a zero byte is refused. A line that would\n"
             "be read as a marker comes back out as it went in. LISTING is read twice, so it\n"
             "cannot be a pipe. OUT.rpt appears when it is complete; an earlier file stays\n"
             "whole until then.",
    .options = {{"columns", "N",
                 "columns of a page; a longer line is refused\n"
                 "(default: one more than the longest line)"},
                {"lines", "N",
                 "lines of a page; a longer page is broken\n"
                 "(default: those of the longest page, or 66 where\n"
                 "the listing has no form feed)"},
                {"asa", "",
                 "the first column is carriage control: ' ' next line,\n"
                 "'0' and '-' one and two blank lines first, '1' next\n"
                 "page, '+' over the line before"}},
    .examples = "printman import listing.txt listing.rpt\n"
                "printman import --asa --lines 60 --columns 133 job.lst job.rpt",
    .run = run_import,
};

} // namespace host
