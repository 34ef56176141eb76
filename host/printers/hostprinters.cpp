#include "host/printers/hostprinters.h"

#include "host/printers/printerini.h"
#include "host/printers/recordfield.h"
#include "host/printers/sectionreader.h"
#include "host/settings/settings.h"

#include <printman/printer/papersize.h>
#include <printman/printman.h>

#include <algorithm>

namespace host {

namespace {

using printman::SetupRecord;

constexpr const char* defined_file = "dlwserver.ini";
constexpr const char* local_file = "dlwunix.ini";
// A larger file is not a list of printers.
constexpr int max_printers = 1000;
constexpr qsizetype max_bytes = 1024 * 1024;

/// Reads the file of a list, without its byte order mark, and checks its size.
Outcome read_list(const Settings& settings, const char* file, QByteArray& text) {
    Outcome read = settings.read(file, text);
    const QByteArray path = settings.path_of(file);
    if (!read.ok())
        return read;
    if (text.size() > max_bytes)
        return Outcome::failure(path + ": The file is too large");
    text = without_byte_order_mark(text);
    const QList<QByteArray> lines = text.split('\n');
    const auto sections = std::ranges::count_if(
        lines, [](const QByteArray& line) { return line.trimmed().startsWith('['); });
    return sections > max_printers
               ? Outcome::failure(path + ": The file lists more than " +
                                  QByteArray::number(max_printers) + " printers")
               : Outcome::success();
}

Outcome read_defined(const Settings& settings, std::vector<SetupRecord>& printers) {
    QByteArray text;
    Outcome read = read_list(settings, defined_file, text);
    if (!read.ok() || is_without_content(text))
        return read;
    return read_printers(text, settings.path_of(defined_file), printers);
}

Outcome read_local(const Settings& settings, std::vector<LocalPrinter>& printers) {
    QByteArray text;
    Outcome read = read_list(settings, local_file, text);
    return read.ok() ? read_local_printers(text, settings.path_of(local_file), printers) : read;
}

/// A printer of which only the queue is known.
SetupRecord default_setup(const QByteArray& id, const QByteArray& queue) {
    SetupRecord record = default_printer();
    set_field(record.printer_id, id);
    set_field(record.printer_name, queue);
    return record;
}

} // namespace

HostPrinters HostPrinters::read(const Settings& settings) {
    HostPrinters printers;
    for (const Outcome& outcome :
         {read_defined(settings, printers.defined), read_local(settings, printers.local)}) {
        if (!outcome.ok())
            printers.errors << outcome.message;
    }
    return printers;
}

void HostPrinters::hand_to(CPrintMan& manager) const {
    manager.set_numwin_printer(static_cast<int>(defined.size()));
    for (const SetupRecord& record : defined) {
        const WinPrtSetup printer = shown_printer(record);
        manager.add_win_printer(&printer);
    }
    manager.set_numunix_printer(static_cast<int>(local.size()));
    for (const LocalPrinter& queue : local) {
        const UnixPrtSetup printer = shown_printer(queue);
        manager.add_unix_printer(&printer);
    }
}

bool HostPrinters::same_as(const HostPrinters& other) const {
    return local == other.local &&
           printman::setup_file_bytes(defined) == printman::setup_file_bytes(other.defined);
}

std::optional<ServerPrinter> find_server_printer(const HostPrinters& printers,
                                                 const QByteArray& id) {
    const auto local = std::ranges::find(printers.local, id, &LocalPrinter::id);
    const auto defined = std::ranges::find_if(printers.defined, [&id](const SetupRecord& record) {
        return field_text(record.printer_id) == id;
    });
    const bool is_local = local != printers.local.end();
    const bool is_defined = defined != printers.defined.end();
    if (is_local && is_defined) {
        ServerPrinter printer{.setup = *defined, .queue = local->queue};
        set_field(printer.setup.printer_name, local->queue);
        return printer;
    }
    if (is_local)
        return ServerPrinter{.setup = default_setup(id, local->queue), .queue = local->queue};
    if (is_defined)
        return ServerPrinter{.setup = *defined, .queue = field_text(defined->printer_name)};
    return std::nullopt;
}

WinPrtSetup shown_printer(const SetupRecord& record) {
    WinPrtSetup printer{};
    set_field(printer.printer_id, field_text(record.printer_id));
    set_field(printer.printer_name, field_text(record.printer_name));
    set_field(printer.orientation_name, record.devmode.orientation == 1 ? "Landscape" : "Portrait");
    get_paper_size(static_cast<short>(record.devmode.paper_size), printer.paper_name,
                   sizeof printer.paper_name);
    set_field(printer.font_name, field_text(record.font_name));
    set_field(printer.style_name, field_text(record.font.style_name));
    printer.point_size = record.font.point_size;
    if (record.page.use_default_page_length != 0) {
        printer.page_length = record.page.page_length;
        printer.first_line = record.page.first_line;
        printer.last_line = record.page.last_line;
    }
    printer.top = record.margins.top;
    printer.bottom = record.margins.bottom;
    printer.left = record.margins.left;
    printer.right = record.margins.right;
    return printer;
}

UnixPrtSetup shown_printer(const LocalPrinter& local) {
    UnixPrtSetup printer{};
    set_field(printer.printer_id, local.id);
    set_field(printer.port, local.queue);
    set_field(printer.description, local.description);
    printer.page_length = local.page_length;
    printer.first_line = local.first_line;
    printer.last_line = local.last_line;
    return printer;
}

} // namespace host
