#pragma once

#include <cstdint>
#include <string>

namespace bench {

/// A deterministic pseudo-random sequence, the same on every machine.
class Sequence {
public:
    uint32_t next(uint32_t bound) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<uint32_t>(state_ >> 33) % bound;
    }

private:
    uint64_t state_ = 20010704;
};

/// The report that everything is measured on: pages of 132 x 66 with about 360 items each, names,
/// right-aligned amounts in fields, and text.
class Yardstick {
public:
    static constexpr int columns = 132;
    static constexpr int lines = 66;

    /// The next page as report text, delimiters included.
    std::string page();

    /// The same page as a plain listing, ended by a form feed.
    const std::string& listing() const { return listing_; }

private:
    void add_line(std::string& report, int row);

    Sequence random_;
    int number_ = 0;
    std::string listing_;
};

/// Writes @p pages pages to @p report and, unless it is empty, the listing to @p listing.
///
/// @return false when a file cannot be written
bool write_yardstick(int pages, const std::string& report, const std::string& listing);

} // namespace bench
