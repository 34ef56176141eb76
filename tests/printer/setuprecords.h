#pragma once

// Without the GUI toolkit, as the tests of the records also run on other processors.

#include <printman/printer/setupfile.h>

#include <cstring>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

/// A file in memory, and the name under which it can be opened.
class SetupBytes {
public:
    explicit SetupBytes(std::string_view bytes) : fd_(memfd_create("setup", MFD_CLOEXEC)) {
        if (::write(fd_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
            path_.clear();
    }
    ~SetupBytes() { ::close(fd_); }
    SetupBytes(const SetupBytes&) = delete;
    SetupBytes& operator=(const SetupBytes&) = delete;

    const char* path() const { return path_.c_str(); }

private:
    int fd_;
    std::string path_ = "/proc/self/fd/" + std::to_string(fd_);
};

/// Every byte of a record, those between its members included.
template <typename Record>
std::string bytes_of(const Record& record) {
    return {reinterpret_cast<const char*>(&record), sizeof record};
}

template <size_t N>
void set_text(char (&field)[N], std::string_view text) {
    std::memset(field, 0, N);
    text.copy(field, N);
}

/// A printer in use, with a Letter sheet turned and a page length of 60 lines.
inline printman::SetupRecord setup_record(std::string_view id) {
    printman::SetupRecord record{};
    record.in_use = 1;
    set_text(record.printer_id, id);
    set_text(record.printer_name, "Printer " + std::string(id));
    set_text(record.font_name, "Courier New 10");
    record.setup_value = 0x01020304;
    record.font.point_size = 10;
    set_text(record.font.style_name, "Bold Italic");
    record.font.log_font.weight = 700;
    record.font.log_font.italic = 1;
    set_text(record.font.log_font.face_name, "Courier New");
    set_text(record.devmode.device_name, "device");
    record.devmode.orientation = 1;
    record.devmode.paper_size = 2;
    set_text(record.devmode.form_name, "Letter");
    record.devmode.from_page = 1;
    record.devmode.to_page = 9999;
    record.page = {1, 66, 0, 3, 60};
    record.margins = {0.25, 0.5, 0.75, 1.5};
    return record;
}

inline std::string setup_bytes(const std::vector<printman::SetupRecord>& records) {
    return printman::setup_file_bytes(records);
}

/// The same file with another count in its header.
inline std::string with_count(std::string bytes, int32_t count) {
    for (size_t i = 0; i < 4; ++i)
        bytes[i] = static_cast<char>(static_cast<uint32_t>(count) >> (8 * i));
    return bytes;
}
