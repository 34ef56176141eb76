#pragma once

#include <printman/result.h>

namespace printman {

/// The turn of a job that lets events be handled while it works: another one that is started from
/// there would write to the same files.
class JobTurn {
public:
    JobTurn();
    ~JobTurn();
    JobTurn(const JobTurn&) = delete;
    JobTurn& operator=(const JobTurn&) = delete;

    /// A failure when there was another job when this one began.
    Result check() const;

private:
    bool is_first_;
};

} // namespace printman
