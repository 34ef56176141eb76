#include <printman/render/pageunits.h>
#include <printman/select/dragarea.h>

#include <algorithm>
#include <cstdlib>

namespace printman {

namespace {

constexpr qint64 limit = 1 << 29;

/// A rectangle between inclusive corners, clamped so that its size does not overflow.
QRect between(qint64 left, qint64 top, qint64 right, qint64 bottom) {
    const auto cut = [](qint64 value) {
        return static_cast<int>(std::clamp(value, -limit, limit));
    };
    return {QPoint(cut(left), cut(top)), QPoint(cut(right), cut(bottom))};
}

} // namespace

std::array<QRect, 3> drag_area(QPoint from, QPoint to, int margin, const PageUnits& units,
                               int columns) {
    const qint64 cell_width = units.char_width();
    const qint64 cell_height = units.line_height();
    const QSize view = units.viewport();
    if (cell_width < 1 || cell_height < 1 || view.isEmpty())
        return {};
    const qint64 window_width = units.window().width();
    const qint64 window_height = units.window().height();
    const qint64 left = (std::min(from.x(), to.x()) - qint64{margin}) * window_width / view.width();
    const qint64 top =
        (std::min(from.y(), to.y()) - qint64{margin}) * window_height / view.height();
    const qint64 width = window_width * (std::abs(qint64{to.x()} - from.x()) + 1) / view.width();
    const qint64 height = window_height * (std::abs(qint64{to.y()} - from.y()) + 1) / view.height();

    const qint64 first_column = left / cell_width;
    const qint64 first_row = top / cell_height;
    const qint64 further_rows = height / cell_height;
    const qint64 last_row = first_row + further_rows;
    const qint64 end_column = width / cell_width + first_column + 1;

    const qint64 first_top = cell_height * first_row;
    const qint64 first_bottom = first_top + cell_height - 1;
    if (further_rows == 0)
        return {between(cell_width * first_column, first_top, cell_width * (end_column + 1) - 1,
                        first_bottom)};
    const QRect first = between(cell_width * first_column, first_top,
                                cell_width * (qint64{columns} + 1) - 1, first_bottom);
    const qint64 last_top = cell_height * last_row;
    const QRect last =
        between(0, last_top, cell_width * end_column - 1, last_top + cell_height - 1);
    QRect middle;
    if (further_rows >= 2)
        middle = between(0, first_bottom + 1, cell_width * columns - 1, last_top - 1);
    return {first, middle, last};
}

} // namespace printman
