#pragma once

#include "tests/printer/setuprecords.h"

#include <printman/printman.h>

#include <vector>

/// A host-defined printer in which every field has another value.
inline WinPrtSetup host_printer(std::string_view id) {
    WinPrtSetup record{};
    set_text(record.printer_id, id);
    set_text(record.printer_name, "Host " + std::string(id));
    set_text(record.orientation_name, "Landscape");
    set_text(record.paper_name, "8.5 x 11 inches, 216 x 279 mm");
    set_text(record.font_name, "Courier 12");
    set_text(record.style_name, "Bold");
    record.point_size = 12;
    record.page_length = 66;
    record.first_line = 3;
    record.last_line = 60;
    record.top = 0.5;
    record.bottom = 0.25;
    record.left = 1.125;
    record.right = 2;
    return record;
}

/// A local printer of the system in which every field has another value.
inline UnixPrtSetup unix_printer(std::string_view id) {
    UnixPrtSetup record{};
    set_text(record.printer_id, id);
    set_text(record.port, "lp -d " + std::string(id));
    set_text(record.description, "In the hall: " + std::string(id));
    record.page_length = 72;
    record.first_line = 2;
    record.last_line = 70;
    return record;
}

inline void set_host_printers(CPrintMan& manager, const std::vector<WinPrtSetup>& records) {
    manager.set_numwin_printer(static_cast<int>(records.size()));
    for (const WinPrtSetup& record : records)
        manager.add_win_printer(&record);
}

inline void set_unix_printers(CPrintMan& manager, const std::vector<UnixPrtSetup>& records) {
    manager.set_numunix_printer(static_cast<int>(records.size()));
    for (const UnixPrtSetup& record : records)
        manager.add_unix_printer(&record);
}
