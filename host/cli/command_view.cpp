#include "host/cli/command.h"
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
class InterruptsEndLoop {
public:
    InterruptsEndLoop() {
        if (::pipe2(ends_.data(), O_NONBLOCK | O_CLOEXEC) != 0)
            return;
        notifier_ = std::make_unique<QSocketNotifier>(ends_[0], QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
            notifier_->setEnabled(false);
            QCoreApplication::exit(0);
        });
        wake_on_interrupt(ends_[1]);
    }
    ~InterruptsEndLoop() {
        wake_on_interrupt(-1);
        notifier_.reset();
        for (const int end : ends_)
            ::close(end);
    }
    InterruptsEndLoop(const InterruptsEndLoop&) = delete;
    InterruptsEndLoop& operator=(const InterruptsEndLoop&) = delete;

private:
    std::array<int, 2> ends_{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier_;
};

Outcome run_view(const Arguments& arguments) {
    ViewerWindow window{ViewerState(default_state_directory())};
    Outcome opened = window.open(arguments.operand(0));
    if (!opened.ok())
        return opened;
    const InterruptsEndLoop ends;
    window.show();
    if (!interrupted())
        QApplication::exec();
    // A window that was closed has kept its state.
    if (window.isVisible())
        window.keep_state();
    return Outcome::success();
}

} // namespace

const Command view_command{
    .name = "view",
    .operands = {"REPORT"},
    .summary = "show a report in a window",
    .about = "Shows REPORT in a window, one page at a time: zoom, selection with the mouse,\n"
             "search, copying, and saving as text or PDF. F1 lists the keys. It needs a\n"
             "display.",
    .options = {},
    .examples = "printman view aging.rpt",
    .run = run_view,
    .on_display = true,
};

} // namespace host
