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

/// A setting's text, which the host keeps only until the next question; empty when it is not set.
std::string font_setting(const char* key) {
    const char* text = GetEnv(key, "dlwmenu.ini", "screenfont");
    return text ? text : "";
}

QColor colour_setting(const char* key) {
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

ScreenColours read_screen_colours() {
    ScreenColours colours;
    colours.page = colour_setting("KRV_COLOR_SBG");
    colours.text = colour_setting("KRV_COLOR_DBG");
    return colours;
}

std::optional<QFont> read_screen_font() {
    const std::string family = font_setting("SCR_FACENAME");
    if (family.empty())
        return std::nullopt;
    QFont font;
    font.setFamily(QString::fromLatin1(family.c_str()));
    const std::string size = font_setting("SCR_POINTSIZE");
    // No font has a size of 0 or less: the default stays.
    if (number(size, 0, max_point_size) > 0)
        font.setPointSize(static_cast<int>(number(size, 0, max_point_size)));
    const std::string weight = font_setting("SCR_WEIGHT");
    if (!weight.empty())
        set_legacy_weight(font, static_cast<int>(number(weight, 0, max_legacy_weight)));
    const std::string italic = font_setting("SCR_ITALIC");
    font.setItalic(italic.starts_with('y') || italic.starts_with('Y'));
    return font;
}

} // namespace printman
