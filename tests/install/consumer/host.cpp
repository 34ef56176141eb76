// A small host: it makes a report of two pages in the current directory, lists its items and paints
// them on a picture and to a printer file.
#include <printman/printer/hostservices.h>
#include <printman/printman.h>
#include <printman/toolkit/psprinter.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPainter>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

// The four services that the library takes from its host. This one has no setting but TMPDIR.

extern "C" {

PRINTMAN_EXPORT int GetPrivateProfileString(const char* /*section*/, const char* /*key*/,
                                            const char* default_text, char* buffer, int size,
                                            const char* /*file*/) {
    return std::snprintf(buffer, static_cast<size_t>(size), "%s", default_text);
}

PRINTMAN_EXPORT const char* GetEnv(const char* key, const char* /*file*/, const char* /*section*/) {
    return std::strcmp(key, "TMPDIR") == 0 ? "." : nullptr;
}

PRINTMAN_EXPORT int SetEnv(const char* /*entry*/, const char* /*file*/, const char* /*section*/,
                           int /*flag*/) {
    return 0;
}

PRINTMAN_EXPORT void GetRGB(const char* /*key*/, int* red, int* green, int* blue) {
    *red = *green = *blue = 0;
}
}

namespace {

constexpr std::string_view pages[] = {"#!?PAGETOP 40,4\n"
                                      "Open items\n"
                                      "\n"
                                      "Freight   #!?R11,10,10;    125.00\n"
                                      "#!?PAGEEND\n",
                                      "#!?PAGETOP 40,4\n"
                                      "Page two\n"
                                      "#!?PAGEEND\n"};

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "host: %s\n", what);
    std::exit(1);
}

void expect(bool holds, const char* what) {
    if (!holds)
        fail(what);
}

int list_items(const CPrintMan& manager) {
    int count = 0;
    for (int line = 0; line < manager.get_lines(); ++line) {
        for (const StringItem& item : manager.page_row(line)) {
            std::printf("page %d, line %d, column %d: %s\n", manager.get_cur_page(), line,
                        item.cell.x(), qPrintable(item.text));
            ++count;
        }
    }
    return count;
}

bool has_ink(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                return true;
        }
    }
    return false;
}

void paint_picture(CPrintMan& manager) {
    QImage image(400, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    manager.set_logical_unit(&painter, 0, 0, 0);
    expect(manager.print_page(&painter) == 1, "the page cannot be painted on a picture");
    painter.end();
    expect(has_ink(image), "the picture is empty");
}

void print_report(CPrintMan& manager, const QString& path) {
    PsPrinter printer;
    printer.setOutputFileName(path);
    QPainter painter;
    expect(painter.begin(&printer), "the printer cannot be opened");
    manager.set_logical_unit(&painter, 0, 0, 0);
    for (int request = 1; manager.get_rpt_page(request) == 1; request = 2) {
        if (request == 2)
            expect(printer.newPage(), "the printer has no further page");
        expect(manager.print_page(&painter) == 1, "a page cannot be printed");
    }
    expect(painter.end(), "the job was not completed");

    QFile file(path);
    expect(file.open(QIODevice::ReadOnly), "there is no printer file");
    const QByteArray job = file.readAll();
    expect(job.startsWith("%!PS-Adobe-") && job.contains("%%Pages: 2"),
           "the printer file is no PostScript of two pages");
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);

    CPrintMan manager;
    expect(manager.init_printman() > 0, "there is no name for the report file");
    for (const std::string_view page : pages)
        manager.add_rpt_page(page.data(), static_cast<int>(page.size()));
    expect(manager.init_scr_buffer(8, 16) == 0, "the report cannot be indexed");
    expect(manager.get_page_count() == 2, "the report has not two pages");

    expect(manager.get_rpt_page(1) == 1, "the first page cannot be read");
    expect(list_items(manager) == 3, "the first page has not three items");
    paint_picture(manager);
    expect(manager.get_rpt_page(2) == 1, "the second page cannot be read");
    expect(list_items(manager) == 1, "the second page has not one item");
    expect(manager.get_rpt_page(2) == 0, "there is a third page");
    print_report(manager, QStringLiteral("host.ps"));
    return 0;
}
