// The four services that libprintman takes from its host program, over settings files. Copy this
// file into your program as it stands; what you may want to adapt comes first.
//
// A settings file has lines KEY=value below lines [section], and comments after ';' or '#'. Neither
// the case of sections and keys nor blanks around names and values count; of equal keys the first
// counts. The files are read anew for every question, so that a change that another program makes
// takes effect at once.
#include <printman/printer/hostservices.h>
#include <printman/printman_export.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <optional>

namespace {

/// The environment variable that names the directory of the settings files; and where they are when
/// it is not set, below the user's configuration directory, which is usually ~/.config.
constexpr const char* directory_variable = "REPORT_HOST_SETTINGS";
constexpr const char* directory_name = "report-host";

/// Where @p file is: an absolute name stays as it is, any other is below the settings directory.
QString path_of(const QByteArray& file) {
    QString directory = QFile::decodeName(qgetenv(directory_variable));
    if (directory.isEmpty())
        directory = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' +
                    QString::fromLatin1(directory_name);
    return QDir(directory).filePath(QFile::decodeName(file));
}

/// What is in the file: nothing when there is none, and no value when it cannot be read. Only a
/// regular file is opened; a pipe would wait for its writer.
std::optional<QByteArray> read_file(const QString& path) {
    QFile file(path);
    if (!file.exists())
        return QByteArray();
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

/// Names are compared in this form.
QByteArray plain_name(const QByteArray& name) {
    return name.trimmed().toLower();
}

struct Line {
    QByteArray bytes;   ///< as they are in the file, line end included
    QByteArray section; ///< that the line is in or begins
    QByteArray key;     ///< empty for a line that holds no setting
    QByteArray value;
};

Line parse_line(const QByteArray& bytes, const QByteArray& section_before) {
    Line line{bytes, section_before, {}, {}};
    const QByteArray text = bytes.trimmed();
    const qsizetype equals = text.indexOf('=');
    if (text.startsWith('[')) {
        if (const qsizetype end = text.indexOf(']'); end > 0)
            line.section = plain_name(text.mid(1, end - 1));
    } else if (equals > 0 && !text.startsWith(';') && !text.startsWith('#')) {
        line.key = plain_name(text.left(equals));
        line.value = text.mid(equals + 1).trimmed();
    }
    return line;
}

QList<Line> parse(const QByteArray& bytes) {
    QList<Line> lines;
    for (qsizetype start = 0; start < bytes.size();) {
        const qsizetype newline = bytes.indexOf('\n', start);
        const qsizetype end = newline < 0 ? bytes.size() : newline + 1;
        const QByteArray section = lines.isEmpty() ? QByteArray() : lines.last().section;
        lines.append(parse_line(bytes.mid(start, end - start), section));
        start = end;
    }
    return lines;
}

/// The index of the line that holds the setting; the number of lines when none does.
qsizetype find(const QList<Line>& lines, const QByteArray& section, const QByteArray& key) {
    const auto holds_it = [s = plain_name(section), k = plain_name(key)](const Line& line) {
        return line.section == s && line.key == k && !k.isEmpty();
    };
    return std::ranges::find_if(lines, holds_it) - lines.begin();
}

/// The value in the text @p bytes of a settings file; none when section or key is missing.
std::optional<QByteArray> value_in(const QByteArray& bytes, const QByteArray& section,
                                   const QByteArray& key) {
    const QList<Line> lines = parse(bytes);
    const qsizetype at = find(lines, section, key);
    if (at == lines.size())
        return std::nullopt;
    return lines.at(at).value;
}

std::optional<QByteArray> value_in_file(const char* file, const char* section, const char* key) {
    return value_in(read_file(path_of(file)).value_or(QByteArray()), section, key);
}

/// The text @p bytes of a settings file with another value: in the place of the earlier one, else
/// after the last line of the section that is not blank, else in a new section at the end. Every
/// other line stays as it is.
QByteArray with_value(const QByteArray& bytes, const QByteArray& section, const QByteArray& key,
                      const QByteArray& value) {
    const QByteArray line_end = bytes.contains("\r\n") ? "\r\n" : "\n";
    QByteArray addition = key.trimmed() + '=' + value.trimmed() + line_end;
    QList<Line> lines = parse(bytes);
    const qsizetype earlier = find(lines, section, key);
    if (earlier < lines.size()) {
        lines[earlier].bytes = addition;
    } else {
        const auto last = std::find_if(lines.rbegin(), lines.rend(), [&](const Line& line) {
            return line.section == plain_name(section) && !line.bytes.trimmed().isEmpty();
        });
        qsizetype place = lines.rend() - last;
        if (last == lines.rend() && !section.isEmpty()) {
            addition.prepend('[' + section.trimmed() + ']' + line_end);
            place = lines.size();
        }
        if (place > 0 && !lines.at(place - 1).bytes.endsWith('\n'))
            lines[place - 1].bytes += line_end;
        lines.insert(place, Line{addition, {}, {}, {}});
    }
    QByteArray text;
    for (const Line& line : lines)
        text += line.bytes;
    return text;
}

/// Writes a new file beside, which then takes the place of the old one in one step: whatever goes
/// wrong, and whenever somebody reads it, one of the two is there, and whole.
bool replace_file(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly))
        return false;
    // On a full disk commit() alone would succeed, and leave an empty file.
    const bool written = file.write(bytes) == bytes.size() && file.flush();
    return written && file.commit();
}

