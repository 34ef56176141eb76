// A file is checked; every fault names a line of it in one printable line of text.
#include "fuzz/scratchfile.h"

#include <printman/report/reportcheck.h>

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const ScratchFile file(data, size);
    const long lines = static_cast<long>(std::count(data, data + size, '\n')) + 1;
    const auto sink = [lines](const printman::ReportFault& fault) {
        const bool printable =
            std::ranges::all_of(fault.what, [](char c) { return c >= ' ' && c <= '~'; });
        if (!printable || fault.what.empty() || fault.line < 0 || fault.line > lines)
            __builtin_trap();
        return true;
    };
    if (printman::check_report(file.path(), sink) != 0)
        __builtin_trap();
    return 0;
}
