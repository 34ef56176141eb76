#include "tests/printer/setuprecords.h"
#include "tests/support/scratch.h"
#include "tests/support/testhost.h"

#include <printman/printer/prtsetup.h>

#include <gtest/gtest.h>

namespace {

/// A caller's outputs, none of them zero beforehand.
struct Outputs {
    Outputs() { std::memset(this, '#', sizeof *this); }

    int look_up(const std::string& file, const char* id) {
        return get_prt_data(QString::fromStdString(file), id, printer_name, font_name, &setup_value,
                            &devmode, &font, &page, &margins);
    }
    int look_up(const char* id) {
        return get_prt_data(id, printer_name, font_name, &setup_value, &devmode, &font, &page,
                            &margins);
    }
    bool untouched() const { return bytes_of(*this) == bytes_of(Outputs()); }

    char printer_name[128];
    char font_name[128];
    int setup_value;
    DLWDEVMODE devmode;
    FontInfo font;
    PageInfo page;
    MarginInfo margins;
};
static_assert(std::is_trivially_copyable_v<Outputs>);

class PrtSetup : public testing::Test {
protected:
    PrtSetup() {
        testhost::reset();
        testhost::set("PRTINI", QByteArray::fromStdString(scratch_.path("")).chopped(1));
        write({setup_record("LASER1"), setup_record("LASER2")});
    }
    ~PrtSetup() override { testhost::reset(); }

    void write(const std::vector<printman::SetupRecord>& records) {
        file_ = scratch_.write(setup_bytes(records), "PRTSETUP.BIN");
    }

    Scratch scratch_;
    std::string file_;
    Outputs outputs_;
};

} // namespace

TEST_F(PrtSetup, aPrinterIsFoundWithEverythingThatTheFileSays) {
    EXPECT_EQ(outputs_.look_up(file_, "LASER2"), 0);
    const printman::SetupRecord record = setup_record("LASER2");
    EXPECT_STREQ(outputs_.printer_name, "Printer LASER2");
    EXPECT_STREQ(outputs_.font_name, "Courier New 10");
    EXPECT_EQ(outputs_.setup_value, record.setup_value);
    EXPECT_EQ(bytes_of(outputs_.devmode), bytes_of(record.devmode));
    EXPECT_EQ(bytes_of(outputs_.font), bytes_of(record.font));
    EXPECT_EQ(bytes_of(outputs_.page), bytes_of(record.page));
    EXPECT_EQ(bytes_of(outputs_.margins), bytes_of(record.margins));
}

TEST_F(PrtSetup, onlyTheTextsAndTheirEndsAreWritten) {
    EXPECT_EQ(outputs_.look_up(file_, "LASER2"), 0);
    const size_t end = std::strlen("Printer LASER2") + 1;
    EXPECT_EQ(std::string(outputs_.printer_name + end, 128 - end), std::string(128 - end, '#'));
}

TEST_F(PrtSetup, withoutAFileNameItIsTheOneInTheDirectoryOfPrinters) {
    EXPECT_EQ(outputs_.look_up("LASER1"), 0);
    EXPECT_STREQ(outputs_.printer_name, "Printer LASER1");
    testhost::set("PRTINI", "/nowhere");
    EXPECT_EQ(Outputs().look_up("LASER1"), -1);
}

TEST_F(PrtSetup, whatIsNotFoundLeavesTheOutputs) {
    for (const char* id : {static_cast<const char*>(nullptr), "", "laser1", "LASER3"})
        EXPECT_EQ(outputs_.look_up(file_, id), -1);
    for (const std::string& file :
         {std::string(), scratch_.path("missing"), scratch_.path("."), std::string("/dev/zero"),
          scratch_.write("", "empty"), scratch_.write("\1", "short"), file_ + '\0'})
        EXPECT_EQ(outputs_.look_up(file, "LASER1"), -1) << file;
    EXPECT_TRUE(outputs_.untouched());
}

TEST_F(PrtSetup, aFileThatMayNotBeReadHasNoPrinters) {
    chmod(file_.c_str(), 0);
    const WithoutPrivileges nobody;
    EXPECT_EQ(outputs_.look_up(file_, "LASER1"), -1);
}

TEST_F(PrtSetup, anEmptyFontNameIsAnEmptyText) {
    printman::SetupRecord record = setup_record("plain");
    set_text(record.font_name, "");
    record.font_name[1] = 'x';
    write({record});
    EXPECT_EQ(outputs_.look_up(file_, "plain"), 0);
    EXPECT_STREQ(outputs_.font_name, "");
}

TEST_F(PrtSetup, textsThatFillTheirFieldsAreCutAndEnded) {
    printman::SetupRecord record = setup_record("full");
    set_text(record.printer_name, std::string(128, 'n'));
    set_text(record.font_name, std::string(128, 'f'));
    set_text(record.font.style_name, std::string(132, 's'));
    set_text(record.devmode.form_name, std::string(48, 'o'));
    write({record});
    EXPECT_EQ(outputs_.look_up(file_, "full"), 0);
    EXPECT_EQ(outputs_.printer_name, std::string(127, 'n'));
    EXPECT_EQ(outputs_.font_name, std::string(127, 'f'));
    EXPECT_EQ(outputs_.font.style_name, std::string(131, 's'));
    EXPECT_EQ(outputs_.devmode.form_name, std::string(47, 'o'));
}

TEST_F(PrtSetup, anyOutputMayBeNull) {
    const QString file = QString::fromStdString(file_);
    EXPECT_EQ(
        get_prt_data(file, "LASER1", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
        0);
    EXPECT_EQ(get_prt_data("LASER1", nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
              0);
}

TEST_F(PrtSetup, aChangedFileIsReadAnew) {
    EXPECT_EQ(outputs_.look_up(file_, "NEW"), -1);
    write({setup_record("NEW")});
    EXPECT_EQ(outputs_.look_up(file_, "NEW"), 0);
    EXPECT_EQ(outputs_.look_up(file_, "LASER1"), -1);
}
