#pragma once

#include <QByteArray>

#include <utility>

namespace host {

/// What a command comes to, and the program's exit status with it.
struct Outcome {
    enum Status {
        done = 0,   ///< the job is done
        failed = 1, ///< the job failed; nothing was written
        usage = 2   ///< the command line is wrong; nothing was begun
    };

    Status status = done;
    QByteArray message; ///< why not, in the locale's encoding; empty when done

    bool ok() const { return status == done; }

    static Outcome success() { return {}; }
    static Outcome failure(QByteArray why) { return {failed, std::move(why)}; }
    static Outcome wrong_usage(QByteArray why) { return {usage, std::move(why)}; }
};

} // namespace host
