// What a user waits for when a dialog opens: from the call until it is painted.
//
// usage: open_dialogs [ROUNDS]
#include "bench/measure.h"

#include <printman/dialogs/selprinterdlg.h>
#include <printman/dialogs/selunixprinterdlg.h>
#include <printman/printer/setuprecord.h>
#include <printman/printman.h>
#include <printman/select/finddlg.h>

#include <QApplication>
#include <QDialog>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <unistd.h>
#include <vector>

namespace {

constexpr int printers = 200;

/// Closes the first dialog that is painted, and knows when that was.
class Closer : public QObject {
public:
    explicit Closer(std::chrono::steady_clock::time_point* painted) : painted_(painted) {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (dialog && event->type() == QEvent::Paint && !is_closing_) {
            is_closing_ = true;
            QMetaObject::invokeMethod(
                dialog,
                [this, dialog] {
                    *painted_ = std::chrono::steady_clock::now();
                    dialog->reject();
                },
                Qt::QueuedConnection);
        }
        return false;
    }

private:
    std::chrono::steady_clock::time_point* painted_;
    bool is_closing_ = false;
};

double milliseconds_to_open(const std::function<void()>& open) {
    std::chrono::steady_clock::time_point painted{};
    const Closer closer(&painted);
    const auto begin = std::chrono::steady_clock::now();
    open();
    if (painted < begin)
        bench::fail("a dialog does not open");
    return std::chrono::duration<double, std::milli>(painted - begin).count();
}

void print_row(const char* name, int rounds, const std::function<void()>& open) {
    const double first = milliseconds_to_open(open);
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        times.push_back(milliseconds_to_open(open));
    std::printf("  %-18s first %6.2f ms, then median %6.2f ms, slowest %6.2f ms\n", name, first,
                bench::quantile(times, 0.5), bench::quantile(times, 1));
}

void add_printers(CPrintMan& manager) {
    manager.set_numwin_printer(printers);
    manager.set_numunix_printer(printers);
    for (int i = 0; i < printers; ++i) {
        WinPrtSetup host_printer{};
        std::snprintf(host_printer.printer_id, sizeof host_printer.printer_id, "printer %d", i);
        manager.add_win_printer(&host_printer);
        UnixPrtSetup unix_printer{};
        std::snprintf(unix_printer.printer_id, sizeof unix_printer.printer_id, "lp%d", i);
        manager.add_unix_printer(&unix_printer);
    }
}

/// The setup file, in the current directory.
void write_setup_file(const bench::Scratch& scratch) {
    std::vector<printman::SetupRecord> records(printers);
    int number = 0;
    for (printman::SetupRecord& record : records) {
        record = {};
        record.in_use = 1;
        std::snprintf(record.printer_id, sizeof record.printer_id, "local %d", ++number);
    }
    const std::string bytes = printman::setup_file_bytes(records);
    std::ofstream(scratch.file("PRTSETUP.BIN"), std::ios::binary)
        .write(bytes.data(), static_cast<long>(bytes.size()));
}

void open_server_printers(CPrintMan& manager) {
    SelPrinterDlg dialog(nullptr, nullptr, true);
    dialog.printman = &manager;
    dialog.server_printers = true;
    dialog.exec();
}

void open_local_printers() {
    SelPrinterDlg(nullptr, nullptr, true).exec();
}

void open_unix_printers(CPrintMan& manager) {
    SelUnixPrinterDlg dialog(nullptr, nullptr, true);
    dialog.printman = &manager;
    dialog.exec();
}

void measure(int argc, char** argv) {
    const int rounds = bench::number_argument(argc, argv, 1, 50);
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // The toolkit's remarks are none of the measurement's.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int one = 1;
    const QApplication application(one, argv);
    // The settings of a host that has none are those of the current directory.
    const bench::Scratch scratch;
    if (::chdir(scratch.path().c_str()) != 0)
        bench::fail("cannot work in the scratch directory");
    write_setup_file(scratch);
    CPrintMan manager;
    add_printers(manager);
    std::printf("from the call to the painted dialog, on %s\n",
                qPrintable(QGuiApplication::platformName()));
    print_row("print destination", rounds, [&manager] { manager.show_print_dest(); });
    print_row("server's printers", rounds, [&manager] { open_server_printers(manager); });
    print_row("local printers", rounds, open_local_printers);
    print_row("Unix printers", rounds, [&manager] { open_unix_printers(manager); });
    print_row("find", rounds, [] { findDlg().exec(); });
    print_row("screen colors", rounds, [&manager] { manager.select_screencolor(); });
}

} // namespace

int main(int argc, char** argv) {
    return bench::run_measurement(argc, argv, measure);
}
