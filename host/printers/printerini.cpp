#include "host/printers/printerini.h"

#include "host/jobs/pagesetup.h"
#include "host/printers/sectionline.h"
#include "host/settings/numbers.h"

#include <printman/toolkit/pagesizes.h>

#include <QList>

#include <array>
#include <cstring>
#include <iterator>

namespace host {

namespace {

using Record = printman::SetupRecord;

constexpr int most_lines = 32767;
constexpr int most_points = 2000;
constexpr int normal_weight = 50; // on the scale of 0 to 99
constexpr int bold_weight = 75;

/// Reads a value into a record: empty, or what it should be.
using ReadValue = QByteArray (*)(const QByteArray& value, Record& record);

template <size_t N>
QByteArray put(const QByteArray& text, char (&field)[N]) {
    if (text.isEmpty())
        return "a text";
    if (text.size() >= static_cast<qsizetype>(N))
        return "a text of at most " + QByteArray::number(static_cast<qlonglong>(N - 1)) + " bytes";
    std::memset(field, 0, N);
    std::memcpy(field, text.constData(), static_cast<size_t>(text.size()));
    return {};
}

QByteArray put_number(const QByteArray& text, int low, int high, int32_t& number) {
    const auto read = parse_whole(text, low, high);
    if (!read)
        return "a whole number from " + QByteArray::number(low) + " to " + QByteArray::number(high);
    number = *read;
    return {};
}

std::optional<bool> parse_flag(const QByteArray& text) {
    const QByteArray word = text.toLower();
    if (word == "yes" || word == "true" || word == "1")
        return true;
    if (word == "no" || word == "false" || word == "0")
        return false;
    return std::nullopt;
}

QByteArray put_flag(const QByteArray& text, uint8_t& flag) {
    const auto read = parse_flag(text);
    if (!read)
        return "yes or no";
    flag = *read ? 1 : 0;
    return {};
}

QByteArray put_paper(const QByteArray& text, Record& record) {
    const auto number = parse_whole(text, 0, printman::page_size_count - 1);
    const auto paper = number ? number : paper_number(text);
    if (!paper)
        return "the name of a paper, such as A4 or Letter, or its number, 0 to 29";
    record.devmode.paper_size = *paper;
    return {};
}

QByteArray put_orientation(const QByteArray& text, Record& record) {
    const QByteArray word = text.toLower();
    if (word != "portrait" && word != "landscape")
        return "portrait or landscape";
    record.devmode.orientation = word == "landscape" ? 1 : 0;
    return {};
}

QByteArray put_margins(const QByteArray& text, Record& record) {
    const auto margins = parse_margins(text);
    if (!margins)
        return "top,bottom,left,right in inches, each from 0 to 100";
    record.margins = {.top = margins->top,
                      .bottom = margins->bottom,
                      .left = margins->left,
                      .right = margins->right};
    return {};
}

QByteArray put_page_line(const QByteArray& text, Record& record, int32_t& line) {
    QByteArray wrong = put_number(text, 0, most_lines, line);
    record.page.use_default_page_length = 1;
    return wrong;
}

struct Key {
    const char* name;
    ReadValue read;
};

const std::array keys{
    Key{"name", [](const QByteArray& v, Record& r) { return put(v, r.printer_name); }},
    Key{"font",
        [](const QByteArray& v, Record& r) {
            const QByteArray wrong = put(v, r.font_name);
            return wrong.isEmpty() ? put(v, r.font.log_font.face_name) : wrong;
        }},
    Key{"style", [](const QByteArray& v, Record& r) { return put(v, r.font.style_name); }},
    Key{"size", [](const QByteArray& v,
                   Record& r) { return put_number(v, 1, most_points, r.font.point_size); }},
    Key{"bold",
        [](const QByteArray& v, Record& r) {
            const auto bold = parse_flag(v);
            if (bold)
                r.font.log_font.weight = *bold ? bold_weight : normal_weight;
            return bold ? QByteArray() : QByteArray("yes or no");
        }},
    Key{"weight", [](const QByteArray& v,
                     Record& r) { return put_number(v, 0, 99, r.font.log_font.weight); }},
    Key{"italic",
        [](const QByteArray& v, Record& r) { return put_flag(v, r.font.log_font.italic); }},
    Key{"underline",
        [](const QByteArray& v, Record& r) { return put_flag(v, r.font.log_font.underline); }},
    Key{"strikeout",
        [](const QByteArray& v, Record& r) { return put_flag(v, r.font.log_font.strike_out); }},
    Key{"paper", put_paper},
    Key{"orientation", put_orientation},
    Key{"margins", put_margins},
    Key{"page_length",
        [](const QByteArray& v, Record& r) { return put_page_line(v, r, r.page.page_length); }},
    Key{"first_line",
        [](const QByteArray& v, Record& r) { return put_page_line(v, r, r.page.first_line); }},
    Key{"last_line",
        [](const QByteArray& v, Record& r) { return put_page_line(v, r, r.page.last_line); }},
};

/// Reads a description line by line.
class Reader {
public:
    /// @return empty, or what is wrong with the line, or with the printer that it ends
    QByteArray read(const QByteArray& raw);

