#pragma once

namespace host {

/// Whoever waits for a long job: it hears how far the job is, and may stop it.
class JobWatch {
public:
    JobWatch() = default;
    virtual ~JobWatch() = default;
    JobWatch(const JobWatch&) = delete;
    JobWatch& operator=(const JobWatch&) = delete;

    /// @p done pages of @p total are through.
    ///
    /// @return false to stop the job
    virtual bool pages_done(int done, int total) = 0;

    /// Called some twenty times a second while a tool works and nothing can be counted.
    ///
    /// @return false to stop the job
    virtual bool tool_works() = 0;

    /// Called as often while another print job has what this one needs.
    ///
    /// @return false to stop the job
    virtual bool waits() = 0;
};

} // namespace host
