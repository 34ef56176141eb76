#pragma once

#include "host/jobs/jobwatch.h"

#include <QByteArray>
#include <QElapsedTimer>

namespace host {

/// @p text, which is UTF-8, with a '?' for every control character and for what is no UTF-8, so
/// that it stays on one line and tells the terminal nothing.
QByteArray one_line(const QByteArray& text);

/// How many columns of a terminal such a text fills: none for a combining character, two for a wide
/// one.
int shown_width(const QByteArray& text);

/// Writes "printman: " and @p message as one line to standard error.
void report_error(const QByteArray& message);

/// Writes to standard output; false once anything could not be written.
bool print(const QByteArray& text);

/// Sends off what was printed: 0, or the errno of what failed since the program began.
int flush_output();

/// Where progress is shown from now on: standard error until then.
void show_progress_on(int fd);

/// A line such as "page 120 of 1000" on standard error, shown only when that is a terminal and the
/// job has lasted for half a second, and erased when the object goes.
class Progress {
public:
    /// @param unit what is counted
    explicit Progress(const char* unit);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Says how far the job is.
    ///
    /// @return false when the user has interrupted it
    bool step(long long done, long long total);

    /// Says in words what the job does.
    ///
    /// @return false when the user has interrupted it
    bool tell(const QByteArray& what);

private:
    bool is_due();
    void show(const QByteArray& text);

    const char* unit_;
    bool terminal_;
    QElapsedTimer clock_;
    qint64 next_ = 500;
    qsizetype shown_ = 0;
};

/// Shows how far a job is with a line of progress, and stops it when the user interrupts.
class ConsoleWatch : public JobWatch {
public:
    bool pages_done(int done, int total) override;
    bool tool_works() override;
    bool waits() override;

private:
    Progress progress_{"page"};
    QElapsedTimer tools_; ///< since the first one began
};

} // namespace host
