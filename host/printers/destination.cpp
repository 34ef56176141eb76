#include "host/printers/destination.h"

#include "host/printers/recordfield.h"
#include "host/settings/numbers.h"
#include "host/settings/settings.h"

#include <QFile>
#include <QSysInfo>

#include <algorithm>
#include <array>

namespace host {

namespace {

constexpr const char* section = "destination";
constexpr int max_copies = 99; // the dialog's limit

/// The words for PrintDest::dest.
constexpr std::array<const char*, 4> destinations{"", "screen", "printer", "file"};

/// A text as a line of a settings file can hold it: control characters, '%', and blanks at the ends
/// as %XX.
QByteArray encode_line(const QByteArray& text) {
    QByteArray line;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char c = text.at(i);
        const auto code = static_cast<unsigned char>(c);
        const bool is_end = i == 0 || i == text.size() - 1;
        if (code < ' ' || code == 0x7f || c == '%' || (c == ' ' && is_end))
            line += '%' + QByteArray(1, c).toHex().toUpper();
        else
            line += c;
    }
    return line;
}

/// Sets a field to a text that fits; any other text leaves the field as it is.
template <size_t N>
void set_whole(char (&field)[N], const QByteArray& text) {
    if (text.size() < static_cast<qsizetype>(N) && !text.contains('\0'))
        set_field(field, text);
}

/// The values of the section.
class Record {
public:
    explicit Record(const Settings& settings) : settings_(settings) {}

    QByteArray word(const char* key) const {
        return settings_.kept_value(menu_file, section, key).value_or(QByteArray());
    }

    bool has(const char* key) const {
        return settings_.kept_value(menu_file, section, key).has_value();
    }

    QByteArray text(const char* key) const { return QByteArray::fromPercentEncoding(word(key)); }

    uint8_t flag(const char* key, bool fallback) const {
        const QByteArray value = word(key).toLower();
        return value == "yes" || (fallback && value != "no") ? 1 : 0;
    }

    int copies() const { return parse_whole(word("COPIES"), 1, max_copies).value_or(1); }

    int destination() const {
        const QByteArray value = word("DEST").toLower();
        const auto* const found = std::ranges::find_if(
            destinations, [&value](const char* name) { return *name && value == name; });
        return found == destinations.end() ? printman::to_screen
                                           : static_cast<int>(found - destinations.begin());
    }

private:
    const Settings& settings_;
};

QByteArray word_of(uint8_t flag) {
    return flag ? "yes" : "no";
}

} // namespace

PrintDest read_destination(const Settings& settings, const QByteArray& station_printer) {
    const Record kept(settings);
    PrintDest record{};
    record.dest = kept.destination();
    record.server_print = kept.flag("SERVER_PRINT", false);
    set_whole(record.prt_id, station_printer);
    if (kept.has("PRT_ID"))
        set_whole(record.prt_id, kept.text("PRT_ID"));
    record.copies = kept.copies();
    record.collate = kept.flag("COLLATE", true);
    record.page_length = kept.flag("PAGE_LENGTH", false);
    record.sel_prt_font = kept.flag("SEL_PRT_FONT", false);
    set_whole(record.path, kept.text("PATH"));
    record.no_page_fmt = kept.flag("NO_PAGE_FMT", false);
    return record;
}

bool keep_destination(Settings& settings, const PrintDest& record) {
    const bool is_known = record.dest > 0 && record.dest < static_cast<int>(destinations.size());
    return settings.keep(
        menu_file, section,
        {{"DEST", destinations[static_cast<size_t>(is_known ? record.dest : printman::to_screen)]},
         {"SERVER_PRINT", word_of(record.server_print)},
         {"PRT_ID", encode_line(printer_of(record))},
         {"COPIES", QByteArray::number(record.copies)},
         {"COLLATE", word_of(record.collate)},
         {"PAGE_LENGTH", word_of(record.page_length)},
         {"SEL_PRT_FONT", word_of(record.sel_prt_font)},
         {"PATH", encode_line(path_of(record))},
         {"NO_PAGE_FMT", word_of(record.no_page_fmt)}});
}

QByteArray printer_of(const PrintDest& record) {
    return field_text(record.prt_id);
}

QByteArray path_of(const PrintDest& record) {
    return field_text(record.path);
}

QByteArray station_key(const Settings& settings) {
    const QByteArray key = settings.variable("STATION");
    return key.isEmpty() ? QFile::encodeName(QSysInfo::machineHostName()) : key;
}

} // namespace host
