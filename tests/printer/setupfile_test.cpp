#include "tests/printer/setuprecords.h"

#include <printman/printer/byteorder.h>
#include <printman/printer/textfield.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>

using printman::find_setup_record;
using printman::SetupFile;
using printman::SetupRecord;

namespace {

constexpr size_t header_size = 8;
constexpr size_t record_size = sizeof(SetupRecord);
constexpr int32_t largest = std::numeric_limits<int32_t>::max();
constexpr int32_t smallest = std::numeric_limits<int32_t>::min();

std::vector<SetupRecord> all_records(const std::string& bytes) {
    const SetupBytes setup(bytes);
    SetupFile file(setup.path());
    std::vector<SetupRecord> records;
    SetupRecord record;
    while (file.next(record))
        records.push_back(record);
    return records;
}

std::optional<SetupRecord> find_in(const std::string& bytes, const std::string& id) {
    const SetupBytes setup(bytes);
    return find_setup_record(setup.path(), id.c_str());
}

bool same_bytes(const SetupRecord& a, const SetupRecord& b) {
    return bytes_of(a) == bytes_of(b);
}

/// What a machine reads from these bytes of a file, the rest of the record being zero.
SetupRecord record_of(std::string_view bytes) {
    SetupRecord record{};
    bytes.copy(reinterpret_cast<char*>(&record), record_size);
    printman::convert_record<std::endian::native>(record);
    return record;
}

const std::vector<SetupRecord> three_printers{setup_record("one"), setup_record("two"),
                                              setup_record("three")};

/// A text of that many letters, with the letter at its end that no other has.
std::string letters(size_t count) {
    std::string text(count, 'x');
    text.back() = 'z';
    return text;
}

void put(std::string& bytes, size_t offset, std::string_view what) {
    bytes.replace(offset, what.size(), what);
}

/// A file of one record, laid out by hand.
std::string bytes_by_hand() {
    std::string bytes(header_size + record_size, '\0');
    put(bytes, 0, {"\x01\0\0\0\x0d\x0c\x0b\x0a", 8});
    const size_t at = header_size;
    put(bytes, at, {"\0\0\0\x80", 4});
    put(bytes, at + 4, "LASER1");
    put(bytes, at + 132, "Laser on the first floor");
    put(bytes, at + 260, "Courier");
    put(bytes, at + 388, {"\x04\x03\x02\x01", 4});
    put(bytes, at + 392, {"\x0a\0\0\0", 4});
    put(bytes, at + 396, "Bold");
    put(bytes, at + 528, {"\xf3\xff\xff\xff", 4});
    put(bytes, at + 544, {"\xbc\x02\0\0\x01\x02\x03\x04\x05\x06\x07\x08", 12});
    put(bytes, at + 556, "Courier New");
    put(bytes, at + 684, "resv");
    put(bytes, at + 688, "device");
    put(bytes, at + 688 + 128, {"\x01\x02\x03\x04\x05\x06\x07\x08", 8});
    put(bytes, at + 688 + 140, {"\x01\0\0\0\x02\0\0\0", 8});
    put(bytes, at + 688 + 160, {"\x01\x02\x03\x04", 4});
    put(bytes, at + 688 + 170, {"\xfe\xff", 2});
    put(bytes, at + 688 + 172, "Form A");
    put(bytes, at + 688 + 222, {"\x34\x12", 2});
    put(bytes, at + 688 + 240, {"\x01\0\0\0\x0f\x27\0\0", 8});
    put(bytes, at + 936, {"\x01\0\0\0\x42\0\0\0\x07\0\0\0\x03\0\0\0\x3c\0\0\0", 20});
    put(bytes, at + 960, {"\0\0\0\0\0\0\xd0\x3f\0\0\0\0\0\0\xe0\x3f", 16});
    put(bytes, at + 976, {"\0\0\0\0\0\0\xe8\x3f\0\0\0\0\0\0\xf8\xbf", 16});
    return bytes;
}

} // namespace

