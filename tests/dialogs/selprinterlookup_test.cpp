#include "tests/dialogs/dialogwidgets.h"
#include "tests/dialogs/printerrecords.h"
#include "tests/support/scratch.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"

#include <printman/dialogs/selprinterdlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <sys/stat.h>

using printman::SetupRecord;
using testing::ElementsAre;
using testing::IsEmpty;

using testsupport::text;

namespace {

SetupRecord unused(SetupRecord record) {
    record.in_use = 0;
    return record;
}

/// A dialog over a setup file.
class LocalPrinters : public testing::Test {
protected:
    LocalPrinters() {
        testhost::reset();
        testhost::set("PRTINI", QByteArray::fromStdString(directory_.path("")));
    }
    ~LocalPrinters() override { testhost::reset(); }

    void write(const std::string& bytes) { file_ = directory_.write(bytes, "PRTSETUP.BIN"); }
    void write(const std::vector<SetupRecord>& records) { write(setup_bytes(records)); }

    /// Lists what is in the file, as a shown dialog does.
    std::vector<std::string> listed() {
        dialog_.show();
        return entries(dialog_.cbPrinterID);
    }

    /// What get_localprt_data() answers when every output counts.
    int look_up(const char* id) {
        std::string name(id);
        return dialog_.get_localprt_data(name.data(), name_, face_, &value_, &devmode_, &font_,
                                         &page_, &margins_);
    }

    Scratch directory_;
    std::string file_;
    SelPrinterDlg dialog_;
    char name_[128] = "name before";
    char face_[128] = "face before";
    unsigned int value_ = 5;
    DLWDEVMODE devmode_{};
    FontInfo font_{};
    PageInfo page_{};
    MarginInfo margins_{};
};

} // namespace

TEST_F(LocalPrinters, areListedInFileOrderWithoutTheEmptySlots) {
    write(
        {setup_record("b"), unused(setup_record("unused")), setup_record("a"), setup_record("b")});
    EXPECT_THAT(listed(), ElementsAre("b", "a", "b"));
    EXPECT_TRUE(dialog_.cbPrinterID->currentText().isEmpty());
    EXPECT_EQ(dialog_.load_printer_id(), 0);
    EXPECT_EQ(dialog_.cbPrinterID->count(), 6);
}

TEST_F(LocalPrinters, anIdMayFillItsFieldAndHoldAnyLetter) {
    SetupRecord full = setup_record(std::string(128, 'x'));
    write({full, setup_record("Caf\xe9")});
    EXPECT_THAT(listed(), ElementsAre(std::string(127, 'x'), "Caf\xc3\xa9"));
    pick(dialog_.cbPrinterID, 1);
    EXPECT_EQ(dialog_.printer_id, QString::fromLatin1("Caf\xe9"));
    pick(dialog_.cbPrinterID, 0);
    EXPECT_EQ(dialog_.printer_id, QString(127, u'x'));
}

TEST_F(LocalPrinters, aPickedOneIsShown) {
    write({setup_record("one"), setup_record("two")});
    EXPECT_THAT(listed(), ElementsAre("one", "two"));
    pick(dialog_.cbPrinterID, 1);
    EXPECT_THAT(
        texts_of(dialog_, {"txtPrinterName", "txtPaperSize", "txtOrientation", "txtFontName",
                           "txtStyle", "txtSize"}),
        ElementsAre("Printer two", "Letter", "Landscape", "Courier New 10", "Bold Italic", "10"));
    EXPECT_THAT(texts_of(dialog_, {"txtPageLength", "txtFirstLine", "txtLastLine", "txtTop",
                                   "txtBottom", "txtLeft", "txtRight"}),
                ElementsAre("66", "3", "60", "0.25", "0.50", "0.75", "1.50"));
    EXPECT_EQ(dialog_.printer_id, text("two"));
}

TEST_F(LocalPrinters, anIdThatIsNotFoundKeepsThePrinterThatIsShown) {
    write({setup_record("one"), unused(setup_record("gone"))});
    dialog_.show();
    pick(dialog_.cbPrinterID, 0);
    for (const char* id : {"gone", "ONE", "one ", "on", ""}) {
        dialog_.cbPrinterID_activated(text(id));
        EXPECT_EQ(dialog_.printer_id, text("one")) << id;
        EXPECT_EQ(dialog_.txtPrinterName->text(), text("Printer one")) << id;
    }
}

