#include "host/command.h"
#include "host/console.h"
#include "host/pagesetup.h"
#include "host/pdfjob.h"
#include "host/report.h"

namespace host {

namespace {

Outcome run_pdf(const Arguments& arguments) {
    const QByteArray report = arguments.operand(0);
    const QByteArray out = arguments.operand(1);
    Outcome names = check_output(report, out);
    if (!names.ok())
        return names;
    PageSetup setup;
    Outcome read = PageSetup::read(arguments, setup);
    if (!read.ok())
        return read;
    ConsoleWatch watch;
    return make_pdf(report, out, setup, watch);
}

} // namespace

const Command pdf_command{
    .name = "pdf",
    .operands = {"REPORT", "OUT.pdf"},
    .summary = "make a searchable PDF file",
    .about = "Makes the PDF file OUT.pdf of REPORT, with its text as text and the fonts in it.\n"
             "It needs ps2pdf, which the Debian package ghostscript has. OUT.pdf appears when\n"
             "it is complete; an earlier file stays whole until then.",
    .options = {{"font", "F", "font family (default: Courier New, or what stands for it)"},
                {"size", "N",
                 "print the text at N points, 1 to 1000; a page that is\n"
                 "larger than the paper is made to fit (default: the\n"
                 "page fills the paper)"},
                {"paper", "P",
                 "A0 to A9, B0 to B10, Letter, Legal, Executive, Folio,\n"
                 "Ledger, Tabloid, C5E, Comm10E or DLE (default: Letter\n"
                 "in the countries that use it, else A4)"},
                {"landscape", "", "turn the paper (default: when the page is wider than tall)"},
                {"portrait", "", "do not turn the paper"},
                {"margins", "T,B,L,R",
                 "top, bottom, left and right margin in inches\n"
                 "(default: a third of an inch at top and bottom of\n"
                 "the upright sheet, half an inch at its sides)"},
                {"title", "T", "title of the PDF (default: the report's name)"}},
    .examples =
        "printman pdf aging.rpt aging.pdf\n"
        "printman pdf --paper Letter --landscape --title \"Aging, May\" aging.rpt aging.pdf\n"
        "printman pdf --font \"DejaVu Sans Mono\" --size 7.5 --margins .5,.5,1,.5 a.rpt a.pdf",
    .run = run_pdf,
};

} // namespace host
