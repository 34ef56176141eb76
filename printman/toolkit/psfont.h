#pragma once

#include <printman/toolkit/psstream.h>

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

/// A glyph as a font of the job shows it: a byte in one of the font's encodings.
struct PsGlyphCode {
    int encoding = 0;
    char code = 0;
};

/// One typeface that a job embeds, with the glyphs that were used.
///
/// Glyphs are named after the characters that they stand for ("uni00E9"), so that a PDF made of the
/// job can be searched. The first encoding is Latin-1; further characters get further encodings of
/// the same font. TrueType outlines are embedded as a Type 42 font that HarfBuzz has cut down to
/// the glyphs used, all others as a Type 1 font made from the outlines.
class PsFont {
public:
    /// @param face any size; it is the outlines that count
    /// @param name the PostScript name, unique in the job
    PsFont(const QRawFont& face, QByteArray name);
    ~PsFont();
    PsFont(const PsFont&) = delete;
    PsFont& operator=(const PsFont&) = delete;

    /// The code that shows @p glyph for the character @p ch (0: none is known), which is then
    /// embedded.
    PsGlyphCode encode(quint32 glyph, char32_t ch);

    /// The same for the printable Latin-1 character @p ch and its glyph: its own byte in encoding
    /// 0.
    void use_latin1(quint32 glyph, unsigned char ch) {
        if (latin1_glyphs_[ch] != glyph)
            encode(glyph, ch);
    }

    /// The glyph of a character, 0 when the face has none.
    quint32 glyph(char32_t ch) const;

    /// Width of a glyph in ems, without hinting.
    double advance(quint32 glyph) const;

    /// For shaping, scaled to units_per_em(); null when the face has no tables to shape with.
    hb_font_t* shaper() const { return shaper_; }
    double units_per_em() const { return units_per_em_; }

    /// Whether the face is upright though an italic was asked for, or light though bold was: the
    /// text is then slanted or thickened.
    bool is_italic() const { return italic_; }
    bool is_bold() const { return bold_; }

    int encodings() const { return static_cast<int>(encodings_.size()); }

    /// The name of encoding @p encoding of the font.
    QByteArray name(int encoding) const;

    /// Writes the font resources of all encodings.
    void write(PsStream& out) const;

private:
    struct Named {
        quint32 glyph;
        QByteArray name;
        char32_t meant; ///< the character, when the name does not say it; else 0
    };

    void read_style();
    bool has_truetype_tables() const;
    hb_blob_t* table(quint32 tag);
    bool write_type42(PsStream& out) const;
    void write_type1(PsStream& out) const;
    void write_encoding(PsStream& out, int encoding) const;
    void write_meanings(PsStream& out) const;
    QByteArray type1_charstring(quint32 glyph) const;

    QRawFont face_;
    QByteArray name_;
    double units_per_em_ = 1000.0;
    bool italic_ = false;
    bool bold_ = false;
    std::map<quint32, hb_blob_t*> blobs_;
    hb_face_t* tables_ = nullptr;
    hb_font_t* shaper_ = nullptr;

    std::array<quint32, 256> latin1_glyphs_{}; ///< shown by encoding 0; 0 for none
    std::vector<std::array<QByteArray, 256>> encodings_;
    std::unordered_map<quint64, PsGlyphCode> codes_; ///< by glyph and character
    std::vector<Named> glyphs_;                      ///< what to embed, each name once
    int next_code_ = 256;                            ///< in the last encoding beyond the first
};

} // namespace printman
