#include "host/printers/localprinterini.h"

#include "host/printers/sectionline.h"
#include "host/settings/numbers.h"

#include <printman/printer/prtsetup.h>

#include <QList>

#include <algorithm>

namespace host {

namespace {

constexpr int most_lines = 32767;
constexpr qsizetype longest_id = sizeof UnixPrtSetup::printer_id - 1;

/// Reads a list line by line; each step answers what is wrong, empty for nothing.
class Reader {
public:
    QByteArray read(const QByteArray& raw);
    void finish();

    std::vector<LocalPrinter> printers;

private:
    QByteArray start_printer(const QByteArray& id);
    QByteArray read_entry(const QByteArray& name, const QByteArray& value);

    QList<QByteArray> seen_; ///< keys of the printer
};

QByteArray Reader::read(const QByteArray& raw) {
    const SectionLine line = SectionLine::read(raw);
    if (!line.wrong.isEmpty() || line.kind == SectionLine::nothing)
        return line.wrong;
    if (line.kind == SectionLine::entry)
        return read_entry(line.name, line.value);
    finish();
    return start_printer(line.name.left(longest_id));
}

void Reader::finish() {
    if (!printers.empty() && printers.back().queue.isEmpty())
        printers.back().queue = printers.back().id;
}

QByteArray Reader::start_printer(const QByteArray& id) {
    if (id.isEmpty())
        return "the printer needs an id in []";
    const bool is_known = std::ranges::find(printers, id, &LocalPrinter::id) != printers.end();
    if (is_known)
        return "there is a printer '" + id + "' already";
    seen_.clear();
    printers.push_back({.id = id, .queue = {}, .description = {}});
    return {};
}

QByteArray Reader::read_entry(const QByteArray& name, const QByteArray& value) {
    if (printers.empty())
        return "a key stands before the first section";
    if (seen_.contains(name))
        return name + " is given twice";
    seen_ << name;
    LocalPrinter& printer = printers.back();
    if (name == "port") {
        printer.queue = value;
        return {};
    }
    if (name == "description") {
        printer.description = value;
        return {};
    }
    int* const line = name == "page_length"  ? &printer.page_length
                      : name == "first_line" ? &printer.first_line
                      : name == "last_line"  ? &printer.last_line
                                             : nullptr;
    if (!line)
        return "there is no key '" + name + '\'';
    const auto number = parse_whole(value, 0, most_lines);
    *line = number.value_or(0);
    return number ? QByteArray()
                  : name + " needs a whole number from 0 to " + QByteArray::number(most_lines) +
                        ", not '" + value + '\'';
}

} // namespace

Outcome read_local_printers(const QByteArray& text, const QByteArray& file,
                            std::vector<LocalPrinter>& printers) {
    Reader reader;
    qlonglong number = 0;
    for (const QByteArray& line : text.split('\n')) {
        ++number;
        const QByteArray wrong = reader.read(line);
        if (!wrong.isEmpty())
            return Outcome::failure(file + ':' + QByteArray::number(number) + ": " + wrong);
    }
    reader.finish();
    printers = std::move(reader.printers);
    return Outcome::success();
}

} // namespace host
