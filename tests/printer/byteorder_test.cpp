#include <printman/printer/byteorder.h>

#include <gtest/gtest.h>

#include <cstring>
#include <utility>
#include <vector>

using namespace printman;

namespace {

using Bytes = std::vector<unsigned char>;
using Places = std::vector<std::pair<size_t, size_t>>; // offset and size

constexpr bool little_endian = std::endian::native == std::endian::little;

template <typename Record>
Bytes bytes_of(const Record& record) {
    Bytes bytes(sizeof record);
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

/// Any eight bytes in a row differ from each other.
template <typename Record>
Record pattern() {
    Bytes bytes(sizeof(Record));
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(i % 251 + 1);
    Record record;
    std::memcpy(&record, bytes.data(), sizeof record);
    return record;
}

/// The pattern with the numbers at these places turned about, and nothing else.
template <typename Record>
Bytes reversed(const Places& places) {
    Bytes bytes = bytes_of(pattern<Record>());
    for (const auto& [offset, size] : places) {
        const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        std::reverse(at, at + static_cast<std::ptrdiff_t>(size));
    }
    return bytes;
}

template <typename Record, typename Convert>
Bytes after(Convert convert) {
    Record record = pattern<Record>();
    convert(record);
    return bytes_of(record);
}

using std::endian;

/// Checks what converts for a machine of either order, and what does for this one, on the places of
/// a record's numbers.
template <typename Record>
void expect_turned(const Places& places, void (*for_big)(Record&), void (*for_little)(Record&),
                   void (*for_this)(Record*)) {
    const Bytes turned = reversed<Record>(places);
    const Bytes as_it_was = bytes_of(pattern<Record>());
    EXPECT_NE(turned, as_it_was);
    EXPECT_EQ(after<Record>(for_big), turned);
    EXPECT_EQ(after<Record>(for_little), as_it_was);
    Record record = pattern<Record>();
    for_this(&record);
    EXPECT_EQ(bytes_of(record), little_endian ? as_it_was : turned);
}

Places moved(Places places, size_t offset) {
    for (auto& place : places)
        place.first += offset;
    return places;
}

Places joined(std::initializer_list<Places> lists) {
    Places all;
    for (const Places& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

const Places log_font{{0, 4}, {4, 4}, {8, 4}, {12, 4}, {16, 4}};
const Places font = joined({{{0, 4}}, moved(log_font, 136)});
const Places devmode{{128, 2}, {130, 2}, {132, 2}, {134, 2}, {136, 4}, {140, 4}, {144, 4},
                     {148, 2}, {150, 2}, {152, 2}, {154, 2}, {156, 2}, {158, 2}, {160, 4},
                     {164, 2}, {166, 2}, {168, 2}, {170, 2}, {220, 2}, {222, 2}, {224, 4},
                     {228, 4}, {232, 4}, {236, 4}, {240, 4}, {244, 4}};
const Places page{{0, 4}, {4, 4}, {8, 4}, {12, 4}, {16, 4}};
const Places margins{{0, 8}, {8, 8}, {16, 8}, {24, 8}};

} // namespace

TEST(ByteOrder, reversingTurnsTheBytesOfANumberAbout) {
    int32_t number = 0x01020304;
    reverse_bytes(number);
    EXPECT_EQ(number, 0x04030201);
    int16_t word = 0x0102;
    reverse_bytes(word);
    EXPECT_EQ(word, 0x0201);
    double real = 1.5;
    Bytes bytes = bytes_of(real);
    reverse_bytes(real);
    std::reverse(bytes.begin(), bytes.end());
    EXPECT_EQ(bytes_of(real), bytes);
}

TEST(ByteOrder, aLittleEndianMachineKeepsNumbersAndABigEndianOneTurnsThem) {
    expect_turned<int>({{0, 4}}, convert_numbers<endian::big>, convert_numbers<endian::little>,
                       swapint);
    expect_turned<short>({{0, 2}}, convert_numbers<endian::big>, convert_numbers<endian::little>,
                         swapshort);
    expect_turned<double>({{0, 8}}, convert_numbers<endian::big>, convert_numbers<endian::little>,
                          swapdouble);
}

TEST(ByteOrder, swappingReadsTheBytesOfAFileOnThisMachine) {
    const unsigned char bytes[] = {0x02, 0x01, 0x00, 0x80};
    int number = 0;
    std::memcpy(&number, bytes, 4);
    swapint(&number);
    EXPECT_EQ(number, static_cast<int>(0x80000102U));
    short word = 0;
    std::memcpy(&word, bytes, 2);
    swapshort(&word);
    EXPECT_EQ(word, 0x0102);
    const unsigned char half[] = {0, 0, 0, 0, 0, 0, 0xe0, 0x3f};
    double real = 0;
    std::memcpy(&real, half, 8);
    swapdouble(&real);
    EXPECT_EQ(real, 0.5);
}

TEST(ByteOrder, ofALogicalFontTheFiveNumbersAreConverted) {
    expect_turned<DLWLOGFONT>(log_font, convert_log_font<endian::big>,
                              convert_log_font<endian::little>, swaplogfont);
}

TEST(ByteOrder, ofAFontThePointSizeAndTheLogicalFontAreConverted) {
    expect_turned<FontInfo>(font, convert_font<endian::big>, convert_font<endian::little>,
                            swapfontinfo);
}

TEST(ByteOrder, ofADeviceModeEveryNumberIsConvertedAndNoText) {
    expect_turned<DLWDEVMODE>(devmode, convert_devmode<endian::big>,
                              convert_devmode<endian::little>, swapdevmode);
}

TEST(ByteOrder, ofAPageTheFiveNumbersAreConverted) {
    expect_turned<PageInfo>(page, convert_page<endian::big>, convert_page<endian::little>,
                            swappageinfo);
}

TEST(ByteOrder, ofTheMarginsAllFourAreConverted) {
    expect_turned<MarginInfo>(margins, convert_margins<endian::big>,
                              convert_margins<endian::little>, swapmargininfo);
}

TEST(ByteOrder, ofARecordAllPartsAreConvertedAndTheReservedWordIsNot) {
    const Places places = joined({{{0, 4}, {388, 4}},
                                  moved(font, 392),
                                  moved(devmode, 688),
                                  moved(page, 936),
                                  moved(margins, 960)});
    expect_turned<SetupRecord>(
        places, convert_record<endian::big>, convert_record<endian::little>,
        [](SetupRecord* record) { convert_record<endian::native>(*record); });
}

TEST(ByteOrder, convertingTwiceYieldsTheRecordAgain) {
    auto record = pattern<SetupRecord>();
    convert_record<endian::big>(record);
    convert_record<endian::big>(record);
    EXPECT_EQ(bytes_of(record), bytes_of(pattern<SetupRecord>()));
}

TEST(ByteOrder, nullIsPassedOver) {
    swapint(nullptr);
    swapshort(nullptr);
    swapdouble(nullptr);
    swaplogfont(nullptr);
    swapfontinfo(nullptr);
    swapdevmode(nullptr);
    swappageinfo(nullptr);
    swapmargininfo(nullptr);
}
