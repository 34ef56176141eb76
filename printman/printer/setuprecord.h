#pragma once

#include <printman/printer/prtsetup.h>
#include <printman/printman_export.h>

#include <span>
#include <string>

// The contents of a printer setup file, for hosts that write one; the library only reads it.

namespace printman {

/// A printer of the setup file. In memory its numbers are in the machine's byte order. The file has
/// a header of two 32-bit words, of which the first counts the records, and then the records in
/// their memory layout; all numbers in it are little-endian.
struct SetupRecord {
    int32_t in_use; ///< 0: an empty slot, which readers skip
    char printer_id[128];
    char printer_name[128];
    char font_name[128]; ///< the report font's name for display; may be empty
    int32_t setup_value; ///< carried along for the host
    FontInfo font;
    char reserved[4]; ///< never converted
    DLWDEVMODE devmode;
    PageInfo page;
    char padding[4];
    MarginInfo margins;
};
static_assert(sizeof(SetupRecord) == 992 && std::is_trivial_v<SetupRecord>);
static_assert(offsetof(SetupRecord, printer_id) == 4);
static_assert(offsetof(SetupRecord, printer_name) == 132);
static_assert(offsetof(SetupRecord, font_name) == 260);
static_assert(offsetof(SetupRecord, setup_value) == 388);
static_assert(offsetof(SetupRecord, font) == 392);
static_assert(offsetof(SetupRecord, reserved) == 684);
static_assert(offsetof(SetupRecord, devmode) == 688);
static_assert(offsetof(SetupRecord, page) == 936);
static_assert(offsetof(SetupRecord, margins) == 960);

/// The bytes of a setup file with these records: texts unchanged, numbers in the file's byte order
/// on every machine.
///
/// @param records     in file order; of several with the same id readers find the first
/// @param second_word the second word of the header, which readers ignore
PRINTMAN_EXPORT std::string setup_file_bytes(std::span<const SetupRecord> records,
                                             int32_t second_word = 0);

} // namespace printman
