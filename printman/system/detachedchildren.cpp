#include <printman/system/detachedchildren.h>

#include <cerrno>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace printman {

namespace {

/// Handles, and not numbers: where SIGCHLD is ignored, the system gives a child's number away.
std::vector<int>& detached_children() {
    static std::vector<int> children;
    return children;
}

/// Whether the child is gone, with its status.
bool is_reaped(int child) {
    siginfo_t status = {};
    int result = 0;
    do {
        result = ::waitid(P_PIDFD, static_cast<id_t>(child), &status, WEXITED | WNOHANG);
    } while (result != 0 && errno == EINTR);
    return result != 0 || status.si_pid != 0;
}

} // namespace

void detach_child(pid_t child) {
    // The C library's own function cannot be linked from C++ everywhere.
    const int handle = static_cast<int>(::syscall(SYS_pidfd_open, child, 0));
    if (handle >= 0)
        detached_children().push_back(handle);
}

void reap_detached_children() {
    std::erase_if(detached_children(), [](int child) {
        const bool gone = is_reaped(child);
        if (gone)
            ::close(child);
        return gone;
    });
}

} // namespace printman
