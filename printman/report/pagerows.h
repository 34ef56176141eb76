#pragma once

#include <printman/report/escapetable.h>
#include <printman/stringitem.h>
#include <printman/toolkit/qvaluelist.h>

#include <span>
#include <vector>

namespace printman {

/// The loaded page as text items: one list per line, from left to right.
class PageRows {
public:
    /// Splits a page's cells into items: runs of text, which keep their blanks, and the trimmed
    /// contents of fields, which are placed by a marker.
    ///
    /// @param cells   columns x lines bytes of Latin-1 text, row by row; a zero byte ends a line
    /// @param columns cells per line, 1 or more
    /// @param lines   lines of the page
    /// @param fields  the page's markers
    void load(std::span<const char> cells, int columns, int lines, const EscapeTable& fields);

    /// Appends @p item to line @p row; a row outside the page is ignored.
    void add(int row, const StringItem& item);

    /// Frees all lines.
    void release();

    /// How often a page was loaded: shows whether the rows are still those that were painted.
    unsigned loads() const { return loads_; }

    int size() const { return static_cast<int>(rows_.size()); }

    /// The items of line @p row; an empty list for a row outside the page.
    const QValueList<StringItem>& row(int row) const;

    /// All lines, for painting, which stores in each item where it was drawn.
    std::span<QValueList<StringItem>> rows() { return rows_; }

private:
    class Loader;

    std::vector<QValueList<StringItem>> rows_;
    unsigned loads_ = 0;
};

} // namespace printman
