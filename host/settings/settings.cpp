#include "host/settings/settings.h"

#include "host/files/inputfile.h"
#include "host/files/paths.h"
#include "host/files/pendingfile.h"
#include "host/settings/inifile.h"
#include "host/settings/numbers.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

namespace host {

namespace {

// A larger file is not one of settings.
constexpr qint64 max_file_size = 16 * 1024 * 1024;

enum class ReadResult { ok, missing, unusable };

ReadResult read_file(const QByteArray& path, QByteArray& bytes) {
    QFile file;
    const int error = open_regular_file(path, file);
    if (error == ENOENT || error == ENOTDIR)
        return ReadResult::missing;
    if (error != 0 || file.size() > max_file_size)
        return ReadResult::unusable;
    bytes = file.read(max_file_size);
    return file.error() == QFileDevice::NoError ? ReadResult::ok : ReadResult::unusable;
}

std::optional<QByteArray> environment_value(const QByteArray& key) {
    const char* value = key.isEmpty() ? nullptr : ::getenv(key.constData());
    if (!value || !*value)
        return std::nullopt;
    return QByteArray(value);
}

/// The key of a value that is not stored. The same names are equal here as in an IniFile.
QByteArray place_of(const QByteArray& file, const QByteArray& section, const QByteArray& key) {
    return file + '\0' + section.trimmed().toLower() + '\0' + key.trimmed().toLower();
}

} // namespace

Settings::Settings(QByteArray directory)
    : directory_(std::move(directory)), start_(absolute_path(QByteArray())) {}

QByteArray Settings::path_of(const QByteArray& file) const {
    return file.startsWith('/') ? file : directory_ + '/' + file;
}

Outcome Settings::read(const QByteArray& file, QByteArray& bytes) const {
    const QByteArray path = path_of(file);
    if (read_file(path, bytes) != ReadResult::unusable)
        return Outcome::success();
    Outcome readable = check_input(path);
    return readable.ok() ? Outcome::failure(path + ": The file cannot be read as a settings file")
                         : readable;
}

std::optional<QByteArray> Settings::file_value(const QByteArray& file, const QByteArray& section,
                                               const QByteArray& key) const {
    QByteArray bytes;
    if (file.isEmpty() || read_file(path_of(file), bytes) != ReadResult::ok)
        return std::nullopt;
    return IniFile(bytes).value(section, key);
}

std::optional<QByteArray> Settings::kept_value(const QByteArray& file, const QByteArray& section,
                                               const QByteArray& key) const {
    const auto unstored = unstored_.find(place_of(file, section, key));
    return unstored != unstored_.end() ? unstored->second : file_value(file, section, key);
}

QByteArray Settings::printer_directory(const std::optional<QByteArray>& value) const {
    if (!value || value->isEmpty())
        return directory_;
    return value->startsWith('/') ? *value : start_ + *value;
}

std::optional<QByteArray> Settings::value(const QByteArray& file, const QByteArray& section,
                                          const QByteArray& key) const {
    auto value = environment_value(key);
    if (!value)
        value = kept_value(file, section, key);
    return key == "PRTINI" ? printer_directory(value) : value;
}

QByteArray Settings::variable(const QByteArray& key) const {
    return value(menu_file, environment_section, key).value_or(QByteArray());
}

bool Settings::no_page_map() const {
    return variable("NOPAGEMAP").toLower().startsWith('y');
}

bool Settings::store(const QByteArray& file, const QByteArray& section,
                     const QList<Setting>& values) const {
    if (file.isEmpty())
        return false;
    const QByteArray path = path_of(file);
    QByteArray bytes;
    if (read_file(path, bytes) == ReadResult::unusable)
        return false;
    IniFile ini(bytes);
    for (const Setting& setting : values) {
        if (!ini.set(section, setting.key, setting.value))
            return false;
    }
    if (!make_directory_of(path))
        return false;
    PendingFile pending;
    return pending.open(path).ok() && pending.write(ini.bytes()) && pending.commit().ok();
}

bool Settings::keep(const QByteArray& file, const QByteArray& section,
                    const QList<Setting>& values) {
    IniFile fresh{QByteArray()};
    const bool can_hold = !file.isEmpty() && std::ranges::all_of(values, [&](const Setting& value) {
        return fresh.set(section, value.key, value.value);
    });
    if (!can_hold)
        return false;
    const bool stored = store(file, section, values);
    if (stored)
        forget(file, section, values);
    else
        assume(file, section, values);
    return stored;
}

void Settings::assume(const QByteArray& file, const QByteArray& section,
                      const QList<Setting>& values) {
    for (const Setting& setting : values)
        unstored_[place_of(file, section, setting.key)] = setting.value;
}

void Settings::forget(const QByteArray& file, const QByteArray& section,
                      const QList<Setting>& values) {
    for (const Setting& setting : values)
        unstored_.erase(place_of(file, section, setting.key));
}

std::optional<Colour> parse_colour(const QByteArray& text) {
    const auto numbers = parse_list<3>(text, [](const QByteArray& part) {
        bool ok = false;
        const int number = std::clamp(part.toInt(&ok), 0, 255);
        return ok ? std::optional(number) : std::nullopt;
    });
    return numbers ? std::optional(Colour{(*numbers)[0], (*numbers)[1], (*numbers)[2]})
                   : std::nullopt;
}

Colour Settings::colour(const QByteArray& key) const {
    if (const auto text = kept_value(menu_file, "color", key)) {
        if (const auto colour = parse_colour(*text))
            return *colour;
    }
    return key == "KRV_COLOR_SBG" ? Colour{255, 255, 255} : Colour{};
}

QByteArray user_directory(const char* variable, const QByteArray& below_home) {
    const auto named = environment_value(variable);
    if (named && named->startsWith('/'))
        return *named + "/printman";
    const auto home = environment_value("HOME");
    return (home ? *home : QFile::encodeName(QDir::homePath())) + '/' + below_home + "/printman";
}

QByteArray default_settings_directory() {
    return user_directory("XDG_CONFIG_HOME", ".config");
}

Settings& host_settings() {
    static Settings settings(default_settings_directory());
    return settings;
}

} // namespace host
