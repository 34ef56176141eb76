// What a user waits for on screen: a page, a step of a drag, the first page of a large report.
//
// usage: show_pages [PAGES]
#include "bench/measure.h"
#include "bench/yardstick.h"

#include <printman/printman.h>
#include <printman/render/screen.h>

#include <QApplication>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

constexpr int shown_pages = 200;
constexpr int drag_steps = 1000;
constexpr QSize view_size(1280, 960);

double milliseconds(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> elapsed =
        std::chrono::steady_clock::now() - begin;
    return elapsed.count();
}

void print_row(const char* name, const char* zoom, const std::vector<double>& times) {
    std::printf("  %-22s %5s  median %6.2f ms, 99th percentile %6.2f ms, slowest %6.2f ms\n", name,
                zoom, bench::quantile(times, 0.5), bench::quantile(times, 0.99),
                bench::quantile(times, 1));
}

std::vector<double> turn_pages(CPrintMan& manager) {
    std::vector<double> times;
    manager.show_rpt_page(1);
    for (int page = 0; page < shown_pages; ++page) {
        times.push_back(milliseconds([&manager] {
            if (manager.show_rpt_page(2) != 1)
                bench::fail("a page cannot be shown");
        }));
    }
    return times;
}

/// Where a drag's next step goes: a walk over the page that turns at its edges, with a jump from
/// time to time.
class Walk {
public:
    explicit Walk(QSize size) : size_(size) {}

    QPoint next() {
        at_ += QPoint(17, 11);
        if (++steps_ % 50 == 0)
            at_ += QPoint(size_.width() / 3, size_.height() / 2);
        return {at_.x() % size_.width(), at_.y() % size_.height()};
    }

private:
    QSize size_;
    QPoint at_{40, 40};
    int steps_ = 0;
};

std::vector<double> drag(CPrintMan& manager, QSize size) {
    std::vector<double> times;
    Walk walk(size);
    size_t most = 0;
    manager.mouse_press(QPoint(25, 25));
    for (int step = 0; step < drag_steps; ++step) {
        const QPoint to = walk.next();
        times.push_back(milliseconds([&manager, to] { manager.mouse_move(to); }));
        most = std::max(most, manager.hilights().size());
    }
    manager.clear_hilights();
    if (most < 200)
        bench::fail("the drag selects too little");
    return times;
}

void measure(int argc, char** argv) {
    const int pages = std::max(shown_pages + 1, bench::number_argument(argc, argv, 1, 50000));
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // The toolkit's remarks are none of the measurement's.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int one = 1;
    const QApplication application(one, argv);
    QWidget window;
    window.resize(view_size);
    window.show();
    QFont font(QStringLiteral("Courier New"), 10);
    font.setStyleHint(QFont::Monospace);

    const bench::Scratch scratch;
    const std::string report = scratch.file("large.rpt");
    if (!bench::write_yardstick(pages, report, {}))
        bench::fail("cannot write the report");
    CPrintMan manager;
    const double first = milliseconds([&] {
        manager.init_printman(report.c_str());
        manager.init_rpt_view(&window, &view_size, &font);
        if (manager.show_rpt_page(1) != 1)
            bench::fail("the first page cannot be shown");
        QApplication::processEvents();
    });
    std::printf("%d pages, %ld MB, on %s\n", pages, bench::size_of_file(report) / 1000000,
                qPrintable(QGuiApplication::platformName()));
    std::printf("  first page of the report on screen: %.0f ms\n", first);
    const auto* screen = window.findChild<CScreen*>();
    for (const char* zoom : {"100%", "300%"}) {
        manager.zoom_rpt_page(QString::fromLatin1(zoom));
        QApplication::processEvents();
        print_row("another page", zoom, turn_pages(manager));
        print_row("step of a drag", zoom, drag(manager, screen->size()));
    }
    const long before = bench::own_memory();
    turn_pages(manager);
    std::printf("  memory grew by %ld KiB over %d pages shown\n",
                (bench::own_memory() - before) / 1024, shown_pages);
}

} // namespace

int main(int argc, char** argv) {
    return bench::run_measurement(argc, argv, measure);
}
