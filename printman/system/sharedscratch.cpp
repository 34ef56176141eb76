#include <printman/system/sharedscratch.h>

namespace printman {

namespace {

std::weak_ptr<FileLock>& shared_lock() {
    static std::weak_ptr<FileLock> lock;
    return lock;
}

} // namespace

Result SharedScratch::take(JobControl& control) {
    if (lock_)
        return {};
    std::shared_ptr<FileLock> lock = shared_lock().lock();
    if (!lock) {
        lock = std::make_shared<FileLock>();
        Result taken = lock->take_file(tmp_lock_file, control);
        if (!taken.ok())
            return taken;
        shared_lock() = lock;
    }
    lock_ = std::move(lock);
    return {};
}

} // namespace printman
