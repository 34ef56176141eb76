// Indexing a large report against counting its top lines with grep.
//
// usage: index_against_grep [ROUNDS [PAGES]]
#include "bench/measure.h"
#include "bench/yardstick.h"

#include <printman/printman.h>

#include <QGuiApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

double index_report(CPrintMan& manager, const std::string& report, int pages) {
    const auto begin = std::chrono::steady_clock::now();
    manager.init_printman(report.c_str());
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    if (manager.get_page_count() != pages)
        bench::fail("the index has not every page");
    return elapsed.count();
}

void measure(int argc, char** argv) {
    const int rounds = bench::number_argument(argc, argv, 1, 7);
    const int pages = bench::number_argument(argc, argv, 2, 50000);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // The toolkit's remarks are none of the measurement's.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int one = 1;
    const QGuiApplication application(one, argv);

    const bench::Scratch scratch;
    const std::string report = scratch.file("large.rpt");
    const std::string small = scratch.file("small.rpt");
    if (!bench::write_yardstick(pages, report, {}) || !bench::write_yardstick(1, small, {}))
        bench::fail("cannot write the report");

    CPrintMan manager;
    index_report(manager, small, 1);
    const long before = bench::own_memory();
    index_report(manager, report, pages);
    const long grown = bench::own_memory() - before;

    // grep in the user's locale and in the plain one, in which it is quickest.
    const std::vector<std::string> grep = {"grep", "-c", "^#!?PAGETOP", report};
    std::vector<std::string> plain_grep = {"env", "LC_ALL=C"};
    plain_grep.insert(plain_grep.end(), grep.begin(), grep.end());
    if (bench::output_of(plain_grep) != std::to_string(pages) + '\n')
        bench::fail("grep does not count every page");

    std::vector<double> index_times;
    std::vector<double> grep_times;
    std::vector<double> plain_grep_times;
    for (int round = 0; round < rounds; ++round) {
        index_times.push_back(index_report(manager, report, pages));
        grep_times.push_back(bench::run(grep).seconds);
        plain_grep_times.push_back(bench::run(plain_grep).seconds);
    }
    const double index = bench::quantile(index_times, 0.5);
    const double counted = bench::quantile(grep_times, 0.5);
    const double plain = bench::quantile(plain_grep_times, 0.5);
    std::printf("%d pages, %.0f MB, medians of %d rounds\n", pages,
                static_cast<double>(bench::size_of_file(report)) / 1e6, rounds);
    std::printf("  index              %7.3f s\n", index);
    std::printf("  grep -c            %7.3f s; the index takes %.2f x\n", counted, index / counted);
    std::printf("  LC_ALL=C grep -c   %7.3f s; the index takes %.2f x\n", plain, index / plain);
    std::printf("  memory             %7.1f bytes a page\n",
                static_cast<double>(grown) / static_cast<double>(pages));
}

} // namespace

int main(int argc, char** argv) {
    return bench::run_measurement(argc, argv, measure);
}
