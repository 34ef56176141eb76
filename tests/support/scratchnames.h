#pragma once

#include "tests/support/namelock.h"

#include <QStringList>

namespace testsupport {

/// The lock file of the library's jobs for the fixed scratch names in /tmp.
inline constexpr char job_lock_file[] = "/tmp/korvo.lock";

/// Keeps the fixed scratch names in /tmp for the test that it lives in: a test of another suite
/// that is about them waits, whoever runs it. What this test's own jobs and those of other programs
/// do there, the library's lock orders.
class ScratchNamesAlone {
private:
    NameLock lock_{"/tmp/printman-tests.lock"};
};

/// Those of the fixed scratch names that are taken, without "/tmp/".
QStringList taken_scratch_names();

/// Frees them; what an earlier test that was killed has left is gone, too. A test fails when
/// something stays.
void free_scratch_names();

} // namespace testsupport
