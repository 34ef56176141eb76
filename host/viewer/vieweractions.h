#pragma once

#include <QString>

#include <vector>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;
class QWidget;

namespace host {

/// The actions of the viewer's window; the library handles further keys and the mouse by itself.
/// The window owns the actions, connects them, and decides when they are enabled.
struct ViewerActions {
    /// Makes the actions with their texts, icons and keys.
    explicit ViewerActions(QMainWindow& window);

    /// Fills the window's menu bar.
    ///
    /// @param shown the actions that show and hide parts of the window
    void add_menus(QMainWindow& window, const std::vector<QAction*>& shown);

    /// Fills a tool bar, with the two boxes in their places.
    void add_tools(QToolBar& bar, QWidget* page_box, QWidget* zoom_box) const;

    QAction* open;
    QAction* reload;
    QAction* save_page;
    QAction* save_report;
    QAction* export_pdf;
    QAction* print_page;
    QAction* print_report;
    QAction* destination;
    QAction* quit;
    QAction* copy;
    QAction* copy_report;
    QAction* find;
    QAction* zoom_in;
    QAction* zoom_out;
    QAction* zoom_usual;
    QAction* fit;
    QAction* colours;
    QAction* first;
    QAction* previous;
    QAction* next;
    QAction* last;
    QAction* go_to;
    QAction* help;
    QMenu* recent;
};

/// A key, or a use of the mouse, and what it does, for the user.
struct KeyText {
    QString key;
    QString what;
};

/// All keys of the window and what the mouse does in it.
std::vector<KeyText> key_texts(const ViewerActions& actions);

} // namespace host
