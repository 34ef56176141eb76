#include "tests/printer/setuprecords.h"

#include <printman/printer/printerlist.h>
#include <printman/printer/prtsetup.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

template <typename Record>
Record printer(const char* id) {
    Record record;
    std::memset(&record, '#', sizeof record);
    std::strncpy(record.printer_id, id, sizeof record.printer_id);
    return record;
}

/// Both lists are of the one kind.
template <typename Record>
class PrinterList : public testing::Test {
protected:
    void add(const char* id) {
        const Record record = printer<Record>(id);
        list_.add(&record);
    }

    std::vector<std::string> walk() {
        std::vector<std::string> ids;
        Record record;
        for (bool more = list_.first(&record); more; more = list_.next(&record))
            ids.emplace_back(record.printer_id);
        return ids;
    }

    printman::PrinterList<Record> list_;
};

using Records = testing::Types<WinPrtSetup, UnixPrtSetup>;
TYPED_TEST_SUITE(PrinterList, Records);

using Ids = std::vector<std::string>;

} // namespace

TYPED_TEST(PrinterList, hasNoRoomAtFirst) {
    EXPECT_EQ(this->list_.capacity(), 0);
    this->add("a");
    TypeParam record;
    EXPECT_FALSE(this->list_.first(&record));
    EXPECT_FALSE(this->list_.next(&record));
}

TYPED_TEST(PrinterList, recordsAreCopiedWhole) {
    this->list_.set_capacity(1);
    this->add("a");
    TypeParam record;
    ASSERT_TRUE(this->list_.first(&record));
    const TypeParam expected = printer<TypeParam>("a");
    EXPECT_EQ(bytes_of(record), bytes_of(expected));
}

TYPED_TEST(PrinterList, aWalkDeliversTheUnfilledSlotsToo) {
    this->list_.set_capacity(3);
    this->add("a");
    this->add("b");
    EXPECT_EQ(this->walk(), (Ids{"a", "b", ""}));
    TypeParam record = printer<TypeParam>("stale");
    this->list_.first(&record);
    this->list_.next(&record);
    ASSERT_TRUE(this->list_.next(&record));
    EXPECT_EQ(bytes_of(record), std::string(sizeof record, '\0'));
    EXPECT_FALSE(this->list_.next(&record));
}

TYPED_TEST(PrinterList, takesNoMoreThanItHasRoomFor) {
    this->list_.set_capacity(2);
    for (const char* id : {"a", "b", "c"})
        this->add(id);
    this->list_.add(nullptr);
    EXPECT_EQ(this->walk(), (Ids{"a", "b"}));
}

TYPED_TEST(PrinterList, nullIsNotWalkedInto) {
    this->list_.set_capacity(2);
    this->add("a");
    EXPECT_FALSE(this->list_.first(nullptr));
    EXPECT_FALSE(this->list_.next(nullptr));
    this->add("b");
    EXPECT_EQ(this->walk(), (Ids{"a", "b"})) << "the place stayed";
}

TYPED_TEST(PrinterList, addingGoesOnWhereAWalkStopped) {
    this->list_.set_capacity(3);
    for (const char* id : {"a", "b", "c"})
        this->add(id);
    TypeParam record;
    this->list_.first(&record);
    this->add("d");
    EXPECT_EQ(this->walk(), (Ids{"a", "d", "c"}));
    this->add("e");
    EXPECT_EQ(this->walk(), (Ids{"a", "d", "c"})) << "the walk ended behind the last";
}

TYPED_TEST(PrinterList, newRoomIsEmptyAndThePlaceStays) {
    this->list_.set_capacity(2);
    this->add("a");
    this->list_.set_capacity(3);
    this->add("b");
    EXPECT_EQ(this->walk(), (Ids{"", "b", ""}));
}

TYPED_TEST(PrinterList, aPlaceBehindASmallerRoomIsItsEnd) {
    this->list_.set_capacity(5);
    for (const char* id : {"a", "b", "c", "d"})
        this->add(id);
    this->list_.set_capacity(2);
    TypeParam record;
    EXPECT_FALSE(this->list_.next(&record));
    this->add("e");
    EXPECT_EQ(this->walk(), (Ids{"", ""}));
}

TYPED_TEST(PrinterList, roomForNoneOrTooManyChangesNothing) {
    using List = printman::PrinterList<TypeParam>;
    this->list_.set_capacity(1);
    this->add("a");
    for (const int count : {0, -1, std::numeric_limits<int>::min(), List::max_records + 1,
                            std::numeric_limits<int>::max()}) {
        this->list_.set_capacity(count);
        EXPECT_EQ(this->walk(), Ids{"a"}) << count;
    }
    this->list_.set_capacity(List::max_records);
    EXPECT_EQ(this->list_.capacity(), List::max_records);
    EXPECT_EQ(this->walk().size(), static_cast<size_t>(List::max_records));
}

TYPED_TEST(PrinterList, theFirstPrinterOfAnIdIsFound) {
    this->list_.set_capacity(4);
    for (const char* id : {"a", "b", "b"})
        this->add(id);
    TypeParam record;
    EXPECT_TRUE(this->list_.find("b", record));
    EXPECT_STREQ(record.printer_id, "b");
    this->add("c");
    EXPECT_EQ(this->walk(), (Ids{"a", "b", "c", ""})) << "the walk stopped at the first";
    for (const char* id : {"B", "bb", "d"})
        EXPECT_FALSE(this->list_.find(id, record)) << id;
}

TYPED_TEST(PrinterList, anIdThatFillsItsFieldIsFound) {
    this->list_.set_capacity(1);
    TypeParam full;
    std::memset(&full, 'x', sizeof full);
    this->list_.add(&full);
    TypeParam record;
    const std::string id(sizeof full.printer_id, 'x');
    EXPECT_TRUE(this->list_.find(id, record));
    EXPECT_TRUE(this->list_.find(id.substr(1), record));
    EXPECT_FALSE(this->list_.find(id + 'x', record));
}
