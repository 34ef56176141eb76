#include "tests/support/desktop.h"

#include "tests/support/tools.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <array>
#include <cstdlib>

namespace testsupport {

namespace {

constexpr int settle_milliseconds = 30;

void xdotool(const QStringList& arguments) {
    const ToolResult result = run(QStringLiteral("xdotool"), arguments);
    if (result.status != 0) {
        std::fprintf(stderr, "xdotool failed: %s\n", result.err.constData());
        std::abort();
    }
    QTest::qWait(settle_milliseconds);
}

} // namespace

Desktop::Desktop() {
    // The server chooses a number that is free and says which, and ends with its last client.
    server_ = ::popen("exec Xvfb -displayfd 1 -screen 0 1600x1200x24 -nolisten tcp -terminate "
                      "2>/dev/null",
                      "r");
    std::array<char, 16> number{};
    if (!server_ || !std::fgets(number.data(), number.size(), server_)) {
        std::fprintf(stderr, "Xvfb does not start; the Debian package xvfb has it\n");
        std::exit(1);
    }
    qputenv("DISPLAY", ':' + QByteArray(number.data()).trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    // A session bus would be started for it, and not given back.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

Desktop::~Desktop() {
    ::pclose(server_);
}

namespace input {

void move(const QWidget& widget, QPoint at) {
    const QPoint global = widget.mapToGlobal(at) * widget.devicePixelRatioF();
    xdotool(
        {QStringLiteral("mousemove"), QString::number(global.x()), QString::number(global.y())});
}

void press(int button) {
    xdotool({QStringLiteral("mousedown"), QString::number(button)});
}

void release(int button) {
    xdotool({QStringLiteral("mouseup"), QString::number(button)});
}

void click(const QWidget& widget) {
    move(widget, widget.rect().center());
    press();
    release();
}

void wheel(int notches, const QString& modifier) {
    if (!modifier.isEmpty())
        xdotool({QStringLiteral("keydown"), modifier});
    const QString button = QString::number(notches > 0 ? 5 : 4);
    for (int i = 0; i < std::abs(notches); ++i)
        xdotool({QStringLiteral("click"), button});
    if (!modifier.isEmpty())
        xdotool({QStringLiteral("keyup"), modifier});
}

void key(const QString& name) {
    xdotool({QStringLiteral("key"), QStringLiteral("--clearmodifiers"), name});
}

void type(const QString& text) {
    xdotool({QStringLiteral("type"), text});
}

bool activate(QWidget& window) {
    if (!QTest::qWaitForWindowExposed(&window))
        return false;
    xdotool({QStringLiteral("windowfocus"), QString::number(window.winId())});
    return QTest::qWaitForWindowActive(&window);
}

} // namespace input

} // namespace testsupport
