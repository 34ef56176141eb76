#include "tests/manager/printmanfixture.h"
#include "tests/printer/setuprecords.h"

#include <filesystem>
#include <limits>

namespace {

class PrintManPrinters : public PrintMan {
protected:
    PrintManPrinters() {
        testhost::set("PRTINI", scratch_.path().toLocal8Bit());
        write({setup_record("LASER1"), setup_record("LASER2")});
        testhost::set("STATION7", "LASER2");
    }

    void write(const std::vector<printman::SetupRecord>& records) { write(setup_bytes(records)); }
    void write(const std::string& bytes) {
        testsupport::write_file(QString::fromLocal8Bit(path("PRTSETUP.BIN")),
                                QByteArray::fromStdString(bytes));
    }

    /// How often this process has the setup file open.
    int open_files() const {
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            const auto target = std::filesystem::read_symlink(entry.path(), gone);
            count += target == path("PRTSETUP.BIN").toStdString() ? 1 : 0;
        }
        return count;
    }

    QStringList listed() {
        manager_.get_prt_id();
        return manager_.printer_ids();
    }
};

QStringList ids(std::initializer_list<const char*> names) {
    QStringList list;
    for (const char* name : names)
        list << QString::fromLatin1(name);
    return list;
}

/// What find_prt_data() fills, none of it zero beforehand.
struct Found {
    Found() { std::memset(this, '#', sizeof *this); }

    int find(CPrintMan& manager, const char* id) {
        return manager.find_prt_data(id, printer, paper, orientation, font, style, &use_default,
                                     &page, &first, &last, &top, &bottom, &left, &right, &points);
    }
    bool untouched() const { return bytes_of(*this) == bytes_of(Found()); }

    char printer[128];
    char paper[80];
    char orientation[128];
    char font[128];
    char style[128];
    int use_default;
    int page;
    int first;
    int last;
    double top;
    double bottom;
    double left;
    double right;
    int points;
};

struct Lines {
    int page = -7;
    int first = -7;
    int last = -7;

    bool operator==(const Lines&) const = default;
};

template <typename Record>
Record listed_printer(const char* id, int last_line) {
    Record record{};
    set_text(record.printer_id, id);
    record.last_line = last_line;
    return record;
}

} // namespace

TEST_F(PrintManPrinters, theHostsPrintersAreWalkedInTheirOrder) {
    WinPrtSetup record = listed_printer<WinPrtSetup>("a", 60);
    EXPECT_EQ(manager_.first_win_printer(&record), 0);
    manager_.set_numwin_printer(3);
    manager_.add_win_printer(&record);
    set_text(record.printer_id, "b");
    manager_.add_win_printer(&record);
    manager_.add_win_printer(nullptr);
    WinPrtSetup walked;
    EXPECT_EQ(manager_.first_win_printer(&walked), 1);
    EXPECT_STREQ(walked.printer_id, "a");
    EXPECT_EQ(manager_.next_win_printer(&walked), 1);
    EXPECT_STREQ(walked.printer_id, "b");
    EXPECT_EQ(manager_.next_win_printer(&walked), 1);
    EXPECT_STREQ(walked.printer_id, "");
    EXPECT_EQ(manager_.next_win_printer(&walked), 0);
    EXPECT_EQ(manager_.first_win_printer(nullptr), 0);
    EXPECT_FALSE(manager_.is_unix_print());
}

TEST_F(PrintManPrinters, theLocalPrintersAreAListOfTheirOwn) {
    EXPECT_FALSE(manager_.is_unix_print());
    manager_.set_numunix_printer(0);
    EXPECT_FALSE(manager_.is_unix_print());
    manager_.set_numunix_printer(1);
    EXPECT_TRUE(manager_.is_unix_print());
    const auto record = listed_printer<UnixPrtSetup>("lp", 60);
    manager_.add_unix_printer(&record);
    UnixPrtSetup walked;
    EXPECT_EQ(manager_.first_unix_printer(&walked), 1);
    EXPECT_EQ(bytes_of(walked), bytes_of(record));
    EXPECT_EQ(manager_.next_unix_printer(&walked), 0);
    EXPECT_EQ(manager_.next_unix_printer(nullptr), 0);
    WinPrtSetup other;
    EXPECT_EQ(manager_.first_win_printer(&other), 0);
}

