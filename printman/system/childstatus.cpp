#include <printman/system/childstatus.h>
#include <printman/system/detachedchildren.h>

namespace printman {

int ChildStatusGuard::guards_ = 0;
bool ChildStatusGuard::replaced_ = false;
struct sigaction ChildStatusGuard::old_ = {};

ChildStatusGuard::ChildStatusGuard() {
    ++guards_;
    renew();
}

ChildStatusGuard::~ChildStatusGuard() {
    if (--guards_ == 0 && replaced_) {
        ::sigaction(SIGCHLD, &old_, nullptr);
        replaced_ = false;
        reap_detached_children();
    }
}

void ChildStatusGuard::renew() {
    struct sigaction now = {};
    ::sigaction(SIGCHLD, nullptr, &now);
    const bool ignored = !(now.sa_flags & SA_SIGINFO) && now.sa_handler == SIG_IGN;
    if (!ignored && !(now.sa_flags & SA_NOCLDWAIT))
        return;
    old_ = now;
    replaced_ = true;
    if (ignored)
        now.sa_handler = SIG_DFL;
    now.sa_flags &= ~SA_NOCLDWAIT;
    ::sigaction(SIGCHLD, &now, nullptr);
}

} // namespace printman
