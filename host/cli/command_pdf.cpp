#include "host/cli/command.h"
#include "host/cli/console.h"
#include "host/cli/pdfoptions.h"
#include "host/files/inputfile.h"
#include "host/files/paths.h"
#include "host/jobs/pdfjob.h"

namespace host {

namespace {

Outcome run_pdf(const Arguments& arguments) {
    const QByteArray report = arguments.operand(0);
    const QByteArray out = arguments.operand(1);
    Outcome names = check_output(report, out);
    if (!names.ok())
        return names;
    PdfSetup setup;
    Outcome read = read_pdf_options(arguments, setup);
    if (!read.ok())
        return read;
    if (!setup.form.isEmpty())
        names = check_output(setup.form, out);
    if (!names.ok())
        return names;
    ConsoleWatch watch;
    return make_pdf(report, out, setup, watch);
}

} // namespace

const Command pdf_command{
    .name = "pdf",
    .operands = {"REPORT", "OUT.pdf"},
    .summary = "make a searchable PDF file",
    .description =
        "Makes the PDF file OUT.pdf of REPORT, with its text as text and the fonts in it.\n"
        "It needs ps2pdf, which the Debian package ghostscript has, and for a form or a\n"
        "watermark pdftk, which pdftk-java has. OUT.pdf appears when it is complete; an\n"
        "earlier file stays whole until then.",
    .options = {{"printer", "ID",
                 "take font, paper and margins from this printer of the\n"
                 "setup file, instead of the next six options; the page\n"
                 "fills the paper unless the setting NOPAGEMAP is yes"},
                {"font", "F", "font family (default: Courier New, or its substitute)"},
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
                {"title", "T", "title of the PDF (default: the report's name)"},
                {"form", "F.pdf", "lay the first page of this PDF behind every page"},
                {"watermark", "TEXT", "write TEXT across every page, at most 79 bytes"},
                {"watermark-font", "F", "its font family (default: Helvetica)"},
                {"watermark-size", "N",
                 "its size in points, 1 to 1000 (default: 60, or less\n"
                 "where it would not fit within the margins)"},
                {"watermark-angle", "DEG",
                 "turn it counter-clockwise about its top left corner\n"
                 "(default: 45)"},
                {"watermark-colour", "C", "R,G,B or #rrggbb (default: #d0d0d0)"},
                {"watermark-at", "X,Y",
                 "its top left corner in inches from the top left\n"
                 "corner of the margins (default: in the page's middle)"},
                {"watermark-front", "", "write it over the report, not behind it"}},
    .examples =
        "printman pdf aging.rpt aging.pdf\n"
        "printman pdf --paper Letter --landscape --title \"Aging, May\" aging.rpt aging.pdf\n"
        "printman pdf --font \"DejaVu Sans Mono\" --size 7.5 --margins .5,.5,1,.5 a.rpt a.pdf\n"
        "printman pdf --printer LASER --form letterhead.pdf aging.rpt aging.pdf\n"
        "printman pdf --watermark DRAFT --watermark-colour 255,200,200 a.rpt a.pdf",
    .run = run_pdf,
};

} // namespace host
