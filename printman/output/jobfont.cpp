#include <printman/output/jobfont.h>
#include <printman/output/pageprint.h>
#include <printman/output/watermark.h>
#include <printman/toolkit/legacyweight.h>

#include <algorithm>
#include <cstring>

namespace printman {

namespace {

constexpr int default_points = 12;
constexpr int max_points = 2000;
constexpr int max_weight = 99;

} // namespace

int job_point_size(int point_size) {
    return point_size < 1 ? default_points : std::min(point_size, max_points);
}

QFont report_font(const FontInfo& info) {
    const DLWLOGFONT& record = info.log_font;
    const QByteArray family(record.face_name, static_cast<qsizetype>(strnlen(
                                                  record.face_name, sizeof record.face_name)));
    QFont font;
    if (!family.isEmpty())
        font.setFamily(utf8_or_latin1(family));
    font.setPointSize(job_point_size(info.point_size));
    if (record.weight >= 0 && record.weight <= max_weight)
        set_legacy_weight(font, record.weight);
    font.setItalic(record.italic != 0);
    font.setStrikeOut(record.strike_out != 0);
    font.setUnderline(record.underline != 0);
    return font;
}

std::optional<QFont> choose_report_font(QWidget* parent) {
    return choose_font(parent, first_dialog_font(QStringLiteral("Courier New")));
}

} // namespace printman
