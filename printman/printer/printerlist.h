#pragma once

#include <printman/printer/textfield.h>

#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace printman {

/// A list of printer records that the host fills and the dialogs walk. One counter serves adding
/// and walking: a walk delivers unfilled slots too, as zeroes, and what is added after a walk
/// stands where the walk ended. So the host sets exactly the capacity that it needs and adds all
/// its records before anything walks the list.
template <typename Record>
class PrinterList {
    static_assert(std::is_trivial_v<Record>);

public:
    /// More than this a list never holds; the largest takes less than 50 MB.
    static constexpr int most_records = 65536;

    /// Replaces the records by @p count zero-filled slots. The counter stays. Nothing changes when
    /// @p count is not 1 to most_records, or when memory is short.
    void set_capacity(int count) {
        if (count <= 0 || count > most_records)
            return;
        std::unique_ptr<Record[]> fresh(new (std::nothrow) Record[static_cast<size_t>(count)]());
        if (!fresh)
            return;
        slots_ = std::move(fresh);
        capacity_ = count;
    }

    int capacity() const { return capacity_; }

    /// Copies @p record whole to the counter's slot; does nothing for null, or behind the last one.
    void add(const Record* record) {
        if (!record || counter_ >= capacity_)
            return;
        std::memcpy(&slots_[static_cast<size_t>(counter_)], record, sizeof *record);
        ++counter_;
    }

    /// Starts a walk: false for null or without slots, and nothing changes.
    bool first(Record* record) {
        if (!record || capacity_ == 0)
            return false;
        counter_ = 0;
        return next(record);
    }

    /// False for null or behind the last slot, and nothing changes.
    bool next(Record* record) {
        if (!record || counter_ >= capacity_)
            return false;
        std::memcpy(record, &slots_[static_cast<size_t>(counter_)], sizeof *record);
        ++counter_;
        return true;
    }

    /// Walks up to the first record whose printer_id is @p id.
    ///
    /// @return false, and @p record is any, when there is none
    bool find(std::string_view id, Record& record) {
        for (bool more = first(&record); more; more = next(&record)) {
            if (field_is(record.printer_id, id))
                return true;
        }
        return false;
    }

private:
    std::unique_ptr<Record[]> slots_;
    int capacity_ = 0;
    int counter_ = 0;
};

} // namespace printman
