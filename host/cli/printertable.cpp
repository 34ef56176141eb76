#include "host/cli/printertable.h"

#include "host/cli/console.h"

#include <algorithm>

namespace host {

QByteArray aligned_table(const QList<QList<QByteArray>>& rows, const QList<qsizetype>& numeric) {
    QList<qsizetype> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (qsizetype column = 0; column < row.size(); ++column)
            widths[column] =
                std::max(widths[column], qsizetype{display_width(one_line(row[column]))});
    }
    QByteArray text;
    for (const auto& row : rows) {
        QByteArray line;
        for (qsizetype column = 0; column < row.size(); ++column) {
            const QByteArray cell = one_line(row[column]);
            const QByteArray blanks(widths[column] - display_width(cell), ' ');
            line += numeric.contains(column) ? blanks + cell : cell + blanks;
            line += "  ";
        }
        while (line.endsWith(' '))
            line.chop(1);
        text += line + '\n';
    }
    return text;
}

} // namespace host
