#include "host/command.h"
#include "host/console.h"
#include "host/pendingfile.h"
#include "host/printerini.h"
#include "host/printertable.h"
#include "host/report.h"

#include <printman/core/printman.h>
#include <printman/printer/paths.h>
#include <printman/printer/setuprecord.h>
#include <printman/toolkit/pagesizes.h>

#include <QFile>

#include <array>
#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace host {

namespace {

// Nobody describes so many printers: a larger file is something else.
constexpr qint64 max_description = 16 * 1024 * 1024;

/// What the setup file says of a printer.
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
    const char* name = page_size_name(number);
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

/// Why the setup file cannot be read; one without any bytes can.
Outcome check_setup_file(const QByteArray& path) {
    struct stat status {};
    const bool is_empty =
        ::stat(path.constData(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0;
    return is_empty ? Outcome::success() : check_input(path);
}

Outcome list_printers() {
    const QString file = get_prtbin_path();
    const QByteArray path = QFile::encodeName(file);
    Outcome readable = check_setup_file(path);
    if (!readable.ok())
        return readable;
    CPrintMan manager;
    manager.get_prt_id();
    QList<QList<QByteArray>> rows{
        {"ID", "NAME", "PAPER", "ORIENTATION", "FONT", "SIZE", "LINES", "MARGINS"}};
    QStringList ids = manager.printer_ids();
    // Nobody can print on a second one of the same id.
    ids.removeDuplicates();
    for (const QString& id : std::as_const(ids)) {
        Printer printer;
        if (printer.find(file, id.toLatin1()))
            rows << row_of(id.toLatin1(), printer);
    }
    print(rows.size() > 1 ? aligned_table(rows, {5}) : path + ": There are no printers in it\n");
    return Outcome::success();
}

Outcome make_setup_file(const QByteArray& description) {
    Outcome readable = check_input(description);
    if (!readable.ok())
        return readable;
    QFile file(QFile::decodeName(description));
    if (!file.open(QIODevice::ReadOnly))
        return Outcome::failure(description + ": " + QFile::encodeName(file.errorString()));
    if (file.size() > max_description)
        return Outcome::failure(description + ": The file is too large");
    std::vector<printman::SetupRecord> records;
    Outcome read = read_printers(file.read(max_description), description, records);
    if (!read.ok())
        return read;
    const QByteArray path = QFile::encodeName(get_prtbin_path());
    PendingFile pending;
    const std::string bytes = printman::setup_file_bytes(records);
    if (!make_directory_of(path))
        return Outcome::failure("cannot write " + path + ": " + std::strerror(errno));
    return pending.open(path) && pending.write(QByteArray::fromStdString(bytes)) && pending.commit()
               ? Outcome::success()
               : Outcome::failure(pending.error());
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
    .about = "Lists the printers of the setup file PRTSETUP.BIN in the settings directory, or in\n"
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
