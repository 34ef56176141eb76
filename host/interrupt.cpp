#include "host/interrupt.h"

#include <csignal>
#include <initializer_list>

namespace host {

namespace {

volatile std::sig_atomic_t interrupt_flag = 0;

} // namespace

extern "C" {
static void note_interrupt(int /*signal*/) {
    interrupt_flag = 1;
}
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

bool interrupted() {
    return interrupt_flag != 0;
}

} // namespace host
