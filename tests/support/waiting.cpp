#include "tests/support/waiting.h"

#include "tests/support/tools.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWidget>

namespace testsupport {

namespace {

constexpr unsigned long between_looks = 2; // milliseconds

} // namespace

bool wait_for(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, static_cast<int>(hung_after.count()));
}

bool wait_until_active(QWidget& window) {
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window, static_cast<int>(hung_after.count()));
}

void let_timers_fire(std::chrono::milliseconds time) {
    // Timers fire in the order in which they run out, however late that is noticed; that of a
    // coarse one may be up to a twentieth later than it says.
    QEventLoop loop;
    QTimer::singleShot(2 * time, &loop, &QEventLoop::quit);
    loop.exec();
}

bool poll_until(const std::function<bool()>& condition) {
    const QDeadlineTimer limit(hung_after);
    while (!condition()) {
        if (limit.hasExpired())
            return false;
        QThread::msleep(between_looks);
    }
    return true;
}

bool process_ends(const QByteArray& id) {
    const QString status = QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(id.trimmed()));
    return poll_until([&status] {
        const QByteArray line = read_file(status);
        return line.isEmpty() || line.contains(") Z ");
    });
}

} // namespace testsupport
