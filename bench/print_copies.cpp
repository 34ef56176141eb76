// Printing a report on a printer of the setup file: what a second copy costs, and the memory of
// many pages and copies.
//
// usage: print_copies [ROUNDS [PAGES]]
#include "bench/measure.h"
#include "bench/yardstick.h"

#include <printman/printer/setuprecord.h>
#include <printman/printman.h>

#include <QApplication>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <unistd.h>

namespace {

constexpr char printer[] = "laser";

/// The job of a printer whose queue takes everything.
struct Job {
    double seconds = 0;
    long peak_memory = 0; ///< own memory, in bytes, while it ran
};

Job print(CPrintMan& manager, int copies, int collate) {
    Job job;
    manager.set_progress([&job](int done, int) {
        constexpr int every = 50;
        if (done % every == 0)
            job.peak_memory = std::max(job.peak_memory, bench::own_memory());
        return true;
    });
    const auto begin = std::chrono::steady_clock::now();
    const int done = manager.print_rpt_page(nullptr, printer, copies, collate, 0, 0);
    job.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    if (done != 1)
        bench::fail("the report was not printed: " + manager.last_job_error().toStdString());
    return job;
}

/// A spooler that counts what it gets.
void write_spooler(const std::string& path) {
    std::ofstream(path) << "#!/bin/sh\nexec wc -c >\"${0%/*}/bytes\"\n";
    bench::run({"chmod", "+x", path});
}

void write_setup_file(const std::string& path) {
    printman::SetupRecord record{};
    record.in_use = 1;
    std::strcpy(record.printer_id, printer);
    std::strcpy(record.printer_name, "queue");
    std::strcpy(record.font.log_font.face_name, "Liberation Mono");
    record.font.point_size = 8;
    record.font.log_font.weight = 50;
    record.devmode.orientation = 1;
    const std::string bytes = printman::setup_file_bytes(std::array{record});
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<long>(bytes.size()));
}

void open(CPrintMan& manager, const bench::Scratch& scratch, const char* name, int pages) {
    const std::string report = scratch.file(name);
    if (!bench::write_yardstick(pages, report, {}))
        bench::fail("cannot write the report");
    manager.init_printman(report.c_str());
    if (manager.get_page_count() != pages)
        bench::fail("the index has not every page");
}

void measure(int argc, char** argv) {
    const int rounds = bench::number_argument(argc, argv, 1, 7);
    const int pages = bench::number_argument(argc, argv, 2, 1000);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // The toolkit's remarks are none of the measurement's.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int one = 1;
    const QApplication application(one, argv);

    // The settings of a host that has none are those of the current directory.
    const bench::Scratch scratch;
    if (::chdir(scratch.path().c_str()) != 0)
        bench::fail("cannot work in the scratch directory");
    write_setup_file(scratch.file("PRTSETUP.BIN"));
    write_spooler(scratch.file("lp"));
    const char* path = std::getenv("PATH");
    setenv("PATH", (scratch.path() + ':' + (path ? path : "/usr/bin:/bin")).c_str(), 1);

    CPrintMan manager;
    open(manager, scratch, "report.rpt", pages);
    print(manager, 1, 1); // from warm file pages, with the fonts found
    std::vector<double> single;
    std::vector<double> collated;
    std::vector<double> uncollated;
    Job few;
    for (int round = 0; round < rounds; ++round) {
        few = print(manager, 1, 1);
        single.push_back(few.seconds);
        collated.push_back(print(manager, 2, 1).seconds);
        uncollated.push_back(print(manager, 2, 0).seconds);
    }
    const double once = bench::quantile(single, 0.5);
    const auto print_row = [once](const char* name, const std::vector<double>& times) {
        const double time = bench::quantile(times, 0.5);
        std::printf("  %-26s %6.3f s, %.2f x\n", name, time, time / once);
    };
    std::printf("%d pages on a printer, %d rounds\n", pages, rounds);
    print_row("one copy", single);
    print_row("two copies, collated", collated);
    print_row("two copies, not collated", uncollated);

    constexpr int more = 5;
    CPrintMan large;
    open(large, scratch, "large.rpt", pages * more);
    const Job many = print(large, more, 1);
    std::printf("  memory while %d times the pages are printed %d times: %+ld KiB\n", more, more,
                (many.peak_memory - few.peak_memory) / 1024);
}

} // namespace

int main(int argc, char** argv) {
    return bench::run_measurement(argc, argv, measure);
}
