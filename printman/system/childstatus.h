#pragma once

#include <csignal>

namespace printman {

/// While one lives, a child's end is told to this process, whatever the host did to SIGCHLD: where
/// the signal is ignored the system would reap the child and its status be lost. The last one to go
/// puts the host's handling back.
class ChildStatusGuard {
public:
    ChildStatusGuard();
    ~ChildStatusGuard();
    ChildStatusGuard(const ChildStatusGuard&) = delete;
    ChildStatusGuard& operator=(const ChildStatusGuard&) = delete;

    /// To be called before a child is asked for: the host may ignore the signal in the middle of a
    /// job.
    static void renew();

private:
    static int guards_;
    static bool replaced_;
    static struct sigaction old_;
};

} // namespace printman
