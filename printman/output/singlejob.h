#pragma once

#include <printman/result.h>

namespace printman {

/// A print job's claim to be the only one of this process: it lets events be handled while it
/// works, and another job that is started from there would write to the same files.
class SingleJob {
public:
    SingleJob();
    ~SingleJob();
    SingleJob(const SingleJob&) = delete;
    SingleJob& operator=(const SingleJob&) = delete;

    /// A failure when there was another job when this one began.
    Result check() const;

private:
    bool is_first_;
};

} // namespace printman