TEST_F(LocalPrinters, anIdThatNoRecordCanHaveIsNotFound) {
    write({setup_record("?"), setup_record(std::string(127, 'y')), setup_record("nul")});
    WinPrtSetup record;
    for (const QString& id : {QString(QChar(0x20ac)), QString(128, u'y'), QString(5000, u'y'),
                              QString::fromLatin1("nul\0more", 8)})
        EXPECT_EQ(dialog_.get_prt_data(id, &record), 0) << id.toStdString();
    EXPECT_EQ(dialog_.get_prt_data(text("?"), &record), 1);
    EXPECT_EQ(dialog_.get_prt_data(text("?"), nullptr), 0);
}

TEST_F(LocalPrinters, theOrientationHasTwoNames) {
    std::vector<SetupRecord> records;
    for (const int orientation : {0, 1, 2, -1}) {
        records.push_back(setup_record(std::to_string(orientation)));
        records.back().devmode.orientation = orientation;
    }
    write(records);
    dialog_.show();
    for (const auto& [id, name] : {std::pair("1", "Landscape"), std::pair("2", ""),
                                   std::pair("0", "Portrait"), std::pair("-1", "")}) {
        dialog_.cbPrinterID_activated(text(id));
        EXPECT_EQ(dialog_.txtOrientation->text(), text(name)) << id;
    }
}

TEST_F(LocalPrinters, withoutADefaultPageLengthOnlyTheMarginsAreShown) {
    SetupRecord record = setup_record("one");
    record.page.use_default_page_length = 0;
    write({record});
    dialog_.show();
    pick(dialog_.cbPrinterID, 0);
    EXPECT_THAT(texts_of(dialog_, {"txtPageLength", "txtFirstLine", "txtLastLine", "txtBottom"}),
                ElementsAre("0", "0", "0", "0.50"));
}

TEST_F(LocalPrinters, aRecordIsFilledWhole) {
    SetupRecord record = setup_record("one");
    set_text(record.devmode.form_name, std::string(48, 'f'));
    set_text(record.printer_name, std::string(128, 'n'));
    set_text(record.font.style_name, std::string(132, 's'));
    write({record});
    WinPrtSetup found;
    std::memset(&found, 'x', sizeof found);
    ASSERT_EQ(dialog_.get_prt_data(text("one"), &found), 1);
    EXPECT_STREQ(found.printer_id, "one");
    EXPECT_EQ(found.printer_name, std::string(127, 'n'));
    EXPECT_EQ(found.paper_name, std::string(47, 'f'));
    EXPECT_EQ(found.style_name, std::string(127, 's'));
    EXPECT_EQ(found.word_676, 0);
    std::memset(&found, 'x', sizeof found);
    ASSERT_EQ(dialog_.get_prt_data(text("two"), &found), 0);
    EXPECT_EQ(bytes_of(found), std::string(sizeof found, '\0'));
}

TEST_F(LocalPrinters, aPaperWithoutNameIsEmpty) {
    SetupRecord record = setup_record("one");
    set_text(record.devmode.form_name, "");
    write({setup_record("lettered"), record});
    dialog_.show();
    dialog_.cbPrinterID_activated(text("lettered"));
    dialog_.cbPrinterID_activated(text("one"));
    EXPECT_TRUE(dialog_.txtPaperSize->text().isEmpty());
}

TEST_F(LocalPrinters, absurdNumbersAreShownAsTheyAre) {
    SetupRecord record = setup_record("one");
    record.font.point_size = std::numeric_limits<int>::min();
    record.margins = {std::numeric_limits<double>::infinity(), std::nan(""), -0.005, 1e300};
    write({record});
    dialog_.show();
    pick(dialog_.cbPrinterID, 0);
    EXPECT_THAT(texts_of(dialog_, {"txtSize", "txtTop", "txtBottom", "txtLeft"}),
                ElementsAre("-2147483648", "inf", "nan", "-0.01"));
    EXPECT_EQ(dialog_.txtRight->text().size(), 304);
}

