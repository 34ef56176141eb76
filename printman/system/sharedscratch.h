#pragma once

#include <printman/system/filelock.h>

#include <memory>

namespace printman {

// The fixed scratch names, which all processes share in turn, and their lock file.

inline constexpr char16_t tmp_ps[] = u"/tmp/korvo.ps";
inline constexpr char16_t tmp_pdf[] = u"/tmp/korvo.pdf";
inline constexpr char16_t tmp_over[] = u"/tmp/korvoout.pdf";
inline constexpr char16_t tmp_result[] = u"/tmp/korvoout2.pdf";
inline constexpr char16_t tmp_watermark_ps[] = u"/tmp/watermark.ps";
inline constexpr char16_t tmp_watermark[] = u"/tmp/watermark.pdf";
inline constexpr char tmp_lock_file[] = "/tmp/korvo.lock";

/// The right to the fixed names in /tmp, which all processes take in turn. All jobs of this process
/// share it; it is held until the last of them has let it go.
class SharedScratch {
public:
    /// Takes it, waiting for other processes; nothing happens when this one holds it already.
    Result take(JobControl& control);

    void release() { lock_.reset(); }
    bool is_held() const { return lock_ != nullptr; }

private:
    std::shared_ptr<FileLock> lock_;
};

/// Lets the fixed names go when it ends.
class SharedScratchUse {
public:
    explicit SharedScratchUse(SharedScratch& names) : names_(names) {}
    ~SharedScratchUse() { names_.release(); }
    SharedScratchUse(const SharedScratchUse&) = delete;
    SharedScratchUse& operator=(const SharedScratchUse&) = delete;

private:
    SharedScratch& names_;
};

} // namespace printman
