#pragma once

#include <QColor>
#include <QFont>

#include <optional>

namespace printman {

/// The colours of the page on screen.
struct ScreenColours {
    QColor text;
    QColor page; ///< its background
};

/// The colours that the host's settings KRV_COLOR_DBG (text) and KRV_COLOR_SBG (page) name, each
/// part cut to 0..255. What the host answers for a missing setting is its own business.
ScreenColours read_screen_colours();

/// The font that the settings SCR_FACENAME, SCR_POINTSIZE, SCR_WEIGHT (0 to 99, 50 normal) and
/// SCR_ITALIC ("y...") of dlwmenu.ini name; a missing one leaves that of a default font. None
/// without a face name.
std::optional<QFont> read_screen_font();

} // namespace printman
