#pragma once

#include <printman/stringitem.h>

#include <list>

namespace printman {

/// The current match: one of a list's records, or none. Records may be appended to the list; after
/// any was removed the cursor must be reset before it is used again.
class MatchCursor {
public:
    /// @param records outlives the cursor
    explicit MatchCursor(const std::list<StringItem>& records)
        : records_(records), at_(records.end()) {}

    /// The current match, or null.
    const StringItem* current() const { return at_ == records_.end() ? nullptr : &*at_; }

    void reset() { at_ = records_.end(); }

    /// Goes to the first record; null when there is none.
    const StringItem* first() {
        at_ = records_.begin();
        return current();
    }

    /// Goes to the next record; null after the last one, or without a current one.
    const StringItem* next() {
        if (at_ != records_.end())
            ++at_;
        return current();
    }

private:
    const std::list<StringItem>& records_;
    std::list<StringItem>::const_iterator at_;
};

} // namespace printman
