#pragma once

#include <printman/printer/prtsetup.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>

// Nothing here needs the GUI toolkit, so that it also builds and runs alone, for other processors.

namespace printman {

/// One printer of the setup file. The record stands in the file as it stands in memory, with its
/// numbers little-endian, behind a header of two such 32-bit words, of which the first counts the
/// records.
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

/// A printer setup file that is read from its start, record by record. It is open while this lives.
class SetupFile {
public:
    /// Opens @p path and reads the header. Only a regular file is opened, and nothing is waited
    /// for.
    explicit SetupFile(const char* path);

    /// False when it could not be opened or is empty; it then has no records.
    bool is_open() const { return file_ != nullptr; }

    /// Reads the next record into @p record, numbers in the machine's byte order, texts as they
    /// stand. What the file lacks of its last record is zero.
    ///
    /// @return false, and @p record is zero, behind the last record that the header counts or the
    ///         file holds, whichever comes first
    bool next(SetupRecord& record);

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> file_;
    int32_t left_ = 0;
};

/// Looks for the first record in use of that id.
///
/// @return that record, its texts terminated; none when there is no such record or file
std::optional<SetupRecord> find_setup_record(const char* path, const char* printer_id);

/// The setup file of these records, as the bytes of a file: the texts as they stand in their
/// fields.
std::string setup_file_bytes(std::span<const SetupRecord> records, int32_t second_word = 0);

} // namespace printman
