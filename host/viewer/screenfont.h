#pragma once

#include <QFont>

namespace host {

/// Whether the settings name the font of the page, which the library then reads.
bool settings_have_font();

/// While it lives the settings name a font: their own, or @p usual where they have none.
class OfferedFont {
public:
    explicit OfferedFont(const QFont& usual);
    ~OfferedFont();
    OfferedFont(const OfferedFont&) = delete;
    OfferedFont& operator=(const OfferedFont&) = delete;

private:
    QFont usual_;
    bool assumed_;
};

/// Whether @p font is the one that the settings name, or @p usual where they name none.
bool settings_mean(const QFont& font, const QFont& usual);

/// Keeps the font in section "screenfont" of dlwmenu.ini, as Settings::keep() does.
///
/// @return whether it is stored
bool keep_font(const QFont& font);

} // namespace host
