#include "host/cli/command.h"
#include "host/cli/console.h"
#include "host/cli/printertable.h"
#include "host/files/inputfile.h"
#include "host/files/paths.h"
#include "host/jobs/interrupt.h"
#include "host/printers/printerini.h"
#include "host/printers/setupfile.h"

#include <printman/printer/paths.h>
#include <printman/printer/setuprecord.h>
#include <printman/printman.h>
#include <printman/toolkit/pagesizes.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace host {

namespace {

// A larger file is not a description of printers.
constexpr qsizetype max_description = 16 * 1024 * 1024;

/// A printer of the setup file.
struct Printer {
    std::array<char, 128> name{};
    std::array<char, 128> font_name{};
    DLWDEVMODE devmode{};
    FontInfo font{};
    PageInfo page{};
    MarginInfo margins{};

    bool find(const QString& file, const QByteArray& id) {
        return get_prt_data(file, id.constData(), name.data(), font_name.data(), nullptr, &devmode,
                            &font, &page, &margins) == 0;
    }
};

QByteArray inches(double value) {
    return QByteArray::number(value, 'g', 6);
}

QByteArray paper_of(int number) {
    const char* name = printman::page_size_name(number);
    return name ? QByteArray(name) : QByteArray::number(number) + '?';
}

QByteArray orientation_of(int number) {
    return number == 0 ? "portrait" : number == 1 ? "landscape" : QByteArray::number(number) + '?';
}

QList<QByteArray> row_of(const QByteArray& id, const Printer& printer) {
    const PageInfo& page = printer.page;
    const MarginInfo& margins = printer.margins;
    const QByteArray font(printer.font_name.data());
    return {id,
            printer.name.data(),
            paper_of(printer.devmode.paper_size),
            orientation_of(printer.devmode.orientation),
            font.isEmpty() ? QByteArray(printer.font.log_font.face_name) : font,
            QByteArray::number(printer.font.point_size),
            page.use_default_page_length != 0
                ? QByteArray::number(page.page_length) + ' ' + QByteArray::number(page.first_line) +
                      '-' + QByteArray::number(page.last_line)
                : QByteArray("-"),
            inches(margins.top) + ',' + inches(margins.bottom) + ',' + inches(margins.left) + ',' +
                inches(margins.right)};
}

Outcome list_printers() {
    Outcome readable = check_setup_file();
    if (!readable.ok())
        return readable;
    const QString file = get_prtbin_path();
    CPrintMan manager;
    manager.get_prt_id();
    QList<QList<QByteArray>> rows{
        {"ID", "NAME", "PAPER", "ORIENTATION", "FONT", "SIZE", "LINES", "MARGINS"}};
    QStringList ids = manager.printer_ids();
    // Of several printers with one id only the first can be used.
    ids.removeDuplicates();
    for (const QString& id : std::as_const(ids)) {
        Printer printer;
        if (printer.find(file, id.toLatin1()))
            rows << row_of(id.toLatin1(), printer);
    }
    print(rows.size() > 1 ? aligned_table(rows, {5})
                          : setup_file_path() + ": The file lists no printers\n");
    return Outcome::success();
}

Outcome make_setup_file(const QByteArray& description) {
    const QByteArray path = setup_file_path();
    if (!is_text(path))
        return Outcome::failure("cannot write " + path + ": " + not_text);
    Outcome read;
    QByteArray text;
    {
        const ExitOnInterrupt at_once;
        read = read_all(description, max_description, text);
    }
    std::vector<printman::SetupRecord> records;
    if (read.ok())
        read = read_printers(text, description, records);
    if (!read.ok())
        return read;
    if (!make_directory_of(path))
        return Outcome::failure("cannot write " + path + ": " + std::strerror(errno));
    return write_setup_file(path, records);
}

Outcome run_printers(const Arguments& arguments) {
    const auto description = arguments.value("make");
    if (description && description->isEmpty())
        return Outcome::wrong_usage("--make needs the name of a file");
    return description ? make_setup_file(*description) : list_printers();
}

} // namespace

const Command printers_command{
    .name = "printers",
    .operands = {},
    .summary = "list the printers of the setup file, or make it",
    .description =
        "Lists the printers of the setup file PRTSETUP.BIN in the settings directory, or in\n"
        "the one that the setting PRTINI names: id, name, paper, orientation, font, size,\n"
        "default page length with first and last line, and the top, bottom, left and\n"
        "right margin in inches.",
    .options = {{"make", "FILE.ini",
                 "make the setup file of this description, a section a\n"
                 "printer; an earlier one is replaced when all of the\n"
                 "description is right"}},
    .examples = "printman printers\n"
                "printman printers --make printers.ini",
    .run = run_printers,
};

} // namespace host
