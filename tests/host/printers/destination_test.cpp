#include "host/printers/destination.h"
#include "host/settings/settings.h"
#include "tests/host/program.h"
#include "tests/support/tools.h"

#include <QSysInfo>

#include <cstring>

namespace {

class Destination : public testing::Test {
protected:
    void write(const QByteArray& lines) const {
        testsupport::write_file(file(), "[destination]\n" + lines);
    }

    QString file() const { return directory_.filePath(QStringLiteral("dlwmenu.ini")); }

    PrintDest read() const { return host::read_destination(settings_, "LASER"); }

    QTemporaryDir directory_;
    host::Settings settings_{QFile::encodeName(directory_.path())};
};

QByteArray bytes_of(const PrintDest& record) {
    return {reinterpret_cast<const char*>(&record), sizeof record};
}

bool same(const PrintDest& a, const PrintDest& b) {
    return bytes_of(a) == bytes_of(b);
}

PrintDest first_record() {
    PrintDest record{};
    record.dest = 1;
    std::strcpy(record.prt_id, "LASER");
    record.copies = 1;
    record.collate = 1;
    return record;
}

PrintDest full_record() {
    PrintDest record{};
    record.dest = 2;
    record.server_print = 1;
    std::strcpy(record.prt_id, " ID 50% \xe9");
    record.copies = 99;
    record.page_length = 1;
    record.sel_prt_font = 1;
    std::strcpy(record.path, "/tmp/a\nb; #\t\xff\x01.pdf ");
    record.no_page_fmt = 1;
    return record;
}

} // namespace

TEST_F(Destination, theFirstRecordGoesToTheScreenWithTheStationsPrinter) {
    EXPECT_TRUE(same(read(), first_record()));
}

TEST_F(Destination, whatIsKeptComesBackToTheByte) {
    ASSERT_TRUE(host::keep_destination(settings_, full_record()));
    EXPECT_TRUE(same(read(), full_record()));
    ASSERT_TRUE(host::keep_destination(settings_, first_record()));
    EXPECT_TRUE(same(read(), first_record()));
}

TEST_F(Destination, itIsKeptInWordsAndTheRestOfTheFileStays) {
    testsupport::write_file(file(), "; mine\n[env]\nTMPDIR=/tmp\n");
    PrintDest record = first_record();
    record.dest = 3;
    std::strcpy(record.path, "/home/me/out.txt");
    ASSERT_TRUE(host::keep_destination(settings_, record));
    EXPECT_EQ(testsupport::read_file(file()),
              "; mine\n[env]\nTMPDIR=/tmp\n[destination]\nDEST=file\nSERVER_PRINT=no\n"
              "PRT_ID=LASER\nCOPIES=1\nCOLLATE=yes\nPAGE_LENGTH=no\nSEL_PRT_FONT=no\n"
              "PATH=/home/me/out.txt\nNO_PAGE_FMT=no\n");
}

TEST_F(Destination, aPrinterThatWasClearedStaysCleared) {
    write("PRT_ID=\n");
    EXPECT_STREQ(read().prt_id, "");
}

TEST_F(Destination, whatMakesNoSenseIsAsInTheFirstRecord) {
    write("DEST=nowhere\nSERVER_PRINT=1\nCOPIES=0\nCOLLATE=\nPRT_ID=" + QByteArray(131, 'p') +
          "\nPATH=" + QByteArray(100000, '/') + "\nSEL_PRT_FONT=\xff\nNO_PAGE_FMT=-\n");
    EXPECT_TRUE(same(read(), first_record()));
    write("DEST=\nCOPIES=100\nPATH=a%00b\nPRT_ID=%00\n");
    EXPECT_TRUE(same(read(), first_record()));
    write("DEST=2\nCOPIES=99999999999999999999\nCOLLATE=maybe\n");
    EXPECT_TRUE(same(read(), first_record()));
    testsupport::write_file(file(), QByteArray(5000, '\0'));
    EXPECT_TRUE(same(read(), first_record()));
}

TEST_F(Destination, textsFillTheirFieldsAndNoMore) {
    write("PRT_ID=" + QByteArray(130, 'p') + "\nPATH=" + QByteArray(268, '/') + "\n");
    EXPECT_EQ(std::strlen(read().prt_id), 130U);
    EXPECT_EQ(std::strlen(read().path), 268U);
}

TEST_F(Destination, aRecordWithoutTerminatorsIsKeptWithinItsFields) {
    PrintDest record{};
    std::memset(&record, 'x', sizeof record);
    ASSERT_TRUE(host::keep_destination(settings_, record));
    EXPECT_EQ(host::printer_of(record), QByteArray(131, 'x'));
    EXPECT_EQ(host::path_of(record), QByteArray(269, 'x'));
    EXPECT_EQ(read().dest, 1);
    EXPECT_STREQ(read().path, "");
}

TEST_F(Destination, theEnvironmentDoesNotSayWhereAReportGoes) {
    const testsupport::EnvironmentGuard destination("DEST", "file");
    EXPECT_EQ(read().dest, 1);
    EXPECT_STREQ(read().path, "");
}

TEST_F(Destination, theStationIsTheHostUnlessASettingNamesIt) {
    const testsupport::EnvironmentGuard none("STATION", "");
    EXPECT_EQ(host::station_key(settings_), QFile::encodeName(QSysInfo::machineHostName()));
    testsupport::write_file(file(), "[env]\nSTATION = till 3\n");
    EXPECT_EQ(host::station_key(settings_), "till 3");
    const testsupport::EnvironmentGuard named("STATION", "till 4");
    EXPECT_EQ(host::station_key(settings_), "till 4");
}