TEST_F(PrintManPrinters, whatTheSetupFileSaysOfAPrinterIsCopiedOut) {
    Found found;
    EXPECT_EQ(found.find(manager_, "LASER2"), 1);
    EXPECT_STREQ(found.printer, "Printer LASER2");
    EXPECT_STREQ(found.paper, "8.5 x 11 inches, 216 x 279 mm");
    EXPECT_STREQ(found.orientation, "Landscape");
    EXPECT_STREQ(found.font, "Courier New 10");
    EXPECT_STREQ(found.style, "Bold Italic");
    EXPECT_EQ(found.use_default, 1);
    EXPECT_EQ(found.page, 66);
    EXPECT_EQ(found.first, 3);
    EXPECT_EQ(found.last, 60);
    EXPECT_EQ(found.top, 0.25);
    EXPECT_EQ(found.bottom, 0.5);
    EXPECT_EQ(found.left, 0.75);
    EXPECT_EQ(found.right, 1.5);
    EXPECT_EQ(found.points, 10);
}

TEST_F(PrintManPrinters, anUnknownPaperIsEmptyAndAnUnknownOrientationStays) {
    auto record = setup_record("odd");
    record.devmode.paper_size = 30;
    record.devmode.orientation = 2;
    set_text(record.font.style_name, std::string(132, 's'));
    write({record});
    Found found;
    EXPECT_EQ(found.find(manager_, "odd"), 1);
    EXPECT_STREQ(found.paper, "");
    EXPECT_EQ(std::string(found.orientation, 128), std::string(128, '#'));
    EXPECT_EQ(found.style, std::string(127, 's'));
}

TEST_F(PrintManPrinters, aPrinterThatIsNotFoundLeavesTheOutputs) {
    Found found;
    for (const char* id : {static_cast<const char*>(nullptr), "", "laser1"})
        EXPECT_EQ(found.find(manager_, id), 0);
    testhost::set("PRTINI", "/nowhere");
    EXPECT_EQ(found.find(manager_, "LASER1"), 0);
    EXPECT_TRUE(found.untouched());
}

TEST_F(PrintManPrinters, outputsMayBeNull) {
    EXPECT_EQ(manager_.find_prt_data("LASER1", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr),
              1);
    EXPECT_EQ(manager_.get_local_defpagelen("LASER1", nullptr, nullptr, nullptr), 1);
    const auto record = listed_printer<WinPrtSetup>("a", 60);
    manager_.set_numwin_printer(1);
    manager_.add_win_printer(&record);
    EXPECT_EQ(manager_.get_remote_defpagelen("a", nullptr, nullptr, nullptr), 1);
}

TEST_F(PrintManPrinters, theLocalPageLengthIsThatOfTheSetupFile) {
    auto record = setup_record("unset");
    record.page.use_default_page_length = 0;
    write({record, setup_record("set")});
    EXPECT_EQ(manager_.has_local_defpagelen("set"), 1);
    EXPECT_EQ(manager_.has_local_defpagelen("unset"), 0);
    Lines lines;
    EXPECT_EQ(manager_.get_local_defpagelen("unset", &lines.page, &lines.first, &lines.last), 1);
    EXPECT_EQ(lines, (Lines{66, 3, 60}));
    Lines stay;
    for (const char* id : {static_cast<const char*>(nullptr), "", "other"}) {
        EXPECT_EQ(manager_.has_local_defpagelen(id), 0);
        EXPECT_EQ(manager_.get_local_defpagelen(id, &stay.page, &stay.first, &stay.last), 0);
    }
    EXPECT_EQ(stay, Lines());
}

TEST_F(PrintManPrinters, theRemotePageLengthIsThatOfTheLists) {
    const auto host = listed_printer<WinPrtSetup>("host", 60);
    manager_.set_numwin_printer(1);
    manager_.add_win_printer(&host);
    Lines lines;
    EXPECT_EQ(manager_.has_remote_defpagelen("host"), 1);
    EXPECT_EQ(manager_.get_remote_defpagelen("host", &lines.page, &lines.first, &lines.last), 1);
    EXPECT_EQ(lines, (Lines{0, 0, 60}));

    const auto local = listed_printer<UnixPrtSetup>("lp", 0);
    manager_.set_numunix_printer(1);
    manager_.add_unix_printer(&local);
    EXPECT_EQ(manager_.has_remote_defpagelen("host"), 1) << "the host's list is asked all the same";
    Lines stay;
    for (const char* id : {static_cast<const char*>(nullptr), "", "host", "lp"})
        EXPECT_EQ(manager_.get_remote_defpagelen(id, &stay.page, &stay.first, &stay.last), 0);
    EXPECT_EQ(stay, Lines());
}

TEST_F(PrintManPrinters, idsOfPrintersInUseAreListedInFileOrder) {
    auto unused = setup_record("unused");
    unused.in_use = 0;
    write({setup_record("b"), unused, setup_record("a"), setup_record("b"), setup_record("")});
    EXPECT_TRUE(manager_.printer_ids().isEmpty());
    EXPECT_EQ(listed(), ids({"b", "a", "b", ""}));
    EXPECT_EQ(listed(), ids({"b", "a", "b", "", "b", "a", "b", ""})) << "they are appended";
}

