#pragma once

#include <printman/report/marker.h>

#include <vector>

namespace printman {

/// The markers of the loaded page: for every line its fields, in the order in which they were met.
class EscapeTable {
public:
    /// Makes the table anew with @p rows empty lines.
    void create(int rows);

    /// Gives the table back; until the next create() it takes and finds nothing.
    void release();

    /// Forgets every line's fields and keeps the table.
    void clear();

    int rows() const { return static_cast<int>(rows_.size()); }

    /// Appends @p field to the fields of line @p row; a row outside the table is ignored.
    void add(int row, const EscapeField& field);

    /// The fields of line @p row, none for a row outside the table.
    std::span<const EscapeField> row(int row) const;

    /// The field of line @p row that starts at the 1-based @p column.
    ///
    /// @param columns columns of the page; a @p column below 0 or not below it finds nothing, so a
    ///                field at the last column is never found
    /// @param second  skip the first such field and find the second
    /// @return null when there is none; valid until the line changes
    const EscapeField* find(int row, int column, int columns, bool second) const;

private:
    std::vector<std::vector<EscapeField>> rows_;
};

} // namespace printman