TEST(SetupFile, everyFieldIsReadFromItsPlaceOnAnyProcessor) {
    const auto records = all_records(bytes_by_hand());
    ASSERT_EQ(records.size(), 1u);
    const SetupRecord& record = records[0];
    EXPECT_EQ(record.in_use, smallest);
    EXPECT_STREQ(record.printer_id, "LASER1");
    EXPECT_STREQ(record.printer_name, "Laser on the first floor");
    EXPECT_STREQ(record.font_name, "Courier");
    EXPECT_EQ(record.setup_value, 0x01020304);
    EXPECT_EQ(record.font.point_size, 10);
    EXPECT_STREQ(record.font.style_name, "Bold");
    EXPECT_EQ(record.font.log_font.height, -13);
    EXPECT_EQ(record.font.log_font.weight, 700);
    EXPECT_EQ(record.font.log_font.italic, 1);
    EXPECT_EQ(record.font.log_font.underline, 2);
    EXPECT_EQ(record.font.log_font.strike_out, 3);
    EXPECT_EQ(record.font.log_font.pitch_and_family, 8);
    EXPECT_STREQ(record.font.log_font.face_name, "Courier New");
    EXPECT_EQ(std::string(record.reserved, 4), "resv");
    EXPECT_STREQ(record.devmode.device_name, "device");
    EXPECT_EQ(record.devmode.word_128, 0x0201);
    EXPECT_EQ(record.devmode.word_134, 0x0807);
    EXPECT_EQ(record.devmode.orientation, 1) << "landscape";
    EXPECT_EQ(record.devmode.paper_size, 2) << "Letter";
    EXPECT_EQ(record.devmode.word_160, 0x04030201);
    EXPECT_EQ(record.devmode.word_170, -2);
    EXPECT_STREQ(record.devmode.form_name, "Form A");
    EXPECT_EQ(record.devmode.word_222, 0x1234);
    EXPECT_EQ(record.devmode.from_page, 1);
    EXPECT_EQ(record.devmode.to_page, 9999);
    EXPECT_EQ(record.page.use_default_page_length, 1);
    EXPECT_EQ(record.page.page_length, 66);
    EXPECT_EQ(record.page.word_8, 7);
    EXPECT_EQ(record.page.first_line, 3);
    EXPECT_EQ(record.page.last_line, 60);
    EXPECT_EQ(record.margins.top, 0.25);
    EXPECT_EQ(record.margins.bottom, 0.5);
    EXPECT_EQ(record.margins.left, 0.75);
    EXPECT_EQ(record.margins.right, -1.5);
}

TEST(SetupFile, whatWasReadIsWrittenAsTheSameBytes) {
    const std::string bytes = bytes_by_hand();
    EXPECT_EQ(printman::setup_file_bytes(all_records(bytes), 0x0a0b0c0d), bytes);
}

TEST(SetupFile, isWrittenWithItsRecordsOneBehindTheOther) {
    const std::string bytes = setup_bytes(three_printers);
    EXPECT_EQ(bytes.size(), header_size + 3 * record_size);
    EXPECT_EQ(bytes.substr(0, header_size), std::string("\3\0\0\0\0\0\0\0", 8));
    EXPECT_EQ(setup_bytes({}), std::string(header_size, '\0'));
    const auto records = all_records(bytes);
    ASSERT_EQ(records.size(), 3u);
    for (size_t i = 0; i < 3; ++i)
        EXPECT_TRUE(same_bytes(records[i], three_printers[i])) << i;
}

TEST(SetupFile, anIdIsFoundByItsExactBytes) {
    const std::string bytes = setup_bytes(three_printers);
    for (const char* id : {"one", "two", "three"}) {
        const auto found = find_in(bytes, id);
        ASSERT_TRUE(found) << id;
        EXPECT_EQ(found->printer_name, "Printer " + std::string(id));
    }
    for (const char* id : {"", "One", "on", "one ", "threes", "four"})
        EXPECT_FALSE(find_in(bytes, id)) << id;
    const SetupBytes setup(bytes);
    EXPECT_FALSE(find_setup_record(setup.path(), nullptr));
}

TEST(SetupFile, ofTwoPrintersWithOneIdTheEarlierIsFound) {
    std::vector<SetupRecord> records{setup_record("a"), setup_record("same"), setup_record("same")};
    set_text(records[2].printer_name, "later");
    EXPECT_STREQ(find_in(setup_bytes(records), "same")->printer_name, "Printer same");
    records[1].in_use = 0;
    EXPECT_STREQ(find_in(setup_bytes(records), "same")->printer_name, "later");
}

