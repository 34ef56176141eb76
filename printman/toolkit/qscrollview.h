#pragma once

#include <printman/printman_export.h>

#include <QAbstractScrollArea>
#include <QList>
#include <QPoint>
#include <QSize>

/// A scrolling view of an area, the contents, on which widgets stand. The contents reach from the
/// origin to the right-most and bottom-most edge of any widget, hidden ones included, and follow
/// when a widget is moved or resized or goes; of a hidden widget, when it is shown or moved.
///
/// All places are in logical pixels of the contents.
class PRINTMAN_EXPORT QScrollView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit QScrollView(QWidget* parent = nullptr, const char* name = nullptr);
    ~QScrollView() override;

    /// Puts @p child at (@p x, @p y). The view's viewport becomes its parent, and owns it.
    void addChild(QWidget* child, int x = 0, int y = 0);

    /// Moves a child to (@p x, @p y); a widget that is no child is added.
    void moveChild(QWidget* child, int x, int y);

    /// Scrolls so that (@p x, @p y) is at the top left of what is seen, as far as there is anything
    /// to scroll.
    void setContentsPos(int x, int y);

    /// What is at the top left of what is seen.
    int contentsX() const;
    int contentsY() const;

    int contentsWidth() const { return contents_.width(); }
    int contentsHeight() const { return contents_.height(); }

    /// Scrolls by as little as brings (@p x, @p y) into view with @p xmargin pixels of contents at
    /// its left and right and @p ymargin above and below it, or in the middle where the view is
    /// smaller than that.
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
