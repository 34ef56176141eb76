#pragma once

namespace host {

/// Follows a long job, and may stop it: each function returns false to do so.
class JobWatch {
public:
    JobWatch() = default;
    virtual ~JobWatch() = default;
    JobWatch(const JobWatch&) = delete;
    JobWatch& operator=(const JobWatch&) = delete;

    /// @p done pages of @p total are done.
    virtual bool pages_done(int done, int total) = 0;

    /// Called some twenty times a second while a tool is running and nothing can be counted.
    virtual bool tool_works() = 0;

    /// Called at the same rate while the job waits for another print job.
    virtual bool waits() = 0;
};

} // namespace host