TEST(SetupFile, anEmptySlotIsNeverFound) {
    std::vector<SetupRecord> records = three_printers;
    records[1].in_use = 0;
    EXPECT_FALSE(find_in(setup_bytes(records), "two"));
    EXPECT_EQ(all_records(setup_bytes(records)).size(), 3u);
    for (const int32_t in_use : {1, -1, 256, 1 << 24, largest, smallest}) {
        records[1].in_use = in_use;
        EXPECT_TRUE(find_in(setup_bytes(records), "two")) << in_use;
    }
}

TEST(SetupFile, aFileThatHoldsFewerPrintersThanItSaysEndsWithTheLast) {
    const std::string bytes = setup_bytes(three_printers).substr(0, header_size + 2 * record_size);
    EXPECT_EQ(all_records(bytes).size(), 2u);
    EXPECT_TRUE(find_in(bytes, "two"));
    EXPECT_FALSE(find_in(bytes, "three"));
    EXPECT_FALSE(find_in(bytes, ""));
}

TEST(SetupFile, whereverItIsCutWhatIsMissingIsZero) {
    const std::string whole = setup_bytes(three_printers);
    for (size_t size = 0; size <= whole.size(); ++size) {
        const std::string bytes = whole.substr(0, size);
        const size_t body = size > header_size ? size - header_size : 0;
        const auto records = all_records(bytes);
        ASSERT_EQ(records.size(), (body + record_size - 1) / record_size) << size;
        for (size_t i = 0; i < records.size(); ++i) {
            const std::string_view rest =
                std::string_view(bytes).substr(header_size + i * record_size);
            ASSERT_TRUE(same_bytes(records[i], record_of(rest.substr(0, record_size)))) << size;
        }
        // An id is there with its last byte.
        const size_t id_end = header_size + 2 * record_size + 4 + std::strlen("three");
        ASSERT_EQ(find_in(bytes, "three").has_value(), size >= id_end) << size;
    }
}

