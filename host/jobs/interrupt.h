#pragma once

namespace host {

/// From now on SIGINT, SIGTERM and SIGHUP only set the flag that interrupted() returns, and end a
/// blocking system call; a signal that the program's caller ignores stays ignored.
void catch_interrupts();

/// From now on an interrupt also writes a byte to @p fd, which must not block; -1 for none.
void wake_on_interrupt(int fd);

/// Whether the user has interrupted the program. Long loops check it once a page.
bool interrupted();

/// While one of these exists an interrupt ends the program at once, with its message and status:
/// for work that does not check interrupted() and leaves nothing behind.
class ExitOnInterrupt {
public:
    ExitOnInterrupt();
    ~ExitOnInterrupt();
    ExitOnInterrupt(const ExitOnInterrupt&) = delete;
    ExitOnInterrupt& operator=(const ExitOnInterrupt&) = delete;
};

} // namespace host
