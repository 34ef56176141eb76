#include "host/printers/localprinterini.h"

#include "host/printers/sectionreader.h"
#include "host/settings/numbers.h"

#include <printman/printer/prtsetup.h>

#include <algorithm>

namespace host {

namespace {

constexpr int max_line = 32767;
constexpr qsizetype max_id = sizeof UnixPrtSetup::printer_id - 1;

class PrinterCollector : public SectionHandler {
public:
    QByteArray start_section(const QByteArray& name) override;
    QByteArray read_entry(const QByteArray& key, const QByteArray& value) override;
    QByteArray end_section() override;

    std::vector<LocalPrinter> printers;
};

QByteArray PrinterCollector::start_section(const QByteArray& name) {
    const QByteArray id = name.left(max_id);
    if (id.isEmpty())
        return "the printer needs an id in []";
    const bool is_known = std::ranges::find(printers, id, &LocalPrinter::id) != printers.end();
    if (is_known)
        return "there is already a printer '" + id + '\'';
    printers.push_back({.id = id, .queue = {}, .description = {}});
    return {};
}

QByteArray PrinterCollector::end_section() {
    LocalPrinter& printer = printers.back();
    if (printer.queue.isEmpty())
        printer.queue = printer.id;
    return {};
}

QByteArray PrinterCollector::read_entry(const QByteArray& key, const QByteArray& value) {
    LocalPrinter& printer = printers.back();
    if (key == "port") {
        printer.queue = value;
        return {};
    }
    if (key == "description") {
        printer.description = value;
        return {};
    }
    int* const line = key == "page_length"  ? &printer.page_length
                      : key == "first_line" ? &printer.first_line
                      : key == "last_line"  ? &printer.last_line
                                            : nullptr;
    if (!line)
        return "unknown key '" + key + '\'';
    const auto number = parse_whole(value, 0, max_line);
    *line = number.value_or(0);
    return number ? QByteArray()
                  : key + " needs a whole number from 0 to " + QByteArray::number(max_line) +
                        ", not '" + value + '\'';
}

} // namespace

Outcome read_local_printers(const QByteArray& text, const QByteArray& file,
                            std::vector<LocalPrinter>& printers) {
    PrinterCollector collector;
    Outcome read = read_sections(text, file, collector);
    if (read.ok())
        printers = std::move(collector.printers);
    return read;
}

} // namespace host
