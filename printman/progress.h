#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace printman {

/// What a long operation is doing.
enum class JobStage {
    pages,  ///< it works on the pages
    tool,   ///< an external program works on what was made of them
    waiting ///< another print job has what this one needs
};

/// Called by long operations after each page, when @p done pages of @p total are through, and some
/// twenty times a second, with the same numbers, while one waits or a tool works. Answers false to
/// stop the operation, which then fails and leaves an earlier output file as it was.
using Progress = std::function<bool(int done, int total)>;

/// Progress and cancellation of the operations that work with one report: they report to it and
/// stop when it says so. It can be canceled from within the progress function and from slots that
/// are called while events are handled.
class JobControl {
public:
    JobControl() = default;
    explicit JobControl(Progress progress) { set_progress(std::move(progress)); }

    /// Sets what is called; an empty function for none.
    void set_progress(Progress progress) {
        progress_ = progress ? std::make_shared<Progress>(std::move(progress)) : nullptr;
    }

    /// Whether anything is called at all.
    bool is_watched() const { return progress_ != nullptr; }

    /// Begins an operation that has @p done pages of @p total behind it; an earlier cancellation is
    /// forgotten.
    void start(int done, int total) {
        is_canceled_ = false;
        stage_ = JobStage::pages;
        done_ = done;
        total_ = total;
    }

    /// Reports that @p done pages of @p total are through.
    ///
    /// @return false when the operation is to stop
    bool pages_done(int done, int total) {
        done_ = done;
        total_ = total;
        return keep_going(JobStage::pages);
    }

    /// Asks whether to go on.
    ///
    /// @return false when the operation is to stop
    bool keep_going(JobStage stage) {
        stage_ = stage;
        // The function may set another one.
        const std::shared_ptr<Progress> progress = progress_;
        if (!is_canceled_ && progress && !(*progress)(done_, total_))
            is_canceled_ = true;
        return !is_canceled_;
    }

    void cancel() { is_canceled_ = true; }
    bool is_canceled() const { return is_canceled_; }

    /// What the operation was doing when it asked last.
    JobStage stage() const { return stage_; }

private:
    std::shared_ptr<Progress> progress_;
    JobStage stage_ = JobStage::pages;
    int done_ = 0;
    int total_ = 0;
    bool is_canceled_ = false;
};

} // namespace printman
