#include "host/cli/command.h"
#include "host/cli/console.h"
#include "host/files/inputfile.h"
#include "host/import/importer.h"
#include "host/settings/numbers.h"

namespace host {

namespace {

/// Reads the number of an option; it stays 0 without the option.
Outcome read_number(const Arguments& arguments, const char* option, int limit, int& number) {
    const auto text = arguments.value(option);
    if (!text)
        return Outcome::success();
    number = parse_whole(*text, 1, limit).value_or(0);
    return number > 0
               ? Outcome::success()
               : Outcome::wrong_usage(QByteArray("--") + option + " needs a number from 1 to " +
                                      QByteArray::number(limit) + ", not " + *text);
}

Outcome run_import(const Arguments& arguments) {
    const QByteArray listing = arguments.operand(0);
    const QByteArray out = arguments.operand(1);
    ListingRules rules;
    rules.asa = arguments.has("asa");
    Outcome valid = check_output(listing, out);
    if (valid.ok())
        valid = read_number(arguments, "columns", printman::max_page_columns, rules.columns);
    if (valid.ok())
        valid = read_number(arguments, "lines", printman::max_page_lines, rules.page_lines);
    if (!valid.ok())
        return valid;
    Progress progress("MiB");
    return import_listing(listing, out, rules, [&progress](long long done, long long total) {
        return progress.step(done >> 20, total >> 20);
    });
}

} // namespace

const Command import_command{
    .name = "import",
    .operands = {"LISTING", "OUT.rpt"},
    .summary = "make a report of a plain-text listing",
    .description =
        "Makes the report OUT.rpt of LISTING, a plain text whose pages end with form\n"
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
