#pragma once

#include <printman/printman_export.h>

#include <QAbstractScrollArea>
#include <QList>
#include <QPoint>
#include <QSize>

/// A scrolling view of an area, the contents, on which widgets are placed. The contents extend from
/// the origin to the right-most and bottom-most edge of any widget, hidden ones included. They
/// follow when a widget is moved, resized or destroyed, and for a hidden widget when it is shown or
/// moved.
///
/// All positions are in logical pixels of the contents.
class PRINTMAN_EXPORT QScrollView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit QScrollView(QWidget* parent = nullptr, const char* name = nullptr);
    ~QScrollView() override;

    /// Places @p child at (@p x, @p y). The view's viewport becomes its parent and owns it.
    void addChild(QWidget* child, int x = 0, int y = 0);

    /// Moves a child to (@p x, @p y); a widget that is not a child is added.
    void moveChild(QWidget* child, int x, int y);

    /// Scrolls so that (@p x, @p y) is at the top left of the visible part, as far as possible.
    void setContentsPos(int x, int y);

    /// The position at the top left of the visible part.
    int contentsX() const;
    int contentsY() const;

    int contentsWidth() const { return contents_.width(); }
    int contentsHeight() const { return contents_.height(); }

    /// Scrolls as little as possible to bring (@p x, @p y) into view with @p xmargin pixels of the
    /// contents at its left and right and @p ymargin above and below it. If the view is too small
    /// for that, the position is centred.
    void ensureVisible(int x, int y, int xmargin = 50, int ymargin = 50);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    struct Child {
        QWidget* widget;
        QPoint at;
    };

    Child* find(const QObject* widget);
    void place(const Child& child) const;
    void update_contents();

    QList<Child> children_;
    QSize contents_{0, 0};
};
