#pragma once

#include <QRect>
#include <QString>

#include <cstdint>

/// One positioned run of text on a page; a value type, copied whole.
struct StringItem {
    QString spare;           ///< carried along by copies; nothing reads it
    QRect cell;              ///< column, line, width and height in text cells
    int16_t align = 2;       ///< 2 left, 3 right, 4 centred; any other value draws left
    QString text;            ///< what is drawn
    QRect drawn;             ///< the text's bounding rectangle in logical units, set by painting
    QString source_text;     ///< highlight records: the text of the item they were cut from
    QRect source_cell;       ///< highlight records: the cell of that item
    int32_t source_align{0}; ///< highlight records: its alignment code
};
