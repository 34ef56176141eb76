#pragma once

#include "host/jobs/jobwatch.h"

#include <QElapsedTimer>
#include <QString>

#include <chrono>
#include <memory>

class QWidget;

namespace host {

class ProgressDialog;

/// Follows a long job of a window: after half a second its progress is shown in a dialog that can
/// cancel it. During the job the window is repainted but takes no input.
class WindowWatch : public JobWatch {
public:
    /// How long a job lasts before it is shown. A test that is not to depend on the machine's speed
    /// shows jobs from their first page on, or never.
    static inline std::chrono::milliseconds shown_after{500};

    /// @param window   the job's window
    /// @param activity what the job is doing, for the user
    WindowWatch(QWidget* window, const QString& activity);
    ~WindowWatch() override;

    bool pages_done(int done, int total) override;
    bool tool_works() override;
    bool waits() override;

    /// Whether the user, or the end of the program, has stopped the job.
    bool stopped() const;

private:
    bool process_events();

    std::unique_ptr<ProgressDialog> dialog_;
    QElapsedTimer clock_;
    qint64 next_ = 0;
};

} // namespace host
