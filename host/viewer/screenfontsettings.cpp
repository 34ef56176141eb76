#include "host/viewer/screenfontsettings.h"

#include "host/settings/settings.h"

#include <printman/toolkit/legacyweight.h>

#include <QFontInfo>

#include <algorithm>

namespace host {

namespace {

constexpr const char* section = "screenfont";

QList<Setting> settings_of(const QFont& font) {
    const int points = font.pointSize() > 0 ? font.pointSize() : QFontInfo(font).pointSize();
    return {{"SCR_FACENAME", font.family().toLatin1()},
            {"SCR_POINTSIZE", QByteArray::number(points)},
            {"SCR_WEIGHT", QByteArray::number(printman::legacy_weight(font))},
            {"SCR_ITALIC", font.italic() ? "yes" : "no"}};
}

} // namespace

bool settings_have_font() {
    return !host_settings()
                .value(menu_file, section, "SCR_FACENAME")
                .value_or(QByteArray())
                .isEmpty();
}

OfferedFont::OfferedFont(const QFont& fallback)
    : fallback_(fallback), is_assumed_(!settings_have_font()) {
    if (is_assumed_)
        host_settings().assume(menu_file, section, settings_of(fallback_));
}

OfferedFont::~OfferedFont() {
    if (is_assumed_)
        host_settings().forget(menu_file, section, settings_of(fallback_));
}

bool settings_mean(const QFont& font, const QFont& fallback) {
    const QList<Setting> settings = settings_of(font);
    if (!settings_have_font())
        return settings == settings_of(fallback);
    return std::ranges::all_of(settings, [](const Setting& setting) {
        return host_settings().value(menu_file, section, setting.key) == setting.value;
    });
}

bool keep_font(const QFont& font) {
    // The library reads Latin-1.
    return QString::fromLatin1(font.family().toLatin1()) == font.family() &&
           host_settings().keep(menu_file, section, settings_of(font));
}

} // namespace host