TEST_F(LocalPrinters, theLookupFillsItsOutputs) {
    write({setup_record("one"), setup_record("two")});
    ASSERT_EQ(look_up("two"), 0);
    EXPECT_STREQ(name_, "Printer two");
    EXPECT_STREQ(face_, "Courier New 10");
    EXPECT_EQ(value_, 0x01020304U);
    const SetupRecord expected = setup_record("two");
    EXPECT_EQ(bytes_of(font_), bytes_of(expected.font));
    EXPECT_EQ(bytes_of(devmode_), bytes_of(expected.devmode));
    EXPECT_EQ(bytes_of(page_), bytes_of(expected.page));
    EXPECT_EQ(bytes_of(margins_), bytes_of(expected.margins));
}

TEST_F(LocalPrinters, theLookupTakesNullForWhatNobodyWants) {
    write({setup_record("one")});
    char id[] = "one";
    EXPECT_EQ(dialog_.get_localprt_data(id, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                        nullptr),
              0);
    EXPECT_EQ(dialog_.get_localprt_data(nullptr, name_, face_, &value_, &devmode_, &font_, &page_,
                                        &margins_),
              -1);
}

TEST_F(LocalPrinters, theFontNameStaysWhereARecordHasNone) {
    SetupRecord record = setup_record("one");
    set_text(record.font_name, "");
    write({record});
    ASSERT_EQ(look_up("one"), 0);
    EXPECT_STREQ(face_, "face before");
    EXPECT_STREQ(name_, "Printer one");
}

TEST_F(LocalPrinters, whatIsNotFoundLeavesTheOutputs) {
    write({unused(setup_record("one"))});
    EXPECT_EQ(look_up("one"), -1);
    EXPECT_EQ(look_up("two"), -1);
    EXPECT_STREQ(name_, "name before");
    EXPECT_STREQ(face_, "face before");
    EXPECT_EQ(value_, 5U);
}

