#pragma once

#include <QPoint>
#include <QString>

#include <cstdio>

class QWidget;

namespace testsupport {

/// A display of its own, an X server without a screen that anyone sees, for as long as it lives and
/// the program has a window system connection.
class Desktop {
public:
    /// Starts the server and names it in DISPLAY; the program ends with a message when it cannot.
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

private:
    std::FILE* server_;
};

/// Mouse and keyboard of the display, driven from outside the program: events come through the
/// window system as those of a user do. Each call returns when the events have been handled, and
/// so has whatever the program asked of the window system before it.
namespace input {

/// Handles everything that has happened on the display until now.
void settle();

/// Moves the mouse to @p at of @p widget.
void move(const QWidget& widget, QPoint at);

/// Presses and releases the mouse button @p button (1 left, 2 middle, 3 right).
void press(int button = 1);
void release(int button = 1);

/// Clicks on the middle of @p widget.
void click(const QWidget& widget);

/// Turns the wheel by @p notches, down when positive, while @p modifier ("ctrl", say) is down.
void wheel(int notches, const QString& modifier = {});

/// Presses and releases keys by their names: "ctrl+f", "Escape", "Page_Down".
void key(const QString& name);

/// Types a text.
void type(const QString& text);

/// Gives a window the keyboard, as a window manager would.
///
/// @return whether it has it
bool activate(QWidget& window);

} // namespace input

} // namespace testsupport