    /// @return empty, or what is wrong with the last printer
    QByteArray finish() { return records.empty() ? QByteArray() : end_printer(); }

    std::vector<Record> records;
    qlonglong line = 0; ///< read last, from 1; after a fault, where it is

private:
    QByteArray start_printer(const QByteArray& id);
    QByteArray end_printer();
    QByteArray read_entry(const QByteArray& name, const QByteArray& value);

    QList<QByteArray> seen_;     ///< keys of the printer
    qlonglong section_line_ = 0; ///< where the printer begins
};

QByteArray Reader::read(const QByteArray& raw) {
    ++line;
    const SectionLine read = SectionLine::read(raw);
    if (!read.wrong.isEmpty() || read.kind == SectionLine::nothing)
        return read.wrong;
    if (read.kind == SectionLine::entry)
        return read_entry(read.name, read.value);
    const QByteArray wrong = finish();
    return wrong.isEmpty() ? start_printer(read.name) : wrong;
}

QByteArray Reader::start_printer(const QByteArray& id) {
    for (const Record& record : records) {
        if (id == record.printer_id)
            return "there is a printer '" + id + "' already";
    }
    Record fresh{};
    fresh.in_use = 1;
    fresh.font.point_size = 12;
    fresh.font.log_font.weight = normal_weight;
    put("Courier New", fresh.font_name);
    put("Courier New", fresh.font.log_font.face_name);
    const QByteArray wrong = put(id, fresh.printer_id);
    if (!wrong.isEmpty())
        return "the id in [] must be " + wrong;
    seen_.clear();
    section_line_ = line;
    records.push_back(fresh);
    return {};
}

QByteArray Reader::end_printer() {
    const Record& record = records.back();
    const MarginInfo& margins = record.margins;
    QSizeF inches = printman::page_size_of(record.devmode.paper_size).size(QPageSize::Inch);
    if (record.devmode.orientation == 1)
        inches.transpose();
    const bool fits = leave_room({.top = margins.top,
                                  .left = margins.left,
                                  .bottom = margins.bottom,
                                  .right = margins.right},
                                 inches);
    const PageInfo& page = record.page;
    const bool is_upside_down = seen_.contains("first_line") && seen_.contains("last_line") &&
                                page.last_line < page.first_line;
    if (*record.printer_name && fits && !is_upside_down)
        return {};
    line = section_line_;
    return !*record.printer_name ? QByteArray("the printer needs a name")
           : !fits               ? QByteArray("the margins leave no room on the paper")
                                 : QByteArray("the last line comes before the first line");
}

QByteArray Reader::read_entry(const QByteArray& name, const QByteArray& value) {
    if (records.empty())
        return "a key stands before the first section";
    for (const Key& key : keys) {
        if (name != key.name)
            continue;
        const bool is_weight = name == "weight" || name == "bold";
        if (seen_.contains(is_weight ? QByteArray("weight") : name))
            return name + " is given twice";
        seen_ << (is_weight ? QByteArray("weight") : name);
        const QByteArray wanted = key.read(value, records.back());
        return wanted.isEmpty() ? QByteArray()
                                : name + " needs " + wanted + ", not '" + value + '\'';
    }
    return "there is no key '" + name + '\'';
}

} // namespace

Outcome read_printers(const QByteArray& text, const QByteArray& file,
                      std::vector<printman::SetupRecord>& records) {
    Reader reader;
    const auto fault = [&](const QByteArray& what) {
        return Outcome::failure(file + ':' + QByteArray::number(reader.line) + ": " + what);
    };
    const QByteArray byte_order_mark("\xef\xbb\xbf");
    const qsizetype start = text.startsWith(byte_order_mark) ? byte_order_mark.size() : 0;
    for (const QByteArray& line : text.mid(start).split('\n')) {
        const QByteArray wrong = reader.read(line);
        if (!wrong.isEmpty())
            return fault(wrong);
    }
    const QByteArray wrong = reader.finish();
    if (!wrong.isEmpty())
        return fault(wrong);
    if (reader.records.empty())
        return Outcome::failure(file + ": it describes no printer");
    records = std::move(reader.records);
    return Outcome::success();
}

} // namespace host
