#pragma once

#include <QFont>

namespace host {

// The font of the page on the screen in section "screenfont" of dlwmenu.ini, from which the library
// reads it.

/// Whether the settings name a font.
bool settings_have_font();

/// Lets the settings name a font while the object exists: their own, or @p fallback where they have
/// none.
class OfferedFont {
public:
    explicit OfferedFont(const QFont& fallback);
    ~OfferedFont();
    OfferedFont(const OfferedFont&) = delete;
    OfferedFont& operator=(const OfferedFont&) = delete;

private:
    QFont fallback_;
    bool is_assumed_;
};

/// Whether @p font is the one that the settings name, or @p fallback where they name none.
bool settings_mean(const QFont& font, const QFont& fallback);

/// Keeps the font in the settings, as Settings::keep() does.
///
/// @return whether it is stored
bool keep_font(const QFont& font);

} // namespace host
