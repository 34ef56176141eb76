#include "host/jobs/interrupt.h"

#include <cerrno>
#include <csignal>
#include <initializer_list>
#include <unistd.h>

namespace host {

namespace {

volatile std::sig_atomic_t interrupt_flag = 0;
volatile std::sig_atomic_t end_at_once = 0;
volatile std::sig_atomic_t woken_fd = -1;

void end_program() {
    static constexpr char line[] = "printman: interrupted\n";
    const ssize_t written = ::write(STDERR_FILENO, line, sizeof line - 1);
    static_cast<void>(written);
    ::_exit(1);
}

} // namespace

extern "C" {
static void note_interrupt(int /*signal*/) {
    if (end_at_once != 0)
        end_program();
    interrupt_flag = 1;
    if (woken_fd >= 0) {
        const int before = errno;
        const ssize_t written = ::write(woken_fd, "!", 1);
        static_cast<void>(written);
        errno = before;
    }
}
}

ExitOnInterrupt::ExitOnInterrupt() {
    end_at_once = 1;
    if (interrupted())
        end_program();
}

ExitOnInterrupt::~ExitOnInterrupt() {
    end_at_once = 0;
}

void catch_interrupts() {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction now {};
        if (sigaction(number, nullptr, &now) == 0 && now.sa_handler == SIG_IGN)
            continue;
        struct sigaction action {};
        action.sa_handler = note_interrupt;
        sigemptyset(&action.sa_mask);
        sigaction(number, &action, nullptr);
    }
}

void wake_on_interrupt(int fd) {
    woken_fd = fd;
}

bool interrupted() {
    return interrupt_flag != 0;
}

} // namespace host
