#include <printman/select/geometry.h>

QRect merge_rect(const QRect& a, const QRect& b) {
    return {QPoint(a.right() + 1, a.top()), QPoint(b.left(), a.bottom())};
}
