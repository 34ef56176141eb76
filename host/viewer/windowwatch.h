#pragma once

#include "host/jobs/jobwatch.h"

#include <QElapsedTimer>
#include <QString>

#include <memory>

class QWidget;

namespace host {

class ProgressDialog;

/// Watches a long job from a window: after half a second it shows how far the job is, in a dialog
/// that can cancel it. The window is repainted all the time, and takes no other input meanwhile.
class WindowWatch : public JobWatch {
public:
    /// @param window the job's window
    /// @param what   what is being done, for the user
    WindowWatch(QWidget* window, const QString& what);
    ~WindowWatch() override;

    bool pages_done(int done, int total) override;
    bool tool_works() override;
    bool waits() override;

    /// Whether the user, or the end of the program, has stopped the job.
    bool stopped() const;

private:
    bool look();

    std::unique_ptr<ProgressDialog> dialog_;
    QElapsedTimer clock_;
    qint64 next_ = 0;
};

} // namespace host