using Colour = std::array<int, 3>; // red, green, blue

/// The colour "r,g,b", each number cut to 0..255; none for any other text.
std::optional<Colour> parse_colour(const QByteArray& text) {
    const QList<QByteArray> parts = text.split(',');
    Colour colour{};
    if (parts.size() != static_cast<qsizetype>(colour.size()))
        return std::nullopt;
    bool is_number = true;
    for (size_t i = 0; i < colour.size() && is_number; ++i) {
        const int number = parts.at(static_cast<qsizetype>(i)).toInt(&is_number);
        colour[i] = std::clamp(number, 0, 255);
    }
    return is_number ? std::optional(colour) : std::nullopt;
}

} // namespace

// The library looks these up in the program by their names: they are exported, also from a program
// that hides its symbols.
extern "C" {

/// The text that fits @p buffer, always terminated.
PRINTMAN_EXPORT int GetPrivateProfileString(const char* section, const char* key,
                                            const char* default_text, char* buffer, int size,
                                            const char* file) {
    if (!buffer || size <= 0)
        return 0;
    const QByteArray text = value_in_file(file, section, key).value_or(QByteArray(default_text));
    qstrncpy(buffer, text.constData(), static_cast<size_t>(size));
    return static_cast<int>(qstrlen(buffer));
}

/// The environment variable of the key's name wins over the file.
PRINTMAN_EXPORT const char* GetEnv(const char* key, const char* file, const char* section) {
    static QByteArray result; // stays valid until the next call
    result = qgetenv(key);
    if (result.isEmpty())
        result = value_in_file(file, section, key).value_or(QByteArray());
    return result.isEmpty() ? nullptr : result.constData();
}

/// 1 when the value is stored; 0 when not, and the file is then as it was. A text that a file could
/// not hold, such as one of two lines, is not stored.
PRINTMAN_EXPORT int SetEnv(const char* entry, const char* file, const char* section, int /*flag*/) {
    const QByteArray text(entry);
    const QByteArray key = text.left(std::max<qsizetype>(text.indexOf('='), 0));
    const QByteArray value = text.mid(key.size() + 1).trimmed();
    const QString path = path_of(file);
    const std::optional<QByteArray> before = read_file(path);
    if (!before)
        return 0;
    const QByteArray after = with_value(*before, section, key, value);
    return value_in(after, section, key) == value && replace_file(path, after) ? 1 : 0;
}

/// A colour that is unset or malformed is white for the sheet and black for everything else.
PRINTMAN_EXPORT void GetRGB(const char* key, int* red, int* green, int* blue) {
    const QByteArray text = value_in_file("dlwmenu.ini", "color", key).value_or(QByteArray());
    const int usual = qstrcmp(key, "KRV_COLOR_SBG") == 0 ? 255 : 0;
    const Colour colour = parse_colour(text).value_or(Colour{usual, usual, usual});
    *red = colour[0];
    *green = colour[1];
    *blue = colour[2];
}
}
