#include "bench/yardstick.h"

#include <array>
#include <cstdio>
#include <fstream>

namespace bench {

namespace {

constexpr std::array names = {"Invoice",
                              "Customer",
                              "Balance",
                              "Freight",
                              "Discount",
                              "Dept",
                              "\xdc"
                              "berf\xe4llig",
                              "Caf\xe9",
                              "M\xfcller",
                              "Gr\xf6\xdf"
                              "e"};

constexpr int field_width = 14;
constexpr int first_field = 44;

} // namespace

void Yardstick::add_line(std::string& report, int row) {
    char text[64];
    // Two names, then amounts in right-aligned fields with a marker each.
    std::snprintf(text, sizeof text, "%05u %-12.12s %-12.12s %04d", random_.next(100000),
                  names[random_.next(names.size())], names[random_.next(names.size())], row);
    std::string line = text;
    std::string cells = line;
    cells.resize(first_field, ' ');
    line.resize(first_field, ' ');
    for (int column = first_field; column + field_width < columns; column += field_width + 6) {
        char marker[32];
        std::snprintf(marker, sizeof marker, "#!?R%d,%d,%d;", column + 1, field_width, field_width);
        char amount[32];
        std::snprintf(amount, sizeof amount, "%14.2f", random_.next(100000000) / 100.0);
        line += marker + std::string(amount) + std::string(6, ' ');
        cells += std::string(amount) + std::string(6, ' ');
    }
    if (row % 2 == 0) {
        line += "#!?L125,6,6;CR " + std::string(3, static_cast<char>('A' + row % 26));
        cells += "CR " + std::string(3, static_cast<char>('A' + row % 26));
    }
    cells.erase(cells.find_last_not_of(' ') + 1);
    line.erase(line.find_last_not_of(' ') + 1);
    report += line + '\n';
    listing_ += cells + '\n';
}

std::string Yardstick::page() {
    std::string report = "#!?PAGETOP 132,66\n";
    listing_.clear();
    ++number_;
    for (int row = 0; row < lines; ++row)
        add_line(report, row);
    listing_ += '\f';
    return report + "#!?PAGEEND\n";
}

bool write_yardstick(int pages, const std::string& report, const std::string& listing) {
    Yardstick yardstick;
    std::ofstream report_file(report, std::ios::binary);
    std::ofstream listing_file;
    if (!listing.empty())
        listing_file.open(listing, std::ios::binary);
    for (int i = 0; i < pages; ++i) {
        report_file << yardstick.page();
        if (!listing.empty())
            listing_file << yardstick.listing();
    }
    return report_file.flush().good() && (listing.empty() || listing_file.flush().good());
}

} // namespace bench
