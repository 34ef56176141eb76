#include "host/cli/command.h"
#include "host/files/inputfile.h"
#include "host/jobs/picture.h"
#include "host/settings/numbers.h"

#include <printman/render/zoom.h>

#include <QStringList>

#include <limits>

namespace host {

namespace {

Outcome run_png(const Arguments& arguments) {
    const QByteArray report = arguments.operand(0);
    const QByteArray out = arguments.operand(1);
    Outcome names = check_output(report, out);
    if (!names.ok())
        return names;
    const QByteArray page_text = arguments.value("page").value_or("1");
    const auto page = parse_whole(page_text, 1, std::numeric_limits<int>::max());
    if (!page)
        return Outcome::wrong_usage("--page needs a number from 1 on, not " + page_text);
    const QByteArray zoom_name = arguments.value("zoom").value_or("100%");
    const int zoom = printman::zoom_ratio(zoom_name.constData());
    if (zoom == 0)
        return Outcome::wrong_usage("unknown zoom '" + zoom_name + "'; known are " +
                                    printman::zoom_names().join(QStringLiteral(", ")).toLatin1());
    return make_picture(report, out, {.page = *page, .zoom = zoom});
}

} // namespace

const Command png_command{
    .name = "png",
    .operands = {"REPORT", "OUT.png"},
    .summary = "make a picture of a page",
    .description = "Makes a picture of one page of REPORT in the screen colours of the settings.\n"
                   "OUT.png appears when it is complete; an earlier file stays whole until then.",
    .options = {{"page", "N", "the page, from 1 on (default: 1)"},
                {"zoom", "Z%",
                 "50%, 100%, 150%, 200%, 250% or 300%; at 100% the text\n"
                 "has 10 points (default: 100%)"}},
    .examples = "printman png aging.rpt aging.png\n"
                "printman png --page 3 --zoom 150% aging.rpt page3.png",
    .run = run_png,
};

} // namespace host