TEST(SetupFile, theCountIsBoundedByTheFile) {
    const std::string bytes = setup_bytes(three_printers);
    for (const int32_t count : {3, 4, 1000, 2'000'000'000, largest - 1, largest})
        EXPECT_EQ(all_records(with_count(bytes, count)).size(), 3u) << count;
    EXPECT_EQ(all_records(with_count(bytes, 2)).size(), 2u);
    EXPECT_FALSE(find_in(with_count(bytes, 2), "three"));
    for (const int32_t count : {0, -1, -3, smallest, smallest + 1}) {
        EXPECT_EQ(all_records(with_count(bytes, count)).size(), 0u) << count;
        EXPECT_FALSE(find_in(with_count(bytes, count), "one")) << count;
    }
}

TEST(SetupFile, behindTheLastRecordEveryCallAnswersAZeroRecord) {
    const SetupBytes setup(setup_bytes({setup_record("one")}));
    SetupFile file(setup.path());
    SetupRecord record;
    EXPECT_TRUE(file.next(record));
    for (int i = 0; i < 3; ++i) {
        record = setup_record("stale");
        EXPECT_FALSE(file.next(record));
        EXPECT_TRUE(same_bytes(record, SetupRecord{}));
    }
}

TEST(SetupFile, textsThatFillTheirFieldsEndWithinThem) {
    SetupRecord record = setup_record("full");
    set_text(record.printer_name, letters(128));
    set_text(record.font_name, letters(128));
    set_text(record.font.style_name, letters(132));
    set_text(record.font.log_font.face_name, letters(128));
    set_text(record.devmode.device_name, letters(128));
    set_text(record.devmode.form_name, letters(48));
    const auto found = find_in(setup_bytes({record}), "full");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->printer_name, std::string(127, 'x'));
    EXPECT_EQ(found->font_name, std::string(127, 'x'));
    EXPECT_EQ(found->font.style_name, std::string(131, 'x'));
    EXPECT_EQ(found->font.log_font.face_name, std::string(127, 'x'));
    EXPECT_EQ(found->devmode.device_name, std::string(127, 'x'));
    EXPECT_EQ(found->devmode.form_name, std::string(47, 'x'));
}

TEST(SetupFile, whatStandsBehindTheEndOfATextStays) {
    SetupRecord record = setup_record("one");
    record.printer_name[127] = 'r';
    record.font.style_name[131] = 's';
    record.devmode.form_name[47] = 'f';
    const auto found = find_in(setup_bytes({record}), "one");
    ASSERT_TRUE(found);
    EXPECT_TRUE(same_bytes(*found, record));
}

TEST(SetupFile, anIdThatFillsItsFieldIsKnownByAllBytesOrAllButTheLast) {
    const std::string bytes = setup_bytes({setup_record(letters(128))});
    EXPECT_TRUE(find_in(bytes, letters(128)));
    EXPECT_TRUE(find_in(bytes, std::string(127, 'x')));
    EXPECT_FALSE(find_in(bytes, std::string(126, 'x')));
    EXPECT_FALSE(find_in(bytes, std::string(128, 'x')));
    EXPECT_FALSE(find_in(bytes, letters(128) + "Printer"));
    EXPECT_EQ(find_in(bytes, letters(128))->printer_id, std::string(127, 'x'));

    const std::string longest = setup_bytes({setup_record(letters(127))});
    EXPECT_TRUE(find_in(longest, letters(127)));
    EXPECT_FALSE(find_in(longest, letters(126)));
    EXPECT_FALSE(find_in(longest, letters(127) + "z"));
}

TEST(SetupFile, numbersThatMakeNoSenseComeAsTheyAreStored) {
    SetupRecord record = setup_record("odd");
    record.font.point_size = -5;
    record.devmode.orientation = smallest;
    record.devmode.paper_size = largest;
    record.page = {-1, smallest, 0, largest, -1};
    record.margins = {std::numeric_limits<double>::quiet_NaN(),
                      std::numeric_limits<double>::infinity(),
                      -std::numeric_limits<double>::infinity(), -1e308};
    const auto found = find_in(setup_bytes({record}), "odd");
    ASSERT_TRUE(found);
    EXPECT_TRUE(same_bytes(*found, record));
    EXPECT_TRUE(std::isnan(found->margins.top));
}

TEST(SetupFile, withoutAByteThereIsNoFile) {
    const SetupBytes empty("");
    EXPECT_FALSE(SetupFile(empty.path()).is_open());
    const SetupBytes one_byte("\3");
    EXPECT_TRUE(SetupFile(one_byte.path()).is_open());
}

TEST(SetupFile, whatIsNoRegularFileIsRefusedWithoutWaiting) {
    char directory[] = "/tmp/setupfileXXXXXX";
    ASSERT_NE(mkdtemp(directory), nullptr);
    const std::string pipe = std::string(directory) + "/pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string missing = std::string(directory) + "/missing";
    for (const std::string& path :
         {pipe, std::string(directory), missing, std::string("/dev/zero"), std::string()}) {
        SetupFile file(path.c_str());
        SetupRecord record = setup_record("stale");
        EXPECT_FALSE(file.is_open()) << path;
        EXPECT_FALSE(file.next(record)) << path;
        EXPECT_FALSE(find_setup_record(path.c_str(), "one")) << path;
    }
    EXPECT_FALSE(SetupFile(nullptr).is_open());
    unlink(pipe.c_str());
    rmdir(directory);
}

TEST(SetupFile, isNotInheritedByOtherPrograms) {
    const SetupBytes setup(setup_bytes(three_printers));
    const int next_fd = dup(0);
    close(next_fd);
    const SetupFile file(setup.path());
    EXPECT_EQ(fcntl(next_fd, F_GETFD), FD_CLOEXEC);
}

TEST(TextField, aFieldIsCutAndItsCopyTerminated) {
    char field[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(printman::field_text(field), "abc");
    printman::terminate_field(field);
    EXPECT_STREQ(field, "abc");
    char buffer[8];
    std::memset(buffer, '#', sizeof buffer);
    printman::put_text(buffer, 4, "text");
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string("tex\0####", 8));
    printman::put_text(buffer, 0, "x");
    EXPECT_STREQ(buffer, "tex");
    printman::put_text(nullptr, 4, "x");
}
