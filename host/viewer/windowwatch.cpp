#include "host/viewer/windowwatch.h"

#include "host/interrupt.h"
#include "host/viewer/progressdialog.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace host {

namespace {

constexpr qint64 between_looks = 40; // milliseconds

} // namespace

WindowWatch::WindowWatch(QWidget* window, const QString& what)
    : dialog_(std::make_unique<ProgressDialog>(window, what)) {
    clock_.start();
}

WindowWatch::~WindowWatch() = default;

bool WindowWatch::pages_done(int done, int total) {
    if (clock_.elapsed() < next_)
        return !stopped();
    dialog_->show_pages(done, total);
    return look();
}

bool WindowWatch::tool_works() {
    dialog_->show_unknown();
    return look();
}

bool WindowWatch::waits() {
    dialog_->show_waiting();
    return look();
}

bool WindowWatch::look() {
    if (clock_.elapsed() >= shown_after.count())
        dialog_->show();
    // What the user does meanwhile is for the dialog, or waits until the job is done.
    QCoreApplication::processEvents(dialog_->isVisible() ? QEventLoop::AllEvents
                                                         : QEventLoop::ExcludeUserInputEvents);
    next_ = clock_.elapsed() + between_looks;
    return !stopped();
}

bool WindowWatch::stopped() const {
    return dialog_->canceled() || interrupted();
}

} // namespace host
