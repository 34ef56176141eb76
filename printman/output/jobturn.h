#pragma once

#include <QString>

namespace printman {

/// The turn of a job that lets events be handled while it works: another one that is started from
/// there would write to the same files.
class JobTurn {
public:
    JobTurn();
    ~JobTurn();
    JobTurn(const JobTurn&) = delete;
    JobTurn& operator=(const JobTurn&) = delete;

    /// Whether there was no other job when this one began.
    bool is_first() const { return is_first_; }

private:
    bool is_first_;
};

/// What a job answers whose turn it is not.
QString busy_printing();

} // namespace printman
