// A report file is indexed, every page of it loaded into items, and the whole saved as text.
#include "fuzz/scratchfile.h"

#include <printman/export/reporttext.h>
#include <printman/progress.h>
#include <printman/report/pagerows.h>
#include <printman/report/reportbuffer.h>
#include <printman/system/outputfile.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    constexpr size_t max_cells = 1024UL * 1024; // more is only slow
    const ScratchFile file(data, size);
    printman::ReportBuffer report;
    printman::EscapeTable fields;
    report.set_file_name(file.path());
    report.init(fields);
    if (report.cells().size() > max_cells)
        return 0;
    printman::PageRows rows;
    for (int request = printman::page_first; report.read_page(request, fields);
         request = printman::page_next)
        rows.load(report.cells(), report.geometry().columns, report.geometry().lines, fields);
    printman::OutputFile out;
    printman::JobControl control;
    if (!out.open(QStringLiteral("/dev/null")).ok() ||
        !printman::write_report_text(report, fields, out, printman::LastColumn::kept, control).ok())
        __builtin_trap();
    return 0;
}
