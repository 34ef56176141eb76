#include "host/viewer/windowwatch.h"

#include "host/jobs/interrupt.h"
#include "host/viewer/progressdialog.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace host {

namespace {

constexpr qint64 event_interval = 40; // milliseconds

} // namespace

WindowWatch::WindowWatch(QWidget* window, const QString& activity)
    : dialog_(std::make_unique<ProgressDialog>(window, activity)) {
    clock_.start();
}

WindowWatch::~WindowWatch() = default;

bool WindowWatch::pages_done(int done, int total) {
    if (clock_.elapsed() < next_)
        return !stopped();
    dialog_->show_pages(done, total);
    return process_events();
}

bool WindowWatch::tool_works() {
    dialog_->show_busy();
    return process_events();
}

bool WindowWatch::waits() {
    dialog_->show_waiting();
    return process_events();
}

bool WindowWatch::process_events() {
    if (clock_.elapsed() >= shown_after.count())
        dialog_->show();
    // Without the dialog the user's input waits until the job is done.
    QCoreApplication::processEvents(dialog_->isVisible() ? QEventLoop::AllEvents
                                                         : QEventLoop::ExcludeUserInputEvents);
    next_ = clock_.elapsed() + event_interval;
    return !stopped();
}

bool WindowWatch::stopped() const {
    return dialog_->canceled() || interrupted();
}

} // namespace host
