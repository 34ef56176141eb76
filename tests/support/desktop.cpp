#include "tests/support/desktop.h"

#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include <array>
#include <cstdlib>
#include <xcb/xcb.h>

namespace testsupport {

namespace {

/// Sees the server's news of a window's properties.
class PropertyNews : public QAbstractNativeEventFilter {
public:
    explicit PropertyNews(WId window) : window_(window) { qApp->installNativeEventFilter(this); }
    ~PropertyNews() override { qApp->removeNativeEventFilter(this); }
    PropertyNews(const PropertyNews&) = delete;
    PropertyNews& operator=(const PropertyNews&) = delete;

    bool has_come() const { return has_come_; }

    bool nativeEventFilter(const QByteArray& /*type*/, void* message,
                           qintptr* /*result*/) override {
        const auto& news = *static_cast<const xcb_property_notify_event_t*>(message);
        constexpr int sent_by_program = 0x80;
        has_come_ = has_come_ || ((news.response_type & ~sent_by_program) == XCB_PROPERTY_NOTIFY &&
                                  news.window == window_);
        return false;
    }

private:
    WId window_;
    bool has_come_ = false;
};

/// Runs xdotool. When it ends the server has done what it asked for, as its last question to the
/// server has been answered.
void xdotool(const QStringList& arguments) {
    const ToolResult result = run(QStringLiteral("xdotool"), arguments);
    if (result.status != 0) {
        std::fprintf(stderr, "xdotool failed: %s\n", result.err.constData());
        std::abort();
    }
    input::settle();
}

} // namespace

Desktop::Desktop() {
    // The server chooses a number that is free and says which, and ends with its last client. A key
    // that a slow machine is late to release would be typed again and again.
    server_ = ::popen("exec Xvfb -displayfd 1 -screen 0 1600x1200x24 -nolisten tcp -terminate -r "
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

void settle() {
    // What the server tells comes in the order in which it happened: after its news of a window
    // that is made now there is nothing earlier to come.
    QWindow last;
    last.create();
    const PropertyNews news(last.winId());
    if (!wait_for([&news] { return news.has_come(); })) {
        std::fprintf(stderr, "the display does not answer\n");
        std::abort();
    }
    QCoreApplication::processEvents();
}

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
    const int limit = static_cast<int>(hung_after.count());
    if (!QTest::qWaitForWindowExposed(&window, limit))
        return false;
    xdotool({QStringLiteral("windowfocus"), QString::number(window.winId())});
    return QTest::qWaitForWindowActive(&window, limit);
}

} // namespace input

} // namespace testsupport
