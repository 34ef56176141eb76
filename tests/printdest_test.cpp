#include <printman/printdest.h>

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

TEST(PrintDest, aNewRecordIsAllZero) {
    const PrintDest record{};
    const std::vector<unsigned char> zeros(416);
    EXPECT_EQ(std::memcmp(&record, zeros.data(), zeros.size()), 0);
}

TEST(PrintDest, aCopyMovesAll416Bytes) {
    std::vector<unsigned char> bytes(416);
    for (size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(i * 7 + 1);
    PrintDest record;
    std::memcpy(&record, bytes.data(), bytes.size());
    PrintDest copy;
    std::memcpy(&copy, &record, sizeof copy);
    EXPECT_EQ(std::memcmp(&copy, bytes.data(), bytes.size()), 0);
}

TEST(PrintDest, theFieldsStandAtTheirPlaces) {
    std::vector<unsigned char> bytes(416);
    const int32_t dest = 3;
    const int32_t copies = 12;
    std::memcpy(bytes.data(), &dest, 4);
    bytes[4] = 1;
    std::memcpy(&bytes[5], "LASER", 6);
    std::memcpy(&bytes[136], &copies, 4);
    bytes[140] = 1;
    bytes[142] = 1;
    std::memcpy(&bytes[143], "/tmp/out.txt", 13);
    bytes[412] = 1;
    PrintDest record;
    std::memcpy(&record, bytes.data(), bytes.size());
    EXPECT_EQ(record.dest, 3);
    EXPECT_EQ(record.server_print, 1);
    EXPECT_STREQ(record.prt_id, "LASER");
    EXPECT_EQ(record.copies, 12);
    EXPECT_EQ(record.collate, 1);
    EXPECT_EQ(record.page_length, 0);
    EXPECT_EQ(record.sel_prt_font, 1);
    EXPECT_STREQ(record.path, "/tmp/out.txt");
    EXPECT_EQ(record.no_page_fmt, 1);
}
