#include "host/jobs/reportfont.h"

namespace host {

QFont report_font(const QString& family, double point_size) {
    QFont font(family);
    font.setStyleHint(QFont::TypeWriter);
    font.setPointSizeF(point_size);
    return font;
}

QFont screen_font(int percent) {
    constexpr double base_point_size = 10;
    QFont font = report_font(QString::fromLatin1(default_family), base_point_size * percent / 100);
    // Only hinted characters have whole widths.
    font.setHintingPreference(QFont::PreferFullHinting);
    return font;
}

} // namespace host
