#pragma once

#include <printman/printer/textfield.h>

#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace printman {

/// A list of printer records that the host fills and the dialogs walk. One counter serves both
/// adding and walking: a walk also returns unfilled slots, as zeros, and a record added after a
/// walk goes where the walk ended. So the host should set exactly the capacity that it needs and
/// add all records before anything walks the list.
template <typename Record>
class PrinterList {
    static_assert(std::is_trivial_v<Record>);

public:
    /// The largest capacity; such a list takes less than 50 MB.
    static constexpr int max_records = 65536;

    /// Replaces the records by @p count zero-filled slots. The counter stays. Nothing changes when
    /// @p count is not 1 to max_records, or when memory is short.
    void set_capacity(int count) {
        if (count <= 0 || count > max_records)
            return;
        std::unique_ptr<Record[]> fresh(new (std::nothrow) Record[static_cast<size_t>(count)]());
        if (!fresh)
            return;
        slots_ = std::move(fresh);
        capacity_ = count;
    }

    int capacity() const { return capacity_; }

    /// Copies @p record to the slot at the counter; does nothing for null or when the list is full.
    void add(const Record* record) {
        if (!record || counter_ >= capacity_)
            return;
        std::memcpy(&slots_[static_cast<size_t>(counter_)], record, sizeof *record);
        ++counter_;
    }

    /// Starts a walk and copies the first slot to @p record.
    ///
    /// @return false for null or without slots; nothing changes then
    bool first(Record* record) {
        if (!record || capacity_ == 0)
            return false;
        counter_ = 0;
        return next(record);
    }

    /// Copies the next slot to @p record.
    ///
    /// @return false for null or after the last slot; nothing changes then
    bool next(Record* record) {
        if (!record || counter_ >= capacity_)
            return false;
        std::memcpy(record, &slots_[static_cast<size_t>(counter_)], sizeof *record);
        ++counter_;
        return true;
    }

    /// Walks to the first record whose printer_id is @p id and copies it to @p record.
    ///
    /// @return false if there is none; @p record is then unspecified
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
