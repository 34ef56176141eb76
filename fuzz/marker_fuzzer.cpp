// Bytes are read as a marker at every place; a line that is escaped holds its text again.
#include <printman/report/marker.h>
#include <printman/report/reportformat.h>

#include <algorithm>
#include <cstdint>
#include <string>

namespace {

/// The text that a page's reader takes from @p line.
std::string read_text(std::string line) {
    std::string text;
    line += '\0';
    const int end = static_cast<int>(line.size()) - 1;
    for (int at = 0; at < end;) {
        printman::MarkerParse parsed;
        if (line.compare(static_cast<size_t>(at), 3, printman::marker_lead) == 0)
            parsed = printman::parse_marker(line, at + 3, end);
        if (parsed.consumed > 0)
            at += 3 + parsed.consumed;
        else
            text += line[static_cast<size_t>(at++)];
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string line(reinterpret_cast<const char*>(data), std::min(size, printman::max_line_bytes));
    const int last = static_cast<int>(line.size());
    for (int pos = -1; pos <= last; ++pos) {
        printman::parse_marker(line, pos, last + 1);
        printman::parse_field_marker(line, pos, last - 2, 3);
    }
    std::erase(line, '\0');
    const std::string escaped = printman::escape_report_line(line);
    if (read_text(escaped) != line || escaped.find("#!?PAGETOP") != line.npos ||
        escaped.find("#!?PAGEEND") != line.npos)
        __builtin_trap();
    return 0;
}