TEST_F(LocalPrinters, aFileThatCannotBeOpenedHasNone) {
    EXPECT_EQ(dialog_.get_localprt_id(), -1);
    EXPECT_EQ(look_up("one"), -1);
    std::filesystem::create_directory(directory_.path("PRTSETUP.BIN"));
    EXPECT_EQ(dialog_.get_localprt_id(), -1);
    std::filesystem::remove(directory_.path("PRTSETUP.BIN"));
    ASSERT_EQ(::mkfifo(directory_.path("PRTSETUP.BIN").c_str(), 0600), 0);
    EXPECT_EQ(dialog_.get_localprt_id(), -1);
    EXPECT_EQ(look_up("one"), -1);
    EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(LocalPrinters, aFileThatMayNotBeWrittenHasNone) {
    write({setup_record("one")});
    ASSERT_EQ(::chmod(directory_.path("").c_str(), 0755), 0);
    ASSERT_EQ(::chmod(file_.c_str(), 0444), 0);
    {
        const WithoutPrivileges other;
        EXPECT_EQ(dialog_.get_localprt_id(), -1);
        EXPECT_EQ(look_up("one"), -1);
    }
    EXPECT_EQ(dialog_.cbPrinterID->count(), 0);
    ASSERT_EQ(::chmod(file_.c_str(), 0666), 0);
    {
        const WithoutPrivileges other;
        EXPECT_EQ(dialog_.get_localprt_id(), 0);
    }
    EXPECT_THAT(entries(dialog_.cbPrinterID), ElementsAre("one"));
}

TEST_F(LocalPrinters, thereAreNoneWithoutAPath) {
    const std::string home = std::filesystem::current_path();
    testhost::set("PRTINI", "");
    std::filesystem::create_directory(directory_.path("gone"));
    std::filesystem::current_path(directory_.path("gone"));
    std::filesystem::remove(directory_.path("gone"));
    EXPECT_EQ(dialog_.get_localprt_id(), -1);
    EXPECT_EQ(look_up("one"), -1);
    std::filesystem::current_path(home);
}

TEST_F(LocalPrinters, aFileWithoutAWholeHeaderFails) {
    for (const size_t size : {0U, 4U, 7U}) {
        write(setup_bytes({setup_record("one")}).substr(0, size));
        EXPECT_EQ(dialog_.get_localprt_id(), -1) << size;
        EXPECT_EQ(look_up("one"), -1) << size;
    }
    write(std::vector<SetupRecord>());
    EXPECT_EQ(dialog_.get_localprt_id(), 0);
    EXPECT_EQ(look_up("one"), -1);
    EXPECT_EQ(dialog_.cbPrinterID->count(), 0);
}

TEST_F(LocalPrinters, aCountBeyondTheFileEndsWithTheFile) {
    const std::string bytes = setup_bytes({setup_record("one"), setup_record("two")});
    for (const int32_t count : {3, std::numeric_limits<int32_t>::max()}) {
        write(with_count(bytes, count));
        EXPECT_EQ(dialog_.get_localprt_id(), 0);
        EXPECT_EQ(look_up("three"), -1);
        EXPECT_EQ(look_up("two"), 0);
    }
    EXPECT_THAT(entries(dialog_.cbPrinterID), ElementsAre("one", "two", "one", "two"));
    write(with_count(bytes, -1));
    EXPECT_EQ(dialog_.get_localprt_id(), 0);
    EXPECT_EQ(look_up("one"), -1);
    EXPECT_EQ(dialog_.cbPrinterID->count(), 4);
}

TEST_F(LocalPrinters, ofARecordThatIsCutTheRestIsZero) {
    write(setup_bytes({setup_record("one")}).substr(0, 8 + 300));
    dialog_.show();
    pick(dialog_.cbPrinterID, 0);
    EXPECT_EQ(dialog_.printer_id, text("one"));
    EXPECT_THAT(texts_of(dialog_, {"txtPrinterName", "txtOrientation", "txtSize", "txtTop"}),
                ElementsAre("Printer one", "Portrait", "0", "0.00"));
}

TEST(HostPrinters, withoutAManagerThereAreNone) {
    SelPrinterDlg dialog;
    dialog.server_printers = true;
    EXPECT_EQ(dialog.get_remoteprt_id(), 0);
    WinPrtSetup record;
    std::memset(&record, 'x', sizeof record);
    EXPECT_EQ(dialog.get_prt_data(text("one"), &record), 0);
    EXPECT_EQ(bytes_of(record), std::string(sizeof record, 'x'));
    dialog.show();
    EXPECT_EQ(dialog.cbPrinterID->count(), 0);
    dialog.cbPrinterID_activated(text("one"));
    EXPECT_TRUE(dialog.printer_id.isEmpty());
}

TEST(HostPrinters, areWalkedSlotBySlot) {
    CPrintMan manager;
    set_host_printers(manager,
                      {host_printer("b"), host_printer("a"), host_printer("b"), WinPrtSetup{}});
    SelPrinterDlg dialog;
    dialog.printman = &manager;
    dialog.server_printers = true;
    EXPECT_EQ(dialog.load_printer_id(), 0);
    EXPECT_THAT(entries(dialog.cbPrinterID), ElementsAre("b", "a", "b", ""));
    WinPrtSetup record;
    EXPECT_EQ(dialog.get_prt_data(text("A"), &record), 0);
    EXPECT_EQ(dialog.get_prt_data(text("b"), nullptr), 0);
}

TEST(HostPrinters, areCopiedWhole) {
    CPrintMan manager;
    WinPrtSetup first = host_printer("same");
    first.word_676 = 77;
    WinPrtSetup second = host_printer("same");
    second.point_size = 99;
    set_host_printers(manager, {host_printer("other"), first, second});
    SelPrinterDlg dialog;
    dialog.printman = &manager;
    dialog.server_printers = true;
    WinPrtSetup record;
    EXPECT_EQ(dialog.get_prt_data(text("same"), &record), 1);
    EXPECT_EQ(bytes_of(record), bytes_of(first));
}

TEST(HostPrinters, textsThatFillTheirFieldsEndInThem) {
    CPrintMan manager;
    WinPrtSetup full;
    std::memset(&full, 'x', sizeof full);
    set_host_printers(manager, {full});
    SelPrinterDlg dialog;
    dialog.printman = &manager;
    dialog.server_printers = true;
    dialog.show();
    pick(dialog.cbPrinterID, 0);
    EXPECT_EQ(dialog.printer_id, QString(127, u'x'));
    EXPECT_EQ(dialog.txtOrientation->text(), QString(29, u'x'));
    EXPECT_EQ(dialog.txtStyle->text(), QString(127, u'x'));
}
