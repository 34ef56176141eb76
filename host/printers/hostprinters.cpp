#include "host/printers/hostprinters.h"

#include "host/printers/printerini.h"
#include "host/printers/recordfield.h"
#include "host/printers/sectionline.h"
#include "host/settings/settings.h"

#include <printman/printer/papersize.h>
#include <printman/printman.h>

#include <algorithm>

namespace host {

namespace {

using printman::SetupRecord;

constexpr const char* defined_file = "dlwserver.ini";
constexpr const char* local_file = "dlwunix.ini";
// Nobody picks a printer from a longer list: a file with more is something else.
constexpr int most_printers = 1000;
constexpr qsizetype most_bytes = 1024 * 1024;

/// Reads a list's file and looks whether it can be one.
Outcome read_list(const Settings& settings, const char* file, QByteArray& text) {
    Outcome read = settings.read(file, text);
    const QByteArray path = settings.path_of(file);
    if (!read.ok())
        return read;
    if (text.size() > most_bytes)
        return Outcome::failure(path + ": The file is too large");
    const QByteArray byte_order_mark("\xef\xbb\xbf");
    if (text.startsWith(byte_order_mark))
        text.remove(0, byte_order_mark.size());
    const QList<QByteArray> lines = text.split('\n');
    const auto sections = std::ranges::count_if(
        lines, [](const QByteArray& line) { return line.trimmed().startsWith('['); });
    return sections > most_printers
               ? Outcome::failure(path + ": There are more than " +
                                  QByteArray::number(most_printers) + " printers in it")
               : Outcome::success();
}

bool says_nothing(const QByteArray& text) {
    const QList<QByteArray> lines = text.split('\n');
    return std::ranges::all_of(lines, [](const QByteArray& line) {
        const SectionLine read = SectionLine::read(line);
        return read.kind == SectionLine::nothing && read.wrong.isEmpty();
    });
}

Outcome read_defined(const Settings& settings, std::vector<SetupRecord>& printers) {
    QByteArray text;
    Outcome read = read_list(settings, defined_file, text);
    if (!read.ok() || says_nothing(text))
        return read;
    return read_printers(text, settings.path_of(defined_file), printers);
}

Outcome read_local(const Settings& settings, std::vector<LocalPrinter>& printers) {
    QByteArray text;
    Outcome read = read_list(settings, local_file, text);
    return read.ok() ? read_local_printers(text, settings.path_of(local_file), printers) : read;
}

/// A printer of which only the queue is known.
SetupRecord usual_setup(const QByteArray& id, const QByteArray& queue) {
    SetupRecord record{};
    record.in_use = 1;
    put(record.printer_id, id);
    put(record.printer_name, queue);
    put(record.font_name, "Courier New");
    put(record.font.log_font.face_name, "Courier New");
    record.font.log_font.weight = 50;
    record.font.point_size = 12;
    return record;
}

} // namespace

HostPrinters HostPrinters::read(const Settings& settings) {
    HostPrinters printers;
    for (const Outcome& outcome :
         {read_defined(settings, printers.defined), read_local(settings, printers.local)}) {
        if (!outcome.ok())
            printers.faults << outcome.message;
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
        return text_of(record.printer_id) == id;
    });
    const bool is_local = local != printers.local.end();
    const bool is_defined = defined != printers.defined.end();
    if (is_local && is_defined) {
        ServerPrinter printer{.setup = *defined, .queue = local->queue};
        put(printer.setup.printer_name, local->queue);
        return printer;
    }
    if (is_local)
        return ServerPrinter{.setup = usual_setup(id, local->queue), .queue = local->queue};
    if (is_defined)
        return ServerPrinter{.setup = *defined, .queue = text_of(defined->printer_name)};
    return std::nullopt;
}

WinPrtSetup shown_printer(const SetupRecord& record) {
    WinPrtSetup printer{};
    put(printer.printer_id, text_of(record.printer_id));
    put(printer.printer_name, text_of(record.printer_name));
    put(printer.orientation_name, record.devmode.orientation == 1 ? "Landscape" : "Portrait");
    get_paper_size(static_cast<short>(record.devmode.paper_size), printer.paper_name,
                   sizeof printer.paper_name);
    put(printer.font_name, text_of(record.font_name));
    put(printer.style_name, text_of(record.font.style_name));
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
    put(printer.printer_id, local.id);
    put(printer.port, local.queue);
    put(printer.description, local.description);
    printer.page_length = local.page_length;
    printer.first_line = local.first_line;
    printer.last_line = local.last_line;
    return printer;
}

} // namespace host
