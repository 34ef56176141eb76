#include <printman/report/escapetable.h>

#include <cstddef>

namespace printman {

void EscapeTable::create(int rows) {
    rows_.clear();
    rows_.resize(rows > 0 ? rows : 0);
}

void EscapeTable::release() {
    rows_.clear();
    rows_.shrink_to_fit();
}

void EscapeTable::clear() {
    for (std::vector<EscapeField>& row : rows_)
        row.clear();
}

void EscapeTable::add(int row, const EscapeField& field) {
    if (row >= 0 && row < rows())
        rows_[row].push_back(field);
}

std::span<const EscapeField> EscapeTable::row(int row) const {
    if (row < 0 || row >= rows())
        return {};
    return rows_[row];
}

const EscapeField* EscapeTable::find(int row, int column, int columns, bool second) const {
    if (column < 0 || column >= columns)
        return nullptr;
    for (const EscapeField& field : this->row(row)) {
        if (field.start != column)
            continue;
        if (!second)
            return &field;
        second = false;
    }
    return nullptr;
}

} // namespace printman
