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

constexpr const char* file = "dlwmenu.ini";
constexpr const char* section = "destination";
constexpr int most_copies = 99; // as many as the dialog takes

constexpr std::array<const char*, 4> destinations{"", "screen", "printer", "file"};

/// What a line of a settings file can hold: line ends and other controls, '%' and blanks at the
/// ends as %XX.
QByteArray line_of(const QByteArray& text) {
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

/// Takes a text that fits; any other leaves the field as it is.
template <size_t N>
void put_whole(char (&field)[N], const QByteArray& text) {
    if (text.size() < static_cast<qsizetype>(N) && !text.contains('\0'))
        put(field, text);
}

/// The values of the section.
class Record {
public:
    explicit Record(const Settings& settings) : settings_(settings) {}

    QByteArray word(const char* key) const {
        return settings_.kept_value(file, section, key).value_or(QByteArray());
    }

    bool has(const char* key) const { return settings_.kept_value(file, section, key).has_value(); }

    QByteArray text(const char* key) const { return QByteArray::fromPercentEncoding(word(key)); }

    uint8_t flag(const char* key, bool usual) const {
        const QByteArray value = word(key).toLower();
        return value == "yes" || (usual && value != "no") ? 1 : 0;
    }

    int copies() const { return parse_whole(word("COPIES"), 1, most_copies).value_or(1); }

    int destination() const {
        const QByteArray value = word("DEST").toLower();
        const auto* const found = std::ranges::find_if(
            destinations, [&value](const char* name) { return *name && value == name; });
        return found == destinations.end() ? 1 : static_cast<int>(found - destinations.begin());
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
    put_whole(record.prt_id, station_printer);
    if (kept.has("PRT_ID"))
        put_whole(record.prt_id, kept.text("PRT_ID"));
    record.copies = kept.copies();
    record.collate = kept.flag("COLLATE", true);
    record.page_length = kept.flag("PAGE_LENGTH", false);
    record.sel_prt_font = kept.flag("SEL_PRT_FONT", false);
    put_whole(record.path, kept.text("PATH"));
    record.no_page_fmt = kept.flag("NO_PAGE_FMT", false);
    return record;
}

bool keep_destination(Settings& settings, const PrintDest& record) {
    const bool is_known = record.dest > 0 && record.dest < static_cast<int>(destinations.size());
    return settings.keep(file, section,
                         {{"DEST", destinations[is_known ? static_cast<size_t>(record.dest) : 1]},
                          {"SERVER_PRINT", word_of(record.server_print)},
                          {"PRT_ID", line_of(printer_of(record))},
                          {"COPIES", QByteArray::number(record.copies)},
                          {"COLLATE", word_of(record.collate)},
                          {"PAGE_LENGTH", word_of(record.page_length)},
                          {"SEL_PRT_FONT", word_of(record.sel_prt_font)},
                          {"PATH", line_of(path_of(record))},
                          {"NO_PAGE_FMT", word_of(record.no_page_fmt)}});
}

QByteArray printer_of(const PrintDest& record) {
    return text_of(record.prt_id);
}

QByteArray path_of(const PrintDest& record) {
    return text_of(record.path);
}

QByteArray station_key(const Settings& settings) {
    const QByteArray key = settings.value(file, "env", "STATION").value_or(QByteArray());
    return key.isEmpty() ? QFile::encodeName(QSysInfo::machineHostName()) : key;
}

} // namespace host
