#pragma once

#include <QByteArray>

namespace host {

/// Captures what the library, or a tool that it runs, writes to standard error while the object
/// exists, so that an error is reported once, by the code that started the job.
class StderrCapture {
public:
    StderrCapture();
    ~StderrCapture();
    StderrCapture(const StderrCapture&) = delete;
    StderrCapture& operator=(const StderrCapture&) = delete;

    /// The beginning of what was written so far.
    QByteArray text() const;

    /// A descriptor of standard error as the user sees it, also during a capture: for progress on a
    /// terminal.
    static int visible_fd();

private:
    int visible_ = -1;
    int captured_ = -1;
};

} // namespace host
