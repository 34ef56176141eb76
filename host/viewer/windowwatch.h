#pragma once

#include "host/jobwatch.h"

#include <QElapsedTimer>
#include <QString>

#include <chrono>
#include <memory>

class QWidget;

namespace host {

class ProgressDialog;

/// Watches a long job from a window: after a moment it shows how far the job is, in a dialog that
/// can cancel it. The window is repainted all the time, and takes no other input meanwhile.
class WindowWatch : public JobWatch {
public:
    /// How long a job lasts before it is shown. A test that is not to depend on the machine's speed
    /// shows jobs from their first page on, or never.
    static inline std::chrono::milliseconds shown_after{500};

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
