#include "bench/measure.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

constexpr double kib_per_mib = 1024;

double seconds_of(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// In the child: the command in place of this program, or the end of it.
[[noreturn]] void become(const std::vector<std::string>& command, int output) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const int input = open("/dev/null", O_RDONLY);
    dup2(input, STDIN_FILENO);
    if (output >= 0)
        dup2(output, STDOUT_FILENO);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

pid_t start(const std::vector<std::string>& command, int output) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0)
        fail(std::string("cannot start a process: ") + std::strerror(errno));
    if (child == 0)
        become(command, output);
    return child;
}

void expect_success(const std::vector<std::string>& command, int status) {
    if (WIFEXITED(status) && WEXITSTATUS(status) == 127)
        fail("cannot run " + command.front());
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::string text;
        for (const std::string& argument : command)
            text += (text.empty() ? "" : " ") + argument;
        fail("this failed: " + text);
    }
}

} // namespace

void fail(const std::string& message) {
    throw std::runtime_error(message);
}

int run_measurement(int argc, char** argv, void (*measure)(int argc, char** argv)) {
    try {
        measure(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

Run run(const std::vector<std::string>& command) {
    const auto begin = std::chrono::steady_clock::now();
    // Not /dev/null: some programs see that nobody reads, and do less.
    const int output = memfd_create("output", MFD_CLOEXEC);
    const pid_t child = start(command, output);
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) < 0)
        fail(std::string("cannot wait for a process: ") + std::strerror(errno));
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    close(output);
    expect_success(command, status);
    return {.seconds = elapsed.count(),
            .cpu_seconds = seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime),
            .peak_mib = static_cast<double>(usage.ru_maxrss) / kib_per_mib};
}

std::string output_of(const std::vector<std::string>& command) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        fail(std::string("cannot make a pipe: ") + std::strerror(errno));
    const pid_t child = start(command, ends[1]);
    close(ends[1]);
    std::string text;
    char piece[65536];
    ssize_t count = 0;
    while ((count = read(ends[0], piece, sizeof piece)) > 0)
        text.append(piece, static_cast<size_t>(count));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    expect_success(command, status);
    return text;
}

double quantile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    const double place = share * static_cast<double>(values.size() - 1);
    const auto below = static_cast<size_t>(std::floor(place));
    const size_t above = std::min(below + 1, values.size() - 1);
    const double part = place - std::floor(place);
    return values[below] * (1 - part) + values[above] * part;
}

Run median(const std::vector<Run>& runs) {
    std::vector<double> seconds;
    std::vector<double> cpu_seconds;
    double peak = 0;
    for (const Run& each : runs) {
        seconds.push_back(each.seconds);
        cpu_seconds.push_back(each.cpu_seconds);
        peak = std::max(peak, each.peak_mib);
    }
    return {.seconds = quantile(seconds, 0.5),
            .cpu_seconds = quantile(cpu_seconds, 0.5),
            .peak_mib = peak};
}

int number_argument(int argc, char** argv, int index, int fallback) {
    if (index >= argc)
        return fallback;
    const std::string_view text = argv[index];
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 1)
        fail("'" + std::string(text) + "' is no positive number");
    return number;
}

long own_memory() {
    std::ifstream status("/proc/self/status");
    std::string line;
    constexpr std::string_view key = "RssAnon:";
    while (std::getline(status, line)) {
        if (line.starts_with(key))
            return std::strtol(line.c_str() + key.size(), nullptr, 10) * 1024;
    }
    fail("/proc/self/status does not tell the memory in use");
}

long size_of_file(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (error)
        fail(path + ": " + error.message());
    return static_cast<long>(size);
}

Scratch::Scratch() {
    std::string name = std::filesystem::temp_directory_path().native() + "/bench-XXXXXX";
    if (!mkdtemp(name.data()))
        fail(name + ": " + std::strerror(errno));
    path_ = name;
}

Scratch::~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace bench
