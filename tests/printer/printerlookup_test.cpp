#include "tests/printer/setuprecords.h"
#include "tests/support/scratch.h"

#include <printman/printer/printerlookup.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace printman;

namespace {

class SetupLookup : public testing::Test {
protected:
    std::optional<PrinterData> find(const SetupRecord& record) {
        write({record});
        return find_printer_data(file_, "LASER1");
    }

    void write(const std::vector<SetupRecord>& records) {
        file_ = QString::fromStdString(scratch_.write(setup_bytes(records)));
    }

    Scratch scratch_;
    QString file_;
    SetupRecord record_ = setup_record("LASER1");
};

template <typename Record>
Record printer(const char* id, const PageLength& page) {
    Record record{};
    set_text(record.printer_id, id);
    record.page_length = page.page_length;
    record.first_line = page.first_line;
    record.last_line = page.last_line;
    return record;
}

template <typename Record>
void fill(PrinterList<Record>& list, std::vector<Record> records) {
    list.set_capacity(static_cast<int>(records.size()));
    for (const Record& record : records)
        list.add(&record);
}

class ListLookup : public testing::Test {
protected:
    ListLookup() {
        fill(host_printers_,
             {printer<WinPrtSetup>("none", {}), printer<WinPrtSetup>("last", {0, 0, 60}),
              printer<WinPrtSetup>("first", {0, 3, 0}), printer<WinPrtSetup>("length", {66, 0, 0}),
              printer<WinPrtSetup>("last", {1, 2, 3})});
    }

    std::optional<PageLength> remote(const char* id) {
        return remote_page_length(host_printers_, unix_printers_, id);
    }
    bool has_remote(const char* id) { return has_remote_page_length(host_printers_, id); }

    HostPrinters host_printers_;
    UnixPrinters unix_printers_;
};

} // namespace

TEST_F(SetupLookup, aPrinterIsDescribedInTextsAndNumbers) {
    const auto data = find(record_);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->printer_name, "Printer LASER1");
    EXPECT_EQ(data->paper_name, "8.5 x 11 inches, 216 x 279 mm");
    EXPECT_EQ(data->orientation_name, "Landscape");
    EXPECT_EQ(data->font_name, "Courier New 10");
    EXPECT_EQ(data->style_name, "Bold Italic");
    EXPECT_EQ(data->use_default_page_length, 1);
    EXPECT_EQ(data->page, (PageLength{66, 3, 60}));
    EXPECT_EQ(data->margins.top, 0.25);
    EXPECT_EQ(data->margins.bottom, 0.5);
    EXPECT_EQ(data->margins.left, 0.75);
    EXPECT_EQ(data->margins.right, 1.5);
    EXPECT_EQ(data->point_size, 10);
}

TEST_F(SetupLookup, onlyTwoOrientationsHaveNames) {
    record_.devmode.orientation = 0;
    EXPECT_EQ(find(record_)->orientation_name, "Portrait");
    for (const int orientation : {2, -1, 256}) {
        record_.devmode.orientation = orientation;
        EXPECT_EQ(find(record_)->orientation_name, std::nullopt);
    }
}

TEST_F(SetupLookup, thePaperIsThatOfTheLow16Bits) {
    record_.devmode.paper_size = 0x70000;
    EXPECT_EQ(find(record_)->paper_name, "210 x 297 mm, 8.26 x 11.7 inches");
    for (const int number : {30, -1, 0x8002, std::numeric_limits<int>::max()}) {
        record_.devmode.paper_size = number;
        EXPECT_EQ(find(record_)->paper_name, "") << number;
    }
}

TEST_F(SetupLookup, textsThatFillTheirFieldsAreCut) {
    set_text(record_.printer_name, std::string(128, 'n'));
    set_text(record_.font_name, std::string(128, 'f'));
    set_text(record_.font.style_name, std::string(132, 's'));
    const auto data = find(record_);
    EXPECT_EQ(data->printer_name, std::string(127, 'n'));
    EXPECT_EQ(data->font_name, std::string(127, 'f'));
    EXPECT_EQ(data->style_name, std::string(131, 's'));
}

TEST_F(SetupLookup, oddNumbersComeAsTheyAreStored) {
    record_.font.point_size = -3;
    record_.margins.left = std::numeric_limits<double>::quiet_NaN();
    const auto data = find(record_);
    EXPECT_EQ(data->point_size, -3);
    EXPECT_TRUE(std::isnan(data->margins.left));
}

TEST_F(SetupLookup, aPrinterThatIsNotThereHasNoData) {
    write({record_});
    EXPECT_FALSE(find_printer_data(file_, "LASER2"));
    EXPECT_FALSE(find_printer_data(file_, nullptr));
    EXPECT_FALSE(find_printer_data(QString(), "LASER1"));
}

TEST_F(SetupLookup, thePageLengthIsThereWhateverTheFlagSays) {
    for (const int flag : {0, 1, -1, 1 << 24}) {
        record_.page.use_default_page_length = flag;
        write({record_});
        EXPECT_EQ(has_local_page_length(file_, "LASER1"), flag != 0);
        EXPECT_EQ(local_page_length(file_, "LASER1"), (PageLength{66, 3, 60}));
    }
    record_.page = {};
    write({record_});
    EXPECT_EQ(local_page_length(file_, "LASER1"), PageLength());
}

TEST_F(SetupLookup, withoutAnIdThereIsNoPageLength) {
    SetupRecord nameless = setup_record("");
    write({nameless, record_});
    for (const char* id : {static_cast<const char*>(nullptr), "", "LASER2"}) {
        EXPECT_FALSE(has_local_page_length(file_, id));
        EXPECT_FALSE(local_page_length(file_, id));
    }
}

TEST_F(ListLookup, aPrinterHasAPageLengthWhenAnyOfItsNumbersIsSet) {
    EXPECT_TRUE(has_remote("last"));
    EXPECT_EQ(remote("last"), (PageLength{0, 0, 60})) << "the first of that id";
    EXPECT_EQ(remote("first"), (PageLength{0, 3, 0}));
    EXPECT_EQ(remote("length"), (PageLength{66, 0, 0}));
    EXPECT_FALSE(has_remote("none"));
    EXPECT_FALSE(remote("none"));
}

TEST_F(ListLookup, whatIsNotListedHasNone) {
    for (const char* id : {static_cast<const char*>(nullptr), "", "other", "Last"}) {
        EXPECT_FALSE(has_remote(id));
        EXPECT_FALSE(remote(id));
    }
}

TEST_F(ListLookup, withLocalPrintersOneQuestionAsksTheirListAndTheOtherDoesNot) {
    fill(unix_printers_,
         {printer<UnixPrtSetup>("lp", {72, 1, 70}), printer<UnixPrtSetup>("plain", {})});
    EXPECT_EQ(remote("lp"), (PageLength{72, 1, 70}));
    EXPECT_FALSE(has_remote("lp"));
    EXPECT_FALSE(remote("plain"));
    EXPECT_FALSE(remote("last"));
    EXPECT_TRUE(has_remote("last"));
}

TEST_F(ListLookup, roomForLocalPrintersIsEnough) {
    unix_printers_.set_capacity(1);
    EXPECT_FALSE(remote("last"));
}

TEST_F(ListLookup, askingMovesThePlaceInTheList) {
    EXPECT_TRUE(has_remote("last"));
    WinPrtSetup record;
    ASSERT_TRUE(host_printers_.next(&record));
    EXPECT_STREQ(record.printer_id, "first");
}
