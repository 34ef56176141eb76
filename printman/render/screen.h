#pragma once

#include <printman/printman_export.h>

#include <QPointer>
#include <QWidget>

class CPrintMan;

/// The widget that shows a report's page. It turns mouse and key events into signals, which it
/// connects to the owner's slots of the same names, and has the owner paint it.
///
/// When the owner is destroyed first, the widget stays blank and does nothing.
class PRINTMAN_EXPORT CScreen : public QWidget {
    Q_OBJECT

public:
    /// @param owner the manager whose page is shown; it is not owned
    CScreen(CPrintMan* owner, QWidget* parent, const char* name);
    ~CScreen() override;

signals:
    // Mouse positions are in logical pixels of the widget.
    void mouse_press(const QPoint& p);
    void mouse_release(const QPoint& p);
    void mouse_move(const QPoint& p);
    void search_text(); ///< Ctrl+F
    void copy_text();   ///< Ctrl+C
    void paste_text();  ///< Ctrl+V

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

    /// Handles the three keys above and drops all others without passing them on.
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPointer<CPrintMan> owner_;
};

/// An empty form of 600 x 480 pixels for hosts; the library itself does not use it.
class PRINTMAN_EXPORT ScreenViewBase : public QWidget {
    Q_OBJECT

public:
    explicit ScreenViewBase(QWidget* parent = nullptr, const char* name = nullptr,
                            Qt::WindowFlags flags = {});
    ~ScreenViewBase() override;

public slots:
    /// Sets the form's caption in the current language.
    virtual void languageChange();

protected:
    void changeEvent(QEvent* event) override;
};
