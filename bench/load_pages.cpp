// Loading any page of a large report into items.
//
// usage: load_pages [PAGES]
#include "bench/measure.h"
#include "bench/yardstick.h"

#include <printman/core/printman.h>

#include <QGuiApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

enum Request { first = 1, next = 2, previous = 3, last = 4 };

double load(CPrintMan& manager, Request request) {
    const auto begin = std::chrono::steady_clock::now();
    const int loaded = manager.get_rpt_page(request);
    const std::chrono::duration<double, std::milli> elapsed =
        std::chrono::steady_clock::now() - begin;
    if (loaded != 1)
        bench::fail("a page cannot be loaded");
    return elapsed.count();
}

/// Turns to every page but the one that is shown.
std::vector<double> walk(CPrintMan& manager, Request request) {
    std::vector<double> times(static_cast<size_t>(manager.get_page_count()) - 1);
    for (double& time : times)
        time = load(manager, request);
    return times;
}

/// Turns to the last page and the first in turn.
std::vector<double> jump(CPrintMan& manager, int count) {
    std::vector<double> times(static_cast<size_t>(count));
    Request request = first;
    for (double& time : times) {
        request = request == first ? last : first;
        time = load(manager, request);
    }
    return times;
}

void print_row(const char* name, const std::vector<double>& times) {
    std::printf("  %-28s median %6.3f ms, 99th percentile %6.3f ms, slowest %6.3f ms\n", name,
                bench::quantile(times, 0.5), bench::quantile(times, 0.99),
                bench::quantile(times, 1));
}

} // namespace

int main(int argc, char** argv) {
    const int pages = bench::number_argument(argc, argv, 1, 50000);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // The toolkit's remarks are none of the measurement's.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int one = 1;
    const QGuiApplication application(one, argv);

    const bench::Scratch scratch;
    const std::string report = scratch.file("large.rpt");
    if (!bench::write_yardstick(pages, report, {}))
        bench::fail("cannot write the report");
    CPrintMan manager;
    manager.init_printman(report.c_str());
    if (manager.get_page_count() != pages)
        bench::fail("the index has not every page");

    load(manager, first);
    qsizetype items = 0;
    for (int line = 0; line < manager.get_lines(); ++line)
        items += manager.page_row(line).size();

    const long before = bench::own_memory();
    const std::vector<double> forward = walk(manager, next);
    const std::vector<double> backward = walk(manager, previous);
    const long grown = bench::own_memory() - before;
    const std::vector<double> jumps = jump(manager, 1000);

    std::printf("%d pages, %lld items on the first\n", pages, static_cast<long long>(items));
    print_row("every page, forwards", forward);
    print_row("every page, backwards", backward);
    print_row("from end to end", jumps);
    std::printf("  memory grew by %.2f bytes a page\n",
                static_cast<double>(grown) / (2.0 * static_cast<double>(pages)));
    return 0;
}
