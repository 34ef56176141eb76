#include <printman/typeset/textfont.h>

#include <QFontMetricsF>
#include <QRawFont>

#include <hb.h>

#include <algorithm>
#include <iterator>

namespace printman {

namespace {

// What Qt's font engine uses for faces without an italic of their own.
constexpr double slant = 0.2;
constexpr double bold_stroke = 0.03;

constexpr ushort soft_hyphen = 0xad;

double device_pixels(const QFont& font, int dpi) {
    constexpr double points_per_inch = 72.0;
    return font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * dpi / points_per_inch;
}

/// The typeface of a font, at a size that every face has, since only the outlines count.
QRawFont face_of(QFont font) {
    constexpr int any_size = 64;
    font.setPixelSize(any_size);
    if (font.stretch() != QFont::AnyStretch)
        font.setStretch(QFont::Unstretched);
    return QRawFont::fromFont(font);
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

} // namespace

TextFont::TextFont(FontSet& fonts, const QFont& font, int dpi)
    : TextFont(fonts, face_of(font), font, dpi) {}

TextFont::TextFont(FontSet& fonts, const QRawFont& face, const QFont& font, int dpi)
    : face_(fonts.font(face)), pixels_(device_pixels(font, dpi)), kerning_(font.kerning()) {
    matrix_ = QTransform(pixels_, 0, 0, -pixels_, 0, 0);
    if (font.style() != QFont::StyleNormal && !face_.is_italic())
        matrix_ = QTransform(pixels_, 0, slant * pixels_, -pixels_, 0, 0);
    if (font.weight() >= QFont::DemiBold && !face_.is_bold())
        thickening_ = bold_stroke;
    find_latin1();
    find_pitch(font);
    buffer_.reset(hb_buffer_create());
}

void TextFont::BufferDeleter::operator()(hb_buffer_t* p) const {
    hb_buffer_destroy(p);
}

void TextFont::find_latin1() {
    for (int c = 0; c < 256; ++c) {
        const QChar ch(c);
        if (ch.category() == QChar::Other_Control)
            kinds_[c] = c == '\n' ? Latin1::missing : Latin1::control;
        else if (c != soft_hyphen && (glyphs_[c] = face_.glyph(c)) != 0)
            kinds_[c] = Latin1::drawn;
        widths_[c] = width(glyphs_[c]);
    }
}

void TextFont::find_pitch(const QFont& font) {
    const double width = widths_['0'];
    for (int c = 0; c < 256; ++c) {
        if (kinds_[c] == Latin1::drawn && widths_[c] != width)
            return;
    }
    if (width <= 0.0)
        return;
    // The painter's own width of a character, so that text is placed where Qt would place it.
    pitch_ = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
    const double stretch = pitch_ / width;
    matrix_ =
        QTransform(matrix_.m11() * stretch, matrix_.m12(), matrix_.m21(), matrix_.m22(), 0, 0);
}

bool TextFont::can_load(const QFont& font) {
    // Without any face Qt returns one that draws boxes; it has neither name nor size.
    const QRawFont face = face_of(font);
    return face.isValid() && face.pixelSize() > 0;
}

bool TextFont::needs_layout(const QFont& font) {
    return font.letterSpacing() != 0.0 || font.wordSpacing() != 0.0 ||
           font.capitalization() != QFont::MixedCase ||
           (font.stretch() != QFont::AnyStretch && font.stretch() != QFont::Unstretched);
}

bool TextFont::covers(const QString& text) const {
    const auto is_simple = [this](QChar c) {
        return c.unicode() < 256 && kinds_[c.unicode()] != Latin1::missing;
    };
    if (std::all_of(text.begin(), text.end(), is_simple))
        return true;
    const QList<uint> characters = text.toUcs4();
    return std::all_of(characters.begin(), characters.end(), [this](char32_t ch) {
        return ch < 256 ? kinds_[ch] != Latin1::missing
                        : needs_no_layout(ch) && face_.glyph(ch) != 0;
    });
}

bool TextFont::fixed_codes(const QString& text, std::string& codes) const {
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

char32_t TextFont::shown(char32_t ch) const {
    return ch < 256 && kinds_[ch] == Latin1::control ? U' ' : ch;
}

/// Sets one glyph after the other: all that a face without layout tables allows.
double TextFont::place(const QList<uint>& text, std::vector<ShapedGlyph>& glyphs) const {
    double pen = 0.0;
    for (const uint character : text) {
        const char32_t ch = shown(character);
        const quint32 glyph = ch < 256 ? glyphs_[ch] : face_.glyph(ch);
        const double advance = ch < 256 ? widths_[ch] : width(glyph);
        glyphs.push_back({glyph, ch, QPointF(pen, 0), advance});
        pen += advance;
    }
    return pen;
}

double TextFont::shape(const QString& text, std::vector<ShapedGlyph>& glyphs) const {
    static const hb_language_t language = hb_language_from_string("en", -1);
    glyphs.clear();
    const QList<uint> characters = text.toUcs4();
    if (!face_.shaper())
        return place(characters, glyphs);

    hb_buffer_clear_contents(buffer_.get());
    for (qsizetype i = 0; i < characters.size(); ++i)
        hb_buffer_add(buffer_.get(), shown(characters[i]), static_cast<unsigned>(i));
    hb_buffer_set_content_type(buffer_.get(), HB_BUFFER_CONTENT_TYPE_UNICODE);
    hb_buffer_set_direction(buffer_.get(), HB_DIRECTION_LTR);
    hb_buffer_set_script(buffer_.get(), HB_SCRIPT_LATIN);
    hb_buffer_set_language(buffer_.get(), language);
    const auto feature = [](hb_tag_t tag, bool on) {
        return hb_feature_t{tag, on ? 1u : 0u, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END};
    };
    const hb_feature_t features[] = {
        feature(HB_TAG('k', 'e', 'r', 'n'), kerning_), feature(HB_TAG('l', 'i', 'g', 'a'), false),
        feature(HB_TAG('c', 'l', 'i', 'g'), false), feature(HB_TAG('c', 'a', 'l', 't'), false)};
    hb_shape(face_.shaper(), buffer_.get(), features, std::size(features));

    unsigned count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer_.get(), &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer_.get(), &count);
    const double scale = pixels_ / face_.units_per_em();
    double pen = 0.0;
    for (unsigned i = 0; i < count; ++i) {
        // The first glyph of a cluster has its character, marks after it have none.
        const bool leads = i == 0 || infos[i].cluster != infos[i - 1].cluster;
        glyphs.push_back(
            {infos[i].codepoint, leads ? shown(characters[infos[i].cluster]) : 0,
             QPointF(pen + positions[i].x_offset * scale, -positions[i].y_offset * scale),
             width(infos[i].codepoint)});
        pen += positions[i].x_advance * scale;
    }
    return pen;
}

} // namespace printman
