#pragma once

namespace host {

/// From now on SIGINT, SIGTERM and SIGHUP only set the flag that interrupted() answers, and end a
/// system call that waits; a signal that the caller of the program has set to be ignored stays so.
void catch_interrupts();

/// From now on an interrupt also writes a byte to @p fd, which must not block; -1 for none.
void wake_on_interrupt(int fd);

/// Whether the user wants the job to end. Long loops ask once a page.
bool interrupted();

/// While one of these exists an interrupt ends the program at once, with its line and status: for
/// work that does not ask and leaves nothing behind.
class InterruptsEndProgram {
public:
    InterruptsEndProgram();
    ~InterruptsEndProgram();
    InterruptsEndProgram(const InterruptsEndProgram&) = delete;
    InterruptsEndProgram& operator=(const InterruptsEndProgram&) = delete;
};

} // namespace host
