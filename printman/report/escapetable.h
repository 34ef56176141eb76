#pragma once

#include <printman/report/marker.h>

#include <vector>

namespace printman {

/// The markers of the loaded page: the fields of each line, in the order in which they were read.
class EscapeTable {
public:
    /// Makes a new table of @p rows empty lines.
    void create(int rows);

    /// Frees the table; until the next create() nothing is added or found.
    void release();

    /// Removes all fields and keeps the table.
    void clear();

    int rows() const { return static_cast<int>(rows_.size()); }

    /// Appends @p field to the fields of line @p row; a row outside the table is ignored.
    void add(int row, const EscapeField& field);

    /// The fields of line @p row, none for a row outside the table.
    std::span<const EscapeField> row(int row) const;

    /// The field of line @p row that starts at the 1-based @p column.
    ///
    /// @param columns columns of the page; nothing is found at a @p column below 0 or not below
    ///                @p columns, so a field at the last column is never found
    /// @param second  skip the first such field and find the second
    /// @return null when there is none; valid until the line changes
    const EscapeField* find(int row, int column, int columns, bool second) const;

private:
    std::vector<std::vector<EscapeField>> rows_;
};

} // namespace printman
