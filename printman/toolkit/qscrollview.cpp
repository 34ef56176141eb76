#include <printman/toolkit/qscrollview.h>

#include <QEvent>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int line_step = 20;

/// Where the view must start, along one axis, to show @p at with @p margin around it.
///
/// @param from    where it starts now
/// @param visible how much of the contents it shows
int start_that_shows(qint64 at, qint64 margin, int from, int visible) {
    margin = std::clamp<qint64>(margin, 0, visible / 2);
    const qint64 last = at - margin;
    const qint64 first = at + margin - visible;
    constexpr qint64 limit = 1 << 29;
    return static_cast<int>(std::clamp(
        std::clamp<qint64>(from, std::min(first, last), std::max(first, last)), -limit, limit));
}

} // namespace

QScrollView::QScrollView(QWidget* parent, const char* name) : QAbstractScrollArea(parent) {
    setObjectName(QString::fromLatin1(name));
    horizontalScrollBar()->setSingleStep(line_step);
    verticalScrollBar()->setSingleStep(line_step);
    // Positions in the contents count from the left in every language.
    horizontalScrollBar()->setLayoutDirection(Qt::LeftToRight);
}

QScrollView::~QScrollView() {
    // Children are destroyed with the viewport and must not call back.
    for (const Child& child : children_) {
        child.widget->removeEventFilter(this);
        disconnect(child.widget, nullptr, this, nullptr);
    }
}

QScrollView::Child* QScrollView::find(const QObject* widget) {
    const auto at = std::find_if(children_.begin(), children_.end(),
                                 [widget](const Child& child) { return child.widget == widget; });
    return at == children_.end() ? nullptr : &*at;
}

void QScrollView::addChild(QWidget* child, int x, int y) {
    moveChild(child, x, y);
}

void QScrollView::moveChild(QWidget* child, int x, int y) {
    if (!child)
        return;
    Child* known = find(child);
    if (!known) {
        if (child->parentWidget() != viewport())
            child->setParent(viewport());
        child->installEventFilter(this);
        connect(child, &QObject::destroyed, this, [this](const QObject* gone) {
            children_.removeIf([gone](const Child& other) { return other.widget == gone; });
            update_contents();
        });
        children_.append(Child{child, {}});
        known = &children_.last();
    }
    known->at = QPoint(x, y);
    place(*known);
    update_contents();
}

void QScrollView::place(const Child& child) const {
    child.widget->move(child.at - QPoint(contentsX(), contentsY()));
}

void QScrollView::update_contents() {
    contents_ = QSize(0, 0);
    for (const Child& child : children_) {
        const QSize size = child.widget->size();
        contents_ =
            contents_.expandedTo({child.at.x() + size.width(), child.at.y() + size.height()});
    }
    QSize visible = viewport()->size();
    // Each bar that is shown may be needed only because of the other.
    const QSize most = maximumViewportSize();
    if (contents_.width() <= most.width() && contents_.height() <= most.height())
        visible = most;
    horizontalScrollBar()->setPageStep(visible.width());
    horizontalScrollBar()->setRange(0, contents_.width() - visible.width());
    verticalScrollBar()->setPageStep(visible.height());
    verticalScrollBar()->setRange(0, contents_.height() - visible.height());
}

void QScrollView::setContentsPos(int x, int y) {
    horizontalScrollBar()->setValue(x);
    verticalScrollBar()->setValue(y);
}

int QScrollView::contentsX() const {
    return horizontalScrollBar()->value();
}

int QScrollView::contentsY() const {
    return verticalScrollBar()->value();
}

void QScrollView::ensureVisible(int x, int y, int xmargin, int ymargin) {
    const QSize visible = viewport()->size();
    setContentsPos(start_that_shows(x, xmargin, contentsX(), visible.width()),
                   start_that_shows(y, ymargin, contentsY(), visible.height()));
}

bool QScrollView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && find(watched))
        update_contents();
    return QAbstractScrollArea::eventFilter(watched, event);
}

void QScrollView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    update_contents();
}

void QScrollView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    for (const Child& child : children_)
        place(child);
}