TEST_F(PrintManPrinters, listedIdsAreLatin1AndEndWithinTheirField) {
    write({setup_record("B\xfcro"), setup_record(std::string(128, 'x'))});
    EXPECT_EQ(listed(), (QStringList{QStringLiteral("B\u00fcro"), QString(127, u'x')}));
    EXPECT_EQ(Found().find(manager_, q2cstr(manager_.printer_ids()[1])), 1);
}

TEST_F(PrintManPrinters, theListEndsWithTheFile) {
    const std::string bytes = setup_bytes({setup_record("a"), setup_record("b")});
    write(with_count(bytes, std::numeric_limits<int32_t>::max()));
    EXPECT_EQ(listed(), ids({"a", "b"}));
    write(with_count(bytes, -1));
    EXPECT_EQ(listed(), ids({"a", "b"})) << "nothing is added";
}

TEST_F(PrintManPrinters, atMostOneListedFileStaysOpen) {
    listed();
    EXPECT_EQ(open_files(), 1);
    for (int i = 0; i < 5; ++i)
        listed();
    EXPECT_EQ(open_files(), 1);
    write(with_count(setup_bytes({}), 0));
    listed();
    EXPECT_EQ(open_files(), 1);
    write(std::string());
    const QStringList before = manager_.printer_ids();
    EXPECT_EQ(listed(), before);
    EXPECT_EQ(open_files(), 0) << "an empty file";
    {
        write({setup_record("a")});
        CPrintMan other;
        other.get_prt_id();
        EXPECT_EQ(open_files(), 1);
    }
    EXPECT_EQ(open_files(), 0);
}

TEST_F(PrintManPrinters, withoutASetupFileThereAreNoIds) {
    testhost::set("PRTINI", "/nowhere");
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(PrintManPrinters, theStationsIdIsThatOfItsKey) {
    char buffer[20];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(manager_.get_prt_id(buffer, 10), 0) << "no key yet";
    EXPECT_EQ(buffer[0], '#');
    std::strcpy(manager_.prt_key, "STATION7");
    testhost::reset();
    testhost::set("PRTINI", scratch_.path().toLocal8Bit());
    testhost::set("STATION7", "LASER2");
    EXPECT_EQ(manager_.get_prt_id(buffer, 10), 6);
    EXPECT_STREQ(buffer, "LASER2");
    EXPECT_EQ(std::string(buffer + 6, 5), std::string("\0\0\0\0#", 5));
    EXPECT_EQ(testhost::calls().last(),
              QStringLiteral("GetPrivateProfileString(printer, STATION7, , ") + scratch_.path() +
                  QStringLiteral("/dlwprt.ini)"));
    EXPECT_EQ(manager_.get_prt_id(nullptr, 10), 0);
}

TEST_F(PrintManPrinters, aKeyThatFillsItsFieldEndsWithinIt) {
    std::memset(manager_.prt_key, 'k', sizeof manager_.prt_key);
    testhost::set(QByteArray(127, 'k'), "LASER1");
    char buffer[20];
    EXPECT_EQ(manager_.get_prt_id(buffer, sizeof buffer), 6);
    EXPECT_STREQ(buffer, "LASER1");
}

TEST_F(PrintManPrinters, theIdOfAnyKeyIsLookedUp) {
    char buffer[20];
    EXPECT_EQ(manager_.get_prt_id("STATION7", buffer, sizeof buffer), 6);
    EXPECT_STREQ(buffer, "LASER2");
    EXPECT_EQ(manager_.get_prt_id("STATION7", buffer, 4), 3);
    EXPECT_STREQ(buffer, "LAS");
    EXPECT_EQ(manager_.get_prt_id("OTHER", buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(manager_.get_prt_id("STATION7", nullptr, 20), 0);
    EXPECT_EQ(manager_.get_prt_id(nullptr, buffer, 20), 0);
    for (const int size : {0, -1, std::numeric_limits<int>::min()})
        EXPECT_EQ(manager_.get_prt_id("STATION7", buffer, size), 0);
}

TEST_F(PrintManPrinters, anIdFileWhosePathIsTooLongIsNotRead) {
    char buffer[20];
    const int longest = 255 - static_cast<int>(std::strlen("/dlwprt.ini"));
    testhost::set("PRTINI", QByteArray(longest, 'd'));
    EXPECT_EQ(manager_.get_prt_id("STATION7", buffer, sizeof buffer), 6);
    testhost::set("PRTINI", QByteArray(longest + 1, 'd'));
    EXPECT_EQ(manager_.get_prt_id("STATION7", buffer, sizeof buffer), 0);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '\0'));
}
