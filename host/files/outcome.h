#pragma once

#include <QByteArray>

#include <utility>

namespace host {

/// The result of an operation, and the program's exit status for it.
struct Outcome {
    enum Status {
        done = 0,
        failed = 1, ///< nothing was written
        usage = 2   ///< the command line is wrong; nothing was begun
    };

    Status status = done;
    QByteArray message; ///< the error, in the locale's encoding; empty when done

    bool ok() const { return status == done; }

    static Outcome success() { return {}; }
    static Outcome failure(QByteArray error) { return {failed, std::move(error)}; }
    static Outcome wrong_usage(QByteArray error) { return {usage, std::move(error)}; }
};

} // namespace host
