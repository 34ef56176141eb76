#pragma once

#include <printman/report/pagerows.h>

#include <string>
#include <string_view>
#include <vector>

/// One item as "x,y widthxheight align [text]".
inline std::string shown(const StringItem& item) {
    return std::to_string(item.cell.x()) + ',' + std::to_string(item.cell.y()) + ' ' +
           std::to_string(item.cell.width()) + 'x' + std::to_string(item.cell.height()) + ' ' +
           std::to_string(item.align) + " [" + item.text.toLatin1().toStdString() + ']';
}

inline std::vector<std::string> shown(const QValueList<StringItem>& items) {
    std::vector<std::string> texts;
    for (const StringItem& item : items)
        texts.push_back(shown(item));
    return texts;
}

/// A page of cells and markers.
struct Page {
    int columns;
    int lines;
    std::string cells = std::string(static_cast<size_t>(columns) * lines, '\0');
    printman::EscapeTable fields = {};

    Page(int columns_, int lines_) : columns(columns_), lines(lines_) { fields.create(lines); }

    Page& put(int line, std::string_view text, int column = 0) {
        cells.replace(static_cast<size_t>(line) * columns + column, text.size(), text);
        return *this;
    }

    Page& mark(int line, printman::EscapeField field) {
        fields.add(line, field);
        return *this;
    }

    printman::PageRows load() const {
        printman::PageRows rows;
        rows.load(cells, columns, lines, fields);
        return rows;
    }

    std::vector<std::string> items(int line = 0) const { return shown(load().row(line)); }
};
