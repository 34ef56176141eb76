#include <printman/printer/hostservices.h>
#include <printman/render/screensettings.h>
#include <printman/toolkit/legacyweight.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace printman {

namespace {

constexpr long max_point_size = 1000;
constexpr long max_legacy_weight = 99;

/// A setting's text, copied because the host keeps it only until the next call; empty when it is
/// not set.
std::string font_setting(const char* key) {
    const char* text = GetEnv(key, "dlwmenu.ini", "screenfont");
    return text ? text : "";
}

QColor color_setting(const char* key) {
    int red = 0;
    int green = 0;
    int blue = 0;
    GetRGB(key, &red, &green, &blue);
    const auto cut = [](int part) { return std::clamp(part, 0, 255); };
    return {cut(red), cut(green), cut(blue)};
}

long number(const std::string& text, long least, long most) {
    return std::clamp(std::strtol(text.c_str(), nullptr, 10), least, most);
}

} // namespace

ScreenColors read_screen_colors() {
    ScreenColors colors;
    colors.page = color_setting("KRV_COLOR_SBG");
    colors.text = color_setting("KRV_COLOR_DBG");
    return colors;
}

void ScreenFontSettings::apply(QFont& font) const {
    font.setFamily(family);
    if (point_size)
        font.setPointSize(*point_size);
    if (weight)
        set_legacy_weight(font, *weight);
    font.setItalic(italic);
    // A style chosen by name would take precedence over weight and slant.
    font.setStyleName({});
}

std::optional<ScreenFontSettings> read_screen_font_settings() {
    const std::string family = font_setting("SCR_FACENAME");
    if (family.empty())
        return std::nullopt;
    ScreenFontSettings settings;
    settings.family = QString::fromLatin1(family.c_str());
    const auto size = static_cast<int>(number(font_setting("SCR_POINTSIZE"), 0, max_point_size));
    // No font has a size of 0 or less.
    if (size > 0)
        settings.point_size = size;
    const std::string weight = font_setting("SCR_WEIGHT");
    if (!weight.empty())
        settings.weight = static_cast<int>(number(weight, 0, max_legacy_weight));
    const std::string italic = font_setting("SCR_ITALIC");
    settings.italic = italic.starts_with('y') || italic.starts_with('Y');
    return settings;
}

std::optional<QFont> read_screen_font() {
    const auto settings = read_screen_font_settings();
    if (!settings)
        return std::nullopt;
    QFont font;
    settings->apply(font);
    return font;
}

} // namespace printman
