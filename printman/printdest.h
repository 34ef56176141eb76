#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// Where a report goes. Host and library exchange this record in binary form: 416 bytes, integers
/// in the machine's byte order, texts ended by a zero byte. It has no constructor and is copied
/// whole, the three bytes after `no_page_fmt` included.
struct PrintDest {
    int32_t dest;         ///< a Destination: 0 nothing chosen yet, 1 screen, 2 printer, 3 file
    uint8_t server_print; ///< printers only: 1 a server (host-defined) printer, 0 a local one
    char prt_id[131];     ///< printer id
    int32_t copies;       ///< number of copies, 1 or more
    uint8_t collate;      ///< collate the copies
    uint8_t page_length;  ///< use the page length that the printer assigns
    uint8_t sel_prt_font; ///< always ask for printer and font
    char path[269];       ///< files only: the output path
    uint8_t no_page_fmt;  ///< leave automatic page formatting off
};

namespace printman {

/// What PrintDest::dest says; it converts to that int.
enum Destination { to_nowhere = 0, to_screen = 1, to_printer = 2, to_file = 3 };

} // namespace printman

static_assert(sizeof(PrintDest) == 416);
static_assert(std::is_trivial_v<PrintDest> && std::is_standard_layout_v<PrintDest>);
static_assert(offsetof(PrintDest, dest) == 0);
static_assert(offsetof(PrintDest, server_print) == 4);
static_assert(offsetof(PrintDest, prt_id) == 5);
static_assert(offsetof(PrintDest, copies) == 136);
static_assert(offsetof(PrintDest, collate) == 140);
static_assert(offsetof(PrintDest, page_length) == 141);
static_assert(offsetof(PrintDest, sel_prt_font) == 142);
static_assert(offsetof(PrintDest, path) == 143);
static_assert(offsetof(PrintDest, no_page_fmt) == 412);
