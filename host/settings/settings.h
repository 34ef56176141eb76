#pragma once

#include "host/files/outcome.h"

#include <QByteArray>
#include <QList>

#include <map>
#include <optional>

namespace host {

/// A key of a settings file, and its value.
struct Setting {
    QByteArray key;
    QByteArray value;

    bool operator==(const Setting&) const = default;
};

struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const Colour&) const = default;
};

/// The settings files of a directory, read anew for every question, so that a change made by
/// another program counts at once. File names are bytes, as the system has them.
class Settings {
public:
    explicit Settings(QByteArray directory);

    const QByteArray& directory() const { return directory_; }

    /// Where @p file stands: an absolute name as it is, any other below the directory.
    QByteArray path_of(const QByteArray& file) const;

    /// All that is in the file; nothing when it is missing.
    ///
    /// @return why it cannot be read
    Outcome read(const QByteArray& file, QByteArray& bytes) const;

    /// The value in the file; none when file, section or key is missing.
    std::optional<QByteArray> file_value(const QByteArray& file, const QByteArray& section,
                                         const QByteArray& key) const;

    /// What keep() has kept, else the value in the file.
    std::optional<QByteArray> kept_value(const QByteArray& file, const QByteArray& section,
                                         const QByteArray& key) const;

    /// The value of the environment variable @p key when it is not empty, else kept_value(), else,
    /// for PRTINI, the directory itself. A relative PRTINI is made absolute: it means the
    /// directory in which the program was started, wherever a job works.
    std::optional<QByteArray> value(const QByteArray& file, const QByteArray& section,
                                    const QByteArray& key) const;

    /// Whether NOPAGEMAP says that reports are printed at the font's own size.
    bool turns_page_map_off() const;

    /// Stores a value in the file, which is replaced in one step and made, with its directory, when
    /// it is missing.
    ///
    /// @return false on failure; the file is then as it was
    bool store(const QByteArray& file, const QByteArray& section, const QByteArray& key,
               const QByteArray& value) const {
        return store_all(file, section, {{key, value}});
    }

    /// Stores all of the values at once; where the file cannot be written they count all the same,
    /// until this program ends or they are stored.
    ///
    /// @return whether they are stored; false, and nothing changes, for what no file can hold
    bool keep(const QByteArray& file, const QByteArray& section, const QList<Setting>& values);

    /// Whether something that was to be kept is not stored.
    bool has_unstored() const { return !unstored_.empty(); }

    /// Lets the values count before those of the file, without storing them, until forget().
    void assume(const QByteArray& file, const QByteArray& section, const QList<Setting>& values);
    void forget(const QByteArray& file, const QByteArray& section, const QList<Setting>& values);

    /// The colour @p key of section "color" of dlwmenu.ini, each part cut to 0..255; when unset or
    /// malformed white for the sheet (KRV_COLOR_SBG), black for everything else.
    Colour colour(const QByteArray& key) const;

private:
    QByteArray printer_directory(const std::optional<QByteArray>& value) const;

    bool store_all(const QByteArray& file, const QByteArray& section,
                   const QList<Setting>& values) const;

    std::map<QByteArray, QByteArray> unstored_; ///< by file, section and key
    QByteArray directory_;
    QByteArray start_; ///< the current directory at that time, with a slash
};

/// Reads "r,g,b".
std::optional<Colour> parse_colour(const QByteArray& text);

/// "printman" under XDG_CONFIG_HOME when that is an absolute path, else under ~/.config.
QByteArray default_settings_directory();

/// The settings that the host services answer from; those of the default directory until replaced.
Settings& host_settings();

} // namespace host
