#pragma once

#include <QColor>
#include <QFont>
#include <QString>

#include <optional>

namespace printman {

/// The colors of the page on screen.
struct ScreenColors {
    QColor text;
    QColor page; ///< its background
};

/// The colors that the host's settings KRV_COLOR_DBG (text) and KRV_COLOR_SBG (page) name, each
/// part cut to 0..255. What the host answers for a missing setting is its own business.
ScreenColors read_screen_colors();

/// What the settings SCR_FACENAME, SCR_POINTSIZE, SCR_WEIGHT and SCR_ITALIC ("y...") of dlwmenu.ini
/// say of the font on screen.
struct ScreenFontSettings {
    QString family;
    std::optional<int> point_size;
    std::optional<int> weight; ///< 0 to 99, 50 normal
    bool italic = false;

    /// Gives @p font these properties; what the settings do not say stays.
    void apply(QFont& font) const;
};

/// None without a face name.
std::optional<ScreenFontSettings> read_screen_font_settings();

/// A default font with what the settings say. None without a face name.
std::optional<QFont> read_screen_font();

} // namespace printman
