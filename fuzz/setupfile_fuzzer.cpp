// A printer setup file is read to its end; every id in it is found, with texts that end.
#include "fuzz/scratchfile.h"

#include <printman/printer/setupfile.h>
#include <printman/printer/textfield.h>

#include <cstring>

namespace {

template <size_t N>
bool is_terminated(const char (&field)[N]) {
    return strnlen(field, N) < N;
}

bool texts_end(const printman::SetupRecord& record) {
    return is_terminated(record.printer_id) && is_terminated(record.printer_name) &&
           is_terminated(record.font_name) && is_terminated(record.font.style_name) &&
           is_terminated(record.font.log_font.face_name) &&
           is_terminated(record.devmode.device_name) && is_terminated(record.devmode.form_name);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const ScratchFile setup(data, size);
    printman::SetupFile file(setup.path().c_str());
    printman::SetupRecord record;
    size_t count = 0;
    while (file.next(record)) {
        ++count;
        if (record.in_use == 0)
            continue;
        const std::string id(printman::field_text(record.printer_id));
        const auto found = printman::find_setup_record(setup.path().c_str(), id.c_str());
        if (!found || found->in_use == 0 || !texts_end(*found))
            __builtin_trap();
    }
    if (count > size / sizeof record + 1)
        __builtin_trap();
    return 0;
}
