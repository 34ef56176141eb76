#include <printman/system/fixednames.h>

namespace printman {

namespace {

std::weak_ptr<FileLock>& shared_lock() {
    static std::weak_ptr<FileLock> lock;
    return lock;
}

} // namespace

QString FixedNames::take(const FileLock::GoesOn& goes_on) {
    if (lock_)
        return {};
    std::shared_ptr<FileLock> lock = shared_lock().lock();
    if (!lock) {
        lock = std::make_shared<FileLock>();
        QString why = lock->take_file(tmp_lock_file, FileLock::usual_patience, goes_on);
        if (!why.isEmpty())
            return why;
        shared_lock() = lock;
    }
    lock_ = std::move(lock);
    return {};
}

} // namespace printman
