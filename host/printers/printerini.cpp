#include "host/printers/printerini.h"

#include "host/printers/paper.h"
#include "host/printers/recordfield.h"
#include "host/printers/sectionreader.h"
#include "host/settings/numbers.h"

#include <printman/toolkit/pagesizes.h>

#include <algorithm>
#include <array>

namespace host {

namespace {

using Record = printman::SetupRecord;

constexpr int max_line = 32767;
constexpr int max_points = 2000;
constexpr int normal_weight = 50; // on the scale of 0 to 99
constexpr int bold_weight = 75;

/// Reads a value into a record. Like the functions below it returns what was expected instead of
/// the value, an empty text when the value is valid.
using ReadValue = QByteArray (*)(const QByteArray& value, Record& record);

template <size_t N>
QByteArray read_text(const QByteArray& text, char (&field)[N]) {
    if (text.isEmpty())
        return "a text";
    if (text.size() >= static_cast<qsizetype>(N))
        return "a text of at most " + QByteArray::number(static_cast<qlonglong>(N - 1)) + " bytes";
    set_field(field, text);
    return {};
}

QByteArray read_number(const QByteArray& text, int low, int high, int32_t& number) {
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

QByteArray read_flag(const QByteArray& text, uint8_t& flag) {
    const auto read = parse_flag(text);
    if (!read)
        return "yes or no";
    flag = *read ? 1 : 0;
    return {};
}

QByteArray read_paper(const QByteArray& text, Record& record) {
    const auto number = parse_whole(text, 0, printman::page_size_count - 1);
    const auto paper = number ? number : paper_number(text);
    if (!paper)
        return "the name of a paper, such as A4 or Letter, or its number, 0 to 29";
    record.devmode.paper_size = *paper;
    return {};
}

QByteArray read_orientation(const QByteArray& text, Record& record) {
    const QByteArray word = text.toLower();
    if (word != "portrait" && word != "landscape")
        return "portrait or landscape";
    record.devmode.orientation = word == "landscape" ? 1 : 0;
    return {};
}

QByteArray read_margins(const QByteArray& text, Record& record) {
    const auto margins = parse_margins(text);
    if (!margins)
        return "top,bottom,left,right in inches, each from 0 to 100";
    record.margins = {.top = margins->top,
                      .bottom = margins->bottom,
                      .left = margins->left,
                      .right = margins->right};
    return {};
}

QByteArray read_page_line(const QByteArray& text, Record& record, int32_t& line) {
    QByteArray expected = read_number(text, 0, max_line, line);
    record.page.use_default_page_length = 1;
    return expected;
}

struct Key {
    const char* name;
    ReadValue read;
};

const std::array keys{
    Key{"name", [](const QByteArray& v, Record& r) { return read_text(v, r.printer_name); }},
    Key{"font",
        [](const QByteArray& v, Record& r) {
            const QByteArray expected = read_text(v, r.font_name);
            return expected.isEmpty() ? read_text(v, r.font.log_font.face_name) : expected;
        }},
    Key{"style", [](const QByteArray& v, Record& r) { return read_text(v, r.font.style_name); }},
    Key{"size", [](const QByteArray& v,
                   Record& r) { return read_number(v, 1, max_points, r.font.point_size); }},
    Key{"bold",
        [](const QByteArray& v, Record& r) {
            const auto bold = parse_flag(v);
            if (bold)
                r.font.log_font.weight = *bold ? bold_weight : normal_weight;
            return bold ? QByteArray() : QByteArray("yes or no");
        }},
    Key{"weight", [](const QByteArray& v,
                     Record& r) { return read_number(v, 0, 99, r.font.log_font.weight); }},
    Key{"italic",
        [](const QByteArray& v, Record& r) { return read_flag(v, r.font.log_font.italic); }},
    Key{"underline",
        [](const QByteArray& v, Record& r) { return read_flag(v, r.font.log_font.underline); }},
    Key{"strikeout",
        [](const QByteArray& v, Record& r) { return read_flag(v, r.font.log_font.strike_out); }},
    Key{"paper", read_paper},
    Key{"orientation", read_orientation},
    Key{"margins", read_margins},
    Key{"page_length",
        [](const QByteArray& v, Record& r) { return read_page_line(v, r, r.page.page_length); }},
    Key{"first_line",
        [](const QByteArray& v, Record& r) { return read_page_line(v, r, r.page.first_line); }},
    Key{"last_line",
        [](const QByteArray& v, Record& r) { return read_page_line(v, r, r.page.last_line); }},
};

/// Collects the printers of a description.
class PrinterCollector : public SectionHandler {
public:
    QByteArray start_section(const QByteArray& name) override;
    QByteArray read_entry(const QByteArray& key, const QByteArray& value) override;
    QByteArray end_section() override;
    QByteArray common_key(const QByteArray& key) const override {
        return key == "bold" ? "weight" : key;
    }

    std::vector<Record> records;

private:
    bool has_first_line_ = false; ///< the printer at hand
    bool has_last_line_ = false;
};

QByteArray PrinterCollector::start_section(const QByteArray& name) {
    for (const Record& record : records) {
        if (name == record.printer_id)
            return "there is already a printer '" + name + '\'';
    }
    Record fresh = default_printer();
    const QByteArray error = read_text(name, fresh.printer_id);
    if (!error.isEmpty())
        return "the id in [] must be " + error;
    has_first_line_ = false;
    has_last_line_ = false;
    records.push_back(fresh);
    return {};
}

QByteArray PrinterCollector::end_section() {
    const Record& record = records.back();
    const MarginInfo& margins = record.margins;
    QSizeF inches = printman::page_size_of(record.devmode.paper_size).size(QPageSize::Inch);
    if (record.devmode.orientation == 1)
        inches.transpose();
    if (!*record.printer_name)
        return "the printer needs a name";
    if (!leave_room({.top = margins.top,
                     .left = margins.left,
                     .bottom = margins.bottom,
                     .right = margins.right},
                    inches))
        return "the margins leave no room on the paper";
    const bool is_upside_down =
        has_first_line_ && has_last_line_ && record.page.last_line < record.page.first_line;
    return is_upside_down ? "the last line comes before the first line" : QByteArray();
}

QByteArray PrinterCollector::read_entry(const QByteArray& key, const QByteArray& value) {
    const auto* const found =
        std::ranges::find_if(keys, [&key](const Key& known) { return key == known.name; });
    if (found == keys.end())
        return "unknown key '" + key + '\'';
    has_first_line_ = has_first_line_ || key == "first_line";
    has_last_line_ = has_last_line_ || key == "last_line";
    const QByteArray expected = found->read(value, records.back());
    return expected.isEmpty() ? QByteArray()
                              : key + " needs " + expected + ", not '" + value + '\'';
}

} // namespace

Record default_printer() {
    Record record{};
    record.in_use = 1;
    record.font.point_size = 12;
    record.font.log_font.weight = normal_weight;
    set_field(record.font_name, "Courier New");
    set_field(record.font.log_font.face_name, "Courier New");
    return record;
}

Outcome read_printers(const QByteArray& text, const QByteArray& file,
                      std::vector<printman::SetupRecord>& records) {
    PrinterCollector collector;
    Outcome read = read_sections(text, file, collector);
    if (!read.ok())
        return read;
    if (collector.records.empty())
        return Outcome::failure(file + ": no printer is described");
    records = std::move(collector.records);
    return Outcome::success();
}

} // namespace host
