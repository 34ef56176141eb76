#include "host/settings/settings.h"

#include "host/files/pendingfile.h"
#include "host/jobs/report.h"
#include "host/settings/inifile.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

// Nobody writes settings of this size: a larger file is something else.
constexpr off_t max_file_size = 16 * 1024 * 1024;

enum class ReadResult { ok, missing, unusable };

ReadResult read_file(const QByteArray& path, QByteArray& bytes) {
    const int fd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return errno == ENOENT || errno == ENOTDIR ? ReadResult::missing : ReadResult::unusable;
    struct stat status {};
    QFile file;
    const bool usable =
        ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= max_file_size;
    if (!usable || !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return ReadResult::unusable;
    }
    bytes = file.read(max_file_size);
    return file.error() == QFileDevice::NoError ? ReadResult::ok : ReadResult::unusable;
}

std::optional<QByteArray> environment_value(const QByteArray& key) {
    const char* value = key.isEmpty() ? nullptr : ::getenv(key.constData());
    if (!value || !*value)
        return std::nullopt;
    return QByteArray(value);
}

/// Names are told apart as IniFile tells them apart.
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
    return readable.ok() ? Outcome::failure(path + ": It cannot be read as a settings file")
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

bool Settings::turns_page_map_off() const {
    const auto text = value("dlwmenu.ini", "env", "NOPAGEMAP");
    return text && (text->startsWith('y') || text->startsWith('Y'));
}

bool Settings::store_all(const QByteArray& file, const QByteArray& section,
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
    return pending.open(path) && pending.write(ini.bytes()) && pending.commit();
}

bool Settings::keep(const QByteArray& file, const QByteArray& section,
                    const QList<Setting>& values) {
    IniFile fresh{QByteArray()};
    const bool can_hold = !file.isEmpty() && std::ranges::all_of(values, [&](const Setting& value) {
        return fresh.set(section, value.key, value.value);
    });
    if (!can_hold)
        return false;
    const bool stored = store_all(file, section, values);
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
    const QList<QByteArray> parts = text.split(',');
    if (parts.size() != 3)
        return std::nullopt;
    std::array<int, 3> numbers{};
    for (size_t i = 0; i < numbers.size(); ++i) {
        bool ok = false;
        numbers[i] = std::clamp(parts.at(static_cast<qsizetype>(i)).trimmed().toInt(&ok), 0, 255);
        if (!ok)
            return std::nullopt;
    }
    return Colour{numbers[0], numbers[1], numbers[2]};
}

Colour Settings::colour(const QByteArray& key) const {
    if (const auto text = kept_value("dlwmenu.ini", "color", key)) {
        if (const auto colour = parse_colour(*text))
            return *colour;
    }
    return key == "KRV_COLOR_SBG" ? Colour{255, 255, 255} : Colour{};
}

QByteArray default_settings_directory() {
    const auto config = environment_value("XDG_CONFIG_HOME");
    if (config && config->startsWith('/'))
        return *config + "/printman";
    const auto home = environment_value("HOME");
    return (home ? *home : QFile::encodeName(QDir::homePath())) + "/.config/printman";
}

Settings& host_settings() {
    static Settings settings(default_settings_directory());
    return settings;
}

} // namespace host
