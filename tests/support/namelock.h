#pragma once

namespace testsupport {

/// The lock of a file that all processes know by its name, waited for as long as another process
/// has it. The file is made when there is none, and stays; every user can take the lock, whoever
/// made it. Programs that are started do not have it.
class NameLock {
public:
    /// A test fails when the lock cannot be had at all.
    explicit NameLock(const char* path);
    ~NameLock();
    NameLock(const NameLock&) = delete;
    NameLock& operator=(const NameLock&) = delete;

    void release();

private:
    int fd_ = -1;
};

} // namespace testsupport
