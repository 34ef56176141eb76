#pragma once

#include <printman/progress.h>
#include <printman/result.h>

#include <QString>
#include <QStringList>

#include <memory>
#include <string_view>

namespace printman {

/// Where a print job's bytes go: a file, or the spooler's standard input.
class OutputSink {
public:
    virtual ~OutputSink() = default;

    /// @return a failure when the target cannot take anything
    virtual Result open() = 0;

    /// A failure when the target no longer takes what is written, such as a spooler that has died.
    virtual Result check() { return {}; }

    virtual Result write(std::string_view bytes) = 0;

    /// Completes the job.
    virtual Result close() = 0;

    /// Drops the job: an earlier file stays. The spooler gets nothing more; where nothing was
    /// written yet it is given an empty input, so that no empty job stays in its queue.
    virtual void discard() = 0;
};

/// A job into a file that takes its name when it is complete.
std::unique_ptr<OutputSink> make_file_sink(const QString& path);

/// A job into a fixed scratch name, which is claimed first: what someone else left there is never
/// written through. The file is its owner's alone and goes again when the job fails.
std::unique_ptr<OutputSink> make_scratch_sink(const QString& path);

/// A job into the standard input of a program, started with exactly these arguments and no shell.
/// The job fails when the program cannot be started, dies, ends with another status than 0 or with
/// one that was lost, takes nothing for a minute, or does not end within five after its input has.
///
/// @param program found on PATH
/// @param control asked some twenty times a second while the program is waited for; the job is
///                dropped when it says to stop
std::unique_ptr<OutputSink> make_program_sink(const QString& program, const QStringList& arguments,
                                              std::shared_ptr<JobControl> control);

/// The job for a printer's queue: `lp -d NAME`, or `lpr -P NAME` where there is no lp; without a
/// name the spooler's default queue. More than one copy is the spooler's to make.
/// Where there is neither, opening fails with a word about the package that has it.
std::unique_ptr<OutputSink> make_spooler_sink(const QString& printer, int copies, bool collate,
                                              std::shared_ptr<JobControl> control);

} // namespace printman
