#pragma once

#include <string>
#include <vector>

namespace bench {

/// What one run of a command took.
struct Run {
    double seconds = 0;     ///< from start to end
    double cpu_seconds = 0; ///< of all its processes
    double peak_mib = 0;    ///< resident memory of its largest process
};

/// Runs @p command, a program on PATH and its arguments, with standard input from /dev/null.
///
/// fail() is called when the command cannot be run or fails.
Run run(const std::vector<std::string>& command);

/// Runs @p command as run() does, and gives what it writes to standard output.
std::string output_of(const std::vector<std::string>& command);

/// Ends the measurement with a message; what it made is removed.
[[noreturn]] void fail(const std::string& message);

/// The body of main(): runs @p measure.
///
/// @return 0, or 1 when it failed
int run_measurement(int argc, char** argv, void (*measure)(int argc, char** argv));

/// The value below which a share of the values lies; a median has @p share 0.5. There must be one.
double quantile(std::vector<double> values, double share);

/// The medians of what runs took; of the memory, the most.
Run median(const std::vector<Run>& runs);

/// A positive number from the command line, or @p fallback when the argument is not there.
int number_argument(int argc, char** argv, int index, int fallback);

/// The anonymous memory of this process in bytes: what is its own, not mapped from files.
long own_memory();

/// The bytes in a file.
long size_of_file(const std::string& path);

/// A directory for the files of a measurement, removed with all that is in it at the end.
class Scratch {
public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string file(const std::string& name) const { return path_ + '/' + name; }
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

} // namespace bench
