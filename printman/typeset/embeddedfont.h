#pragma once

#include <QByteArray>
#include <QPainterPath>
#include <QRawFont>

#include <array>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

struct hb_blob_t;
struct hb_face_t;
struct hb_font_t;

namespace printman {

/// How a document shows a glyph: a byte in one of the font's encodings.
struct GlyphCode {
    int encoding = 0;
    char code = 0;
};

/// A glyph that a document embeds.
struct NamedGlyph {
    quint32 glyph;
    QByteArray name; ///< from the character that it stands for, such as "uni00E9"; unique
    char32_t meant;  ///< the character if the name does not say it; else 0
};

/// A typeface that a document embeds, with the glyphs that are used and the codes that show them.
/// How it is written depends on the page language.
///
/// Glyphs are named after the characters that they stand for, so that the document can be
/// searched. The first encoding is Latin-1; further characters get further encodings of the same
/// font.
class EmbeddedFont {
public:
    /// @param face at any size; only the outlines count
    /// @param name the PostScript name, unique in the document
    EmbeddedFont(const QRawFont& face, QByteArray name);
    ~EmbeddedFont();
    EmbeddedFont(const EmbeddedFont&) = delete;
    EmbeddedFont& operator=(const EmbeddedFont&) = delete;

    /// The code that shows @p glyph, which will be embedded, for the character @p ch (0: unknown).
    GlyphCode encode(quint32 glyph, char32_t ch);

    /// The same for the printable Latin-1 character @p ch and its glyph, whose code is that
    /// character's byte in encoding 0.
    void use_latin1(quint32 glyph, unsigned char ch) {
        if (latin1_glyphs_[ch] != glyph)
            encode(glyph, ch);
    }

    /// The glyph of a character; 0 if the face has none.
    quint32 glyph(char32_t ch) const;

    /// The width of a glyph in ems, without hinting.
    double advance(quint32 glyph) const;

    /// The font to shape with, scaled to units_per_em(); null if the face has no tables for it.
    hb_font_t* shaper() const { return shaper_; }
    double units_per_em() const { return units_per_em_; }

    /// Whether the face itself is italic or bold. If an italic or bold one was asked for and the
    /// face is not, the text is slanted or thickened.
    bool is_italic() const { return italic_; }
    bool is_bold() const { return bold_; }

    int encodings() const { return static_cast<int>(encodings_.size()); }

    /// The font's name in encoding @p encoding.
    QByteArray name(int encoding) const;

    /// The names of the glyphs that the codes 0 to 255 of an encoding show; empty for none.
    const std::array<QByteArray, 256>& code_names(int encoding) const {
        return encodings_[static_cast<size_t>(encoding)];
    }

    /// The glyphs to embed, each name once.
    const std::vector<NamedGlyph>& glyphs() const { return glyphs_; }

    /// A glyph's outline in units_per_em(), y downwards.
    QPainterPath outline(quint32 glyph) const { return face_.pathForGlyph(glyph); }

    /// The face's TrueType file, reduced by HarfBuzz to the glyphs that are embedded, which keep
    /// their numbers; empty if the outlines are not TrueType or cannot be reduced.
    QByteArray truetype_subset() const;

private:
    void read_style();
    bool has_truetype_tables() const;
    hb_blob_t* table(quint32 tag);

    QRawFont face_;
    QByteArray name_;
    double units_per_em_ = 1000.0;
    bool italic_ = false;
    bool bold_ = false;
    std::map<quint32, hb_blob_t*> blobs_;
    hb_face_t* tables_ = nullptr;
    hb_font_t* shaper_ = nullptr;

    std::array<quint32, 256> latin1_glyphs_{}; ///< by code of encoding 0; 0 for none
    std::vector<std::array<QByteArray, 256>> encodings_;
    std::unordered_map<quint64, GlyphCode> codes_; ///< by glyph and character
    std::vector<NamedGlyph> glyphs_;
    int next_code_ = 256; ///< in the last encoding beyond the first
};

} // namespace printman
