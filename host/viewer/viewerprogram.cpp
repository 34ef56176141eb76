#include "host/viewer/viewerprogram.h"

#include "host/jobs/interrupt.h"
#include "host/viewer/viewerwindow.h"

#include <QApplication>
#include <QSocketNotifier>

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

/// Ends the event loop, and every dialog's, when the user interrupts the program.
class QuitOnInterrupt {
public:
    QuitOnInterrupt() {
        if (::pipe2(ends_.data(), O_NONBLOCK | O_CLOEXEC) != 0)
            return;
        notifier_ = std::make_unique<QSocketNotifier>(ends_[0], QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
            notifier_->setEnabled(false);
            QCoreApplication::exit(0);
        });
        wake_on_interrupt(ends_[1]);
    }
    ~QuitOnInterrupt() {
        wake_on_interrupt(-1);
        notifier_.reset();
        for (const int end : ends_)
            ::close(end);
    }
    QuitOnInterrupt(const QuitOnInterrupt&) = delete;
    QuitOnInterrupt& operator=(const QuitOnInterrupt&) = delete;

private:
    std::array<int, 2> ends_{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace

Outcome run_viewer(const QByteArray& report) {
    ViewerWindow window{ViewerState(default_state_directory())};
    Outcome opened = window.open(report);
    if (!opened.ok())
        return opened;
    const QuitOnInterrupt quit;
    window.show();
    if (!interrupted())
        QApplication::exec();
    // A window that was closed has kept its state.
    if (window.isVisible())
        window.keep_state();
    return Outcome::success();
}

} // namespace host
