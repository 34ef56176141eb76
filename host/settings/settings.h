#pragma once

#include "host/files/outcome.h"

#include <QByteArray>
#include <QList>

#include <map>
#include <optional>

namespace host {

// The files of a settings directory that hold the library's and the program's own settings.

/// What the user chooses, in several sections; the library asks for it by this name.
inline constexpr char menu_file[] = "dlwmenu.ini";

/// The section of menu_file whose settings an environment variable of the same name overrides.
inline constexpr char environment_section[] = "env";

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
/// another program takes effect at once. File names are bytes, as the system has them.
class Settings {
public:
    explicit Settings(QByteArray directory);

    const QByteArray& directory() const { return directory_; }

    /// The path of @p file: an absolute name as it is, any other below the directory.
    QByteArray path_of(const QByteArray& file) const;

    /// Reads all that is in the file; nothing when it is missing.
    Outcome read(const QByteArray& file, QByteArray& bytes) const;

    /// The value in the file; none when file, section or key is missing.
    std::optional<QByteArray> file_value(const QByteArray& file, const QByteArray& section,
                                         const QByteArray& key) const;

    /// The value that keep() or assume() has set, else the value in the file.
    std::optional<QByteArray> kept_value(const QByteArray& file, const QByteArray& section,
                                         const QByteArray& key) const;

    /// The value of the environment variable @p key when it is not empty, else kept_value(), else,
    /// for PRTINI, the directory itself. A relative PRTINI is made absolute, from the directory in
    /// which the program was started, wherever a job works.
    std::optional<QByteArray> value(const QByteArray& file, const QByteArray& section,
                                    const QByteArray& key) const;

    /// The value of @p key in environment_section of menu_file, as value() has it; empty when it is
    /// not set.
    QByteArray variable(const QByteArray& key) const;

    /// Whether NOPAGEMAP turns automatic page formatting off: text is printed at the font's own
    /// size.
    bool no_page_map() const;

    /// Stores the values in the file, which is replaced in one step, and created, with its
    /// directory, when it is missing.
    ///
    /// @return false on failure; the file is then as it was
    bool store(const QByteArray& file, const QByteArray& section,
               const QList<Setting>& values) const;

    /// Stores the values. Where the file cannot be written they still take effect, until the
    /// program ends or they are stored.
    ///
    /// @return whether they are stored; for what no file can hold it is false, and nothing changes
    bool keep(const QByteArray& file, const QByteArray& section, const QList<Setting>& values);

    /// Whether something that was to be kept is not stored.
    bool has_unstored() const { return !unstored_.empty(); }

    /// Lets the values take effect before those of the file, without storing them, until forget().
    void assume(const QByteArray& file, const QByteArray& section, const QList<Setting>& values);
    void forget(const QByteArray& file, const QByteArray& section, const QList<Setting>& values);

    /// The colour @p key of section "color" of menu_file, each part limited to 0..255; when unset
    /// or malformed white for the sheet (KRV_COLOR_SBG), black for everything else.
    Colour colour(const QByteArray& key) const;

private:
    QByteArray printer_directory(const std::optional<QByteArray>& value) const;

    std::map<QByteArray, QByteArray> unstored_; ///< by file, section and key
    QByteArray directory_;
    QByteArray start_; ///< the current directory at that time, with a slash
};

/// Reads "r,g,b", each part limited to 0..255.
std::optional<Colour> parse_colour(const QByteArray& text);

/// A directory of the user's: "printman" under the directory that the environment's @p variable
/// names when that is an absolute path, else under @p below_home of the home directory.
QByteArray user_directory(const char* variable, const QByteArray& below_home);

/// "printman" under XDG_CONFIG_HOME when that is an absolute path, else under ~/.config.
QByteArray default_settings_directory();

/// The settings that the host services answer from; those of the default directory until replaced.
Settings& host_settings();

} // namespace host
