#include <printman/printer/byteorder.h>
#include <printman/printer/setupfile.h>
#include <printman/printer/textfield.h>

namespace printman {

namespace {

struct Header {
    int32_t record_count;
    int32_t second_word;
};
static_assert(sizeof(Header) == 8);

void terminate_texts(SetupRecord& record) {
    terminate_field(record.printer_id);
    terminate_field(record.printer_name);
    terminate_field(record.font_name);
    terminate_field(record.font.style_name);
    terminate_field(record.font.log_font.face_name);
    terminate_field(record.devmode.device_name);
    terminate_field(record.devmode.form_name);
}

template <typename Record>
void append_bytes(std::string& bytes, const Record& record) {
    bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
}

} // namespace

SetupFile::SetupFile(const char* path) : file_(open_regular_file(path)) {
    if (!file_)
        return;
    Header header{};
    if (std::fread(&header, 1, sizeof header, file_.get()) == 0)
        file_.reset();
    convert_numbers<std::endian::native>(header.record_count);
    left_ = header.record_count;
}

bool SetupFile::next(SetupRecord& record) {
    record = {};
    if (!file_ || left_ <= 0)
        return false;
    if (std::fread(&record, 1, sizeof record, file_.get()) == 0) {
        left_ = 0;
        return false;
    }
    --left_;
    convert_record<std::endian::native>(record);
    return true;
}

std::optional<SetupRecord> find_setup_record(const char* path, const char* printer_id) {
    if (!printer_id)
        return {};
    SetupFile file(path);
    SetupRecord record;
    while (file.next(record)) {
        if (record.in_use != 0 && field_is(record.printer_id, printer_id)) {
            terminate_texts(record);
            return record;
        }
    }
    return {};
}

std::string setup_file_bytes(std::span<const SetupRecord> records, int32_t second_word) {
    Header header{static_cast<int32_t>(records.size()), second_word};
    convert_numbers<std::endian::native>(header.record_count, header.second_word);
    std::string bytes;
    append_bytes(bytes, header);
    for (SetupRecord record : records) {
        convert_record<std::endian::native>(record);
        append_bytes(bytes, record);
    }
    return bytes;
}

} // namespace printman
