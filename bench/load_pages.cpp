// Loading any page of a large report into items.
//
// usage: load_pages [PAGES]
#include "bench/measure.h"
#include "bench/yardstick.h"

#include <printman/printman.h>

#include <QGuiApplication>

#include <algorithm>
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

/// Turns page after page, as many as there are places for times.
void walk(CPrintMan& manager, Request request, std::vector<double>& times) {
    for (double& time : times)
        time = load(manager, request);
}

/// Turns to the last page and the first in turn.
void jump(CPrintMan& manager, std::vector<double>& times) {
    Request request = first;
    for (double& time : times) {
        request = request == first ? last : first;
        time = load(manager, request);
    }
}

void print_row(const char* name, const std::vector<double>& times) {
    std::printf("  %-28s median %6.3f ms, 99th percentile %6.3f ms, slowest %6.3f ms\n", name,
                bench::quantile(times, 0.5), bench::quantile(times, 0.99),
                bench::quantile(times, 1));
}

void measure(int argc, char** argv) {
    const int pages = std::max(2, bench::number_argument(argc, argv, 1, 50000));
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

    const auto turns = static_cast<size_t>(pages) - 1;
    std::vector<double> forward(turns);
    std::vector<double> backward(turns);
    std::vector<double> jumps(1000);
    const long before = bench::own_memory();
    walk(manager, next, forward);
    walk(manager, previous, backward);
    jump(manager, jumps);
    const long grown = bench::own_memory() - before;

    std::printf("%d pages, %lld items on the first\n", pages, static_cast<long long>(items));
    print_row("every page, forwards", forward);
    print_row("every page, backwards", backward);
    print_row("from end to end", jumps);
    std::printf("  memory grew by %.2f bytes a page\n",
                static_cast<double>(grown) / static_cast<double>(pages));
}

} // namespace

int main(int argc, char** argv) {
    return bench::run_measurement(argc, argv, measure);
}
