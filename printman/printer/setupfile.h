#pragma once

#include <printman/printer/setuprecord.h>
#include <printman/system/regularfile.h>

#include <optional>

// Nothing here needs the GUI toolkit, so that it also builds and runs alone, for other processors.

namespace printman {

/// Reads a printer setup file from its start, record by record. The file is open as long as the
/// object lives.
class SetupFile {
public:
    /// Opens @p path and reads the header. Only a regular file is opened; null is none.
    explicit SetupFile(const char* path);

    /// False when the file could not be opened or is empty; it then has no records.
    bool is_open() const { return file_ != nullptr; }

    /// Reads the next record into @p record, numbers in the machine's byte order, texts unchanged.
    /// The part of the last record that a truncated file lacks is zero.
    ///
    /// @return false, with @p record all zero, after the last record that the header counts or the
    ///         file holds, whichever comes first
    bool next(SetupRecord& record);

private:
    File file_;
    int32_t left_ = 0;
};

/// Finds the first record in use with the id @p printer_id.
///
/// @return the record, its texts terminated; none when there is no such record or file
std::optional<SetupRecord> find_setup_record(const char* path, const char* printer_id);

} // namespace printman
