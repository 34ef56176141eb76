#pragma once

#include <printman/printer/setuprecord.h>
#include <printman/system/regularfile.h>

#include <optional>

// Nothing here needs the GUI toolkit, so that it also builds and runs alone, for other processors.

namespace printman {

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
    File file_;
    int32_t left_ = 0;
};

/// Looks for the first record in use of that id.
///
/// @return that record, its texts terminated; none when there is no such record or file
std::optional<SetupRecord> find_setup_record(const char* path, const char* printer_id);

} // namespace printman
