#include <printman/select/itemcutter.h>

#include <algorithm>

namespace printman {

namespace {

bool is_blank(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
}

} // namespace

QRect ItemCutter::leading(const StringItem& item, qsizetype length) const {
    return measure_.bounding_rect(item.drawn, Qt::AlignLeft | Qt::AlignVCenter,
                                  item.text.left(length));
}

QRect ItemCutter::trailing(const StringItem& item, qsizetype length) const {
    return measure_.bounding_rect(item.drawn, Qt::AlignRight | Qt::AlignVCenter,
                                  item.text.right(length));
}

bool ItemCutter::cut(const QRect& selection, const StringItem& item, StringItem& piece) const {
    if (selection.isNull() || item.drawn.isNull() || is_blank(item.text))
        return false;
    if (item.drawn.top() < selection.top() || item.drawn.bottom() > selection.bottom())
        return false;
    // Right edges are the first pixel beyond.
    const int from = selection.left();
    const int to = selection.right() + 1;
    const int item_from = item.drawn.left();
    const int item_to = item.drawn.right() + 1;
    if (from <= item_from && to >= item_to)
        piece = item;
    else if ((from >= item_from && to < item_to) || (from > item_from && to <= item_to))
        centre(item, from - item_from + 1, to - from, piece);
    else if (from <= item_from && to > item_from && to < item_to)
        left(item, to - item_from + 1, piece);
    else if (from > item_from && from < item_to && to >= item_to)
        right(item, item_to - from + 1, piece);
    else
        return false;
    return true;
}

bool ItemCutter::left(const StringItem& item, int width, StringItem& piece) const {
    for (qsizetype i = 2; i <= item.text.size(); ++i) {
        if (leading(item, i).width() <= width)
            continue;
        piece.text = item.text.left(i - 1);
        piece.align = item.align;
        piece.drawn = leading(item, i - 1);
        return true;
    }
    return false;
}

bool ItemCutter::right(const StringItem& item, int width, StringItem& piece) const {
    for (qsizetype i = 2; i <= item.text.size(); ++i) {
        if (trailing(item, i).width() <= width)
            continue;
        piece.text = item.text.right(i - 1);
        piece.align = item.align;
        piece.drawn = trailing(item, i - 1);
        return true;
    }
    return false;
}

void ItemCutter::centre(const StringItem& item, int start, int width, StringItem& piece) const {
    const qsizetype length = item.text.size();
    qsizetype first = 1;
    qsizetype last = length;
    QRect before;
    QRect upto;
    for (qsizetype i = 2; i <= length; ++i) {
        const QRect run = leading(item, i);
        if (run.width() >= start) {
            first = i;
            before = run;
            break;
        }
    }
    const qint64 end = qint64{start} + width;
    for (qsizetype i = 2; i <= length; ++i) {
        if (leading(item, i).width() > end) {
            last = i - 1;
            upto = leading(item, last);
            break;
        }
    }
    // A negative length means the rest.
    piece.text = item.text.mid(first, last < first ? -1 : last - first);
    piece.align = item.align;
    piece.drawn = QRect(QPoint(before.right() + 1, before.top()),
                        QPoint(before.left() + upto.width(), before.bottom()));
}

} // namespace printman
