#pragma once

#include <sys/types.h>

namespace printman {

/// Remembers a child of this process that nobody waits for. It is never taken for a later child
/// that has the same number.
void detach_child(pid_t child);

/// Takes the statuses of such children that have ended: those that ended while SIGCHLD was not
/// ignored would else stay zombies. Returns at once.
void reap_detached_children();

} // namespace printman
