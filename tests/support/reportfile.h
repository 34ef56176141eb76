#pragma once

#include "tests/support/scratch.h"

#include <printman/report/reportbuffer.h>

#include <gtest/gtest.h>

#include <string>

/// A report file with what reads it.
struct Report {
    Scratch scratch;
    printman::ReportBuffer buffer;
    printman::EscapeTable fields;

    explicit Report(std::string_view bytes) {
        EXPECT_TRUE(buffer.set_file_name(scratch.write(bytes)));
    }

    bool turn(int request) { return buffer.read_page(request, fields); }

    /// Line @p row of the page read last, up to its first empty cell.
    std::string line(int row) const {
        const size_t columns = static_cast<size_t>(buffer.geometry().columns);
        const std::string cells(buffer.cells().data() + columns * row, columns);
        return cells.substr(0, cells.find('\0'));
    }

    std::string read_whole(int request, size_t size) {
        std::string cells(size, 'x');
        return buffer.read_page(request, cells, fields) ? cells : "refused";
    }
};

inline std::string page(const std::string& lines, const std::string& geometry = "10,3") {
    return "#!?PAGETOP " + geometry + '\n' + lines + "#!?PAGEEND\n";
}

inline std::string zeros(size_t count) {
    return std::string(count, '\0');
}
