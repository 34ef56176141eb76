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

/// The colors of the host's settings KRV_COLOR_DBG (text) and KRV_COLOR_SBG (page), each component
/// clamped to 0..255. For a missing setting they are whatever the host returns.
ScreenColors read_screen_colors();

/// The font on screen as the settings SCR_FACENAME, SCR_POINTSIZE, SCR_WEIGHT and SCR_ITALIC
/// ("y...") of dlwmenu.ini describe it.
struct ScreenFontSettings {
    QString family;
    std::optional<int> point_size;
    std::optional<int> weight; ///< 0 to 99, 50 normal
    bool italic = false;

    /// Sets these properties of @p font; those without a setting stay as they are.
    void apply(QFont& font) const;
};

/// The font settings; none without a face name.
std::optional<ScreenFontSettings> read_screen_font_settings();

/// A default font with these settings applied; none without a face name.
std::optional<QFont> read_screen_font();

} // namespace printman
