#include "host/settings/inifile.h"

namespace host {

namespace {

enum class Kind { blank, comment, section, entry, unknown };

struct Line {
    Kind kind = Kind::unknown;
    QByteArray name;
    QByteArray value;
};

Line parse_line(const QByteArray& raw) {
    const QByteArray text = raw.trimmed();
    if (text.isEmpty())
        return {.kind = Kind::blank, .name = {}, .value = {}};
    if (text.startsWith(';') || text.startsWith('#'))
        return {.kind = Kind::comment, .name = {}, .value = {}};
    if (text.startsWith('[')) {
        const qsizetype end = text.indexOf(']');
        if (end < 0)
            return {};
        return {.kind = Kind::section, .name = text.mid(1, end - 1).trimmed(), .value = {}};
    }
    const qsizetype equals = text.indexOf('=');
    if (equals <= 0)
        return {};
    return {.kind = Kind::entry,
            .name = text.left(equals).trimmed(),
            .value = text.mid(equals + 1).trimmed()};
}

bool same_name(const QByteArray& a, const QByteArray& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool fits_a_line(const QByteArray& text) {
    return !text.contains('\n') && !text.contains('\r') && !text.contains('\0');
}

} // namespace

/// Where a key is, or where it would be added: byte positions in the file, -1 for none.
struct IniFile::Place {
    qsizetype entry_start = -1; ///< the line that holds the key
    qsizetype entry_end = -1;   ///< its end, before the line end
    QByteArray value;
    qsizetype section_end = -1; ///< after the last line of the section that is not blank
};

IniFile::Place IniFile::find(const QByteArray& section, const QByteArray& key) const {
    Place place;
    bool inside = section.isEmpty();
    bool first_part = inside;
    if (inside)
        place.section_end = 0;
    for (qsizetype start = 0; start < bytes_.size();) {
        qsizetype newline = bytes_.indexOf('\n', start);
        const qsizetype next = newline < 0 ? bytes_.size() : newline + 1;
        if (newline < 0)
            newline = bytes_.size();
        const qsizetype end =
            newline > start && bytes_.at(newline - 1) == '\r' ? newline - 1 : newline;
        const Line line = parse_line(bytes_.mid(start, end - start));
        if (line.kind == Kind::section) {
            inside = same_name(line.name, section) && !section.isEmpty();
            first_part = inside && place.section_end < 0;
        }
        if (first_part && line.kind != Kind::blank)
            place.section_end = next;
        if (inside && line.kind == Kind::entry && same_name(line.name, key)) {
            place.entry_start = start;
            place.entry_end = end;
            place.value = line.value;
            return place;
        }
        start = next;
    }
    return place;
}

std::optional<QByteArray> IniFile::value(const QByteArray& section, const QByteArray& key) const {
    const Place place = find(section.trimmed(), key.trimmed());
    if (place.entry_start < 0)
        return std::nullopt;
    const qsizetype zero = place.value.indexOf('\0');
    return zero < 0 ? place.value : place.value.left(zero);
}

bool IniFile::set(const QByteArray& section, const QByteArray& key, const QByteArray& value) {
    const QByteArray name = section.trimmed();
    const QByteArray line = key.trimmed() + '=' + value.trimmed();
    if (!fits_a_line(name) || name.contains(']') || !fits_a_line(line) || key.contains('=') ||
        parse_line(line).kind != Kind::entry)
        return false;

    const QByteArray line_end = bytes_.contains("\r\n") ? "\r\n" : "\n";
    const Place place = find(name, key.trimmed());
    if (place.entry_start >= 0) {
        bytes_.replace(place.entry_start, place.entry_end - place.entry_start, line);
        return true;
    }
    const qsizetype at = place.section_end >= 0 ? place.section_end : bytes_.size();
    QByteArray addition;
    if (at > 0 && bytes_.at(at - 1) != '\n')
        addition += line_end;
    if (place.section_end < 0)
        addition += '[' + name + ']' + line_end;
    bytes_.insert(at, addition + line + line_end);
    return true;
}

} // namespace host
