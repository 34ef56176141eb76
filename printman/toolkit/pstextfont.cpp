#include <printman/toolkit/pstextfont.h>

#include <QFontMetricsF>
#include <QRawFont>

#include <hb.h>

#include <memory>

namespace printman {

namespace {

// What Qt's font engine uses for faces without an italic of their own.
constexpr double slant = 0.2;
constexpr double bold_stroke = 0.03;

constexpr ushort soft_hyphen = 0xad;

double device_pixels(const QFont& font, int dpi) {
    constexpr double points_an_inch = 72.0;
    return font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * dpi / points_an_inch;
}

bool needs_no_layout(char32_t ch) {
    switch (QChar::script(ch)) {
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Common:
        return ch != soft_hyphen && ch != U'\n' && QChar::category(ch) != QChar::Other_Format &&
               QChar::direction(ch) != QChar::DirR && QChar::direction(ch) != QChar::DirAL;
    default:
        return false;
    }
}

struct BufferDeleter {
    void operator()(hb_buffer_t* p) const { hb_buffer_destroy(p); }
};

} // namespace

PsTextFont::PsTextFont(PsFontSet& fonts, const QFont& font, int dpi)
    : PsTextFont(fonts, QRawFont::fromFont(font), font, dpi) {}

PsTextFont::PsTextFont(PsFontSet& fonts, const QRawFont& face, const QFont& font, int dpi)
    : face_(fonts.font(face)), pixels_(device_pixels(font, dpi)), kerning_(font.kerning()) {
    matrix_ = QTransform(pixels_, 0, 0, -pixels_, 0, 0);
    if (font.style() != QFont::StyleNormal && !face_.is_italic())
        matrix_ = QTransform(pixels_, 0, slant * pixels_, -pixels_, 0, 0);
    if (font.weight() >= QFont::DemiBold && !face_.is_bold())
        thickening_ = bold_stroke;
    find_latin1(font);
}

void PsTextFont::find_latin1(const QFont& font) {
    for (int c = 0; c < 256; ++c) {
        const QChar ch(c);
        if (ch.category() == QChar::Other_Control)
            kinds_[c] = c == '\n' ? Latin1::missing : Latin1::control;
        else if (c != soft_hyphen && (glyphs_[c] = face_.glyph(c)) != 0)
            kinds_[c] = Latin1::drawn;
    }
    const double width = face_.advance(glyphs_['0']);
    for (int c = 0; c < 256; ++c) {
        if (kinds_[c] == Latin1::drawn && face_.advance(glyphs_[c]) != width)
            return;
    }
    if (width <= 0.0)
        return;
    // The painter's own width of a character, so that text stands where Qt would put it.
    pitch_ = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
    const double stretch = pitch_ / (width * pixels_);
    matrix_ =
        QTransform(matrix_.m11() * stretch, matrix_.m12(), matrix_.m21(), matrix_.m22(), 0, 0);
}

bool PsTextFont::needs_layout(const QFont& font) {
    return font.letterSpacing() != 0.0 || font.wordSpacing() != 0.0 ||
           font.capitalization() != QFont::MixedCase ||
           (font.stretch() != QFont::AnyStretch && font.stretch() != QFont::Unstretched);
}

bool PsTextFont::covers(const QString& text) const {
    for (const char32_t ch : text.toUcs4()) {
        const bool known =
            ch < 256 ? kinds_[ch] != Latin1::missing : needs_no_layout(ch) && face_.glyph(ch) != 0;
        if (!known)
            return false;
    }
    return true;
}

bool PsTextFont::fixed_codes(const QString& text, std::string& codes) const {
    codes.resize(static_cast<size_t>(text.size()));
    char* out = codes.data();
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u >= 256 || kinds_[u] == Latin1::missing)
            return false;
        if (kinds_[u] == Latin1::control) {
            *out++ = ' ';
        } else {
            face_.use_latin1(glyphs_[u], static_cast<uchar>(u));
            *out++ = static_cast<char>(u);
        }
    }
    return true;
}

double PsTextFont::shape(const QString& text, std::vector<PsGlyph>& glyphs) const {
    glyphs.clear();
    const QList<uint> ucs4 = text.toUcs4();
    const auto shown = [&](qsizetype i) {
        const char32_t ch = ucs4[i];
        return ch < 256 && kinds_[ch] == Latin1::control ? U' ' : ch;
    };
    double pen = 0.0;
    if (!face_.shaper()) {
        for (qsizetype i = 0; i < ucs4.size(); ++i) {
            const quint32 glyph = face_.glyph(shown(i));
            const double advance = width(glyph);
            glyphs.push_back({glyph, shown(i), QPointF(pen, 0), advance});
            pen += advance;
        }
        return pen;
    }

    const std::unique_ptr<hb_buffer_t, BufferDeleter> buffer(hb_buffer_create());
    for (qsizetype i = 0; i < ucs4.size(); ++i)
        hb_buffer_add(buffer.get(), shown(i), static_cast<unsigned>(i));
    hb_buffer_set_content_type(buffer.get(), HB_BUFFER_CONTENT_TYPE_UNICODE);
    hb_buffer_set_direction(buffer.get(), HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer.get(), HB_SCRIPT_LATIN);
    hb_buffer_set_language(buffer.get(), hb_language_from_string("en", -1));
    const auto feature = [](const char* tag, bool on) {
        return hb_feature_t{hb_tag_from_string(tag, 4), on ? 1u : 0u, HB_FEATURE_GLOBAL_START,
                            HB_FEATURE_GLOBAL_END};
    };
    const hb_feature_t features[] = {feature("kern", kerning_), feature("liga", false),
                                     feature("clig", false), feature("calt", false)};
    hb_shape(face_.shaper(), buffer.get(), features, std::size(features));

    unsigned count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
    const double scale = pixels_ / face_.units_per_em();
    for (unsigned i = 0; i < count; ++i) {
        // The first glyph of a cluster carries its character, marks after it carry none.
        const bool leads = i == 0 || infos[i].cluster != infos[i - 1].cluster;
        glyphs.push_back(
            {infos[i].codepoint, leads ? shown(infos[i].cluster) : 0,
             QPointF(pen + positions[i].x_offset * scale, -positions[i].y_offset * scale),
             width(infos[i].codepoint)});
        pen += positions[i].x_advance * scale;
    }
    return pen;
}

} // namespace printman
