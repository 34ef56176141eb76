#pragma once

#include <printman/printer/prtsetup.h>
#include <printman/printman_export.h>

#include <span>
#include <string>

// What a printer setup file is made of, for hosts that write one: the library only reads it.

namespace printman {

/// One printer of the setup file. In memory its numbers are in the machine's byte order. The record
/// stands in the file as it stands in memory, with its numbers little-endian, behind a header of
/// two such 32-bit words, of which the first counts the records.
struct SetupRecord {
    int32_t in_use; ///< 0: an empty slot, which every reader skips
    char printer_id[128];
    char printer_name[128];
    char font_name[128]; ///< the report font's name for display; may be empty
    int32_t setup_value; ///< carried
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

/// The setup file of these records, as the bytes of a file: the texts as they stand in their
/// fields, the numbers in the file's byte order on every machine.
///
/// @param records     in the order in which readers find them; of equal ids the first counts
/// @param second_word of the header, which no reader looks at
PRINTMAN_EXPORT std::string setup_file_bytes(std::span<const SetupRecord> records,
                                             int32_t second_word = 0);

} // namespace printman
