#pragma once

#include "host/files/outcome.h"
#include "host/jobs/jobwatch.h"

#include <QByteArray>
#include <QElapsedTimer>

namespace host {

/// @p text, which is UTF-8, with a '?' for every control character and every invalid byte, so that
/// it stays on one line and cannot control the terminal.
QByteArray one_line(const QByteArray& text);

/// The number of terminal columns that such a text takes: none for a combining character, two for a
/// wide one.
int display_width(const QByteArray& text);

/// Writes "printman: " and @p message as one line to standard error.
void report_error(const QByteArray& message);

/// Writes to standard output; false once anything could not be written.
bool print(const QByteArray& text);

/// Flushes standard output: a failure when that, or printing anything before, has failed.
Outcome flush_output();

/// A line such as "page 120 of 1000" on standard error, shown only when that is a terminal and the
/// job has lasted for half a second, and erased when the object is destroyed.
class Progress {
public:
    /// @param unit what is counted
    explicit Progress(const char* unit);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Shows that @p done of @p total are done.
    ///
    /// @return false when the user has interrupted the program
    bool step(long long done, long long total);

    /// Shows in words what the job is doing.
    ///
    /// @return false when the user has interrupted the program
    bool describe(const QByteArray& activity);

private:
    bool is_due();
    void show(const QByteArray& text);

    const char* unit_;
    bool terminal_;
    QElapsedTimer clock_;
    qint64 next_ = 500;
    qsizetype shown_ = 0;
};

/// Shows a line of progress for a job, and stops the job when the user interrupts.
class ConsoleWatch : public JobWatch {
public:
    bool pages_done(int done, int total) override;
    bool tool_works() override;
    bool waits() override;

private:
    Progress progress_{"page"};
    QElapsedTimer tools_; ///< since the first one was started
};

} // namespace host
