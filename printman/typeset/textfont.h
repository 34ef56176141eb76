#pragma once

#include <printman/typeset/fontset.h>

#include <QFont>
#include <QTransform>

#include <array>
#include <memory>
#include <string>
#include <vector>

struct hb_buffer_t;

namespace printman {

/// A glyph of a shaped run.
struct ShapedGlyph {
    quint32 glyph = 0;
    char32_t ch = 0;    ///< the character that it stands for; 0 when there is none of its own
    QPointF position;   ///< from the run's baseline start, in the font's pixels
    double advance = 0; ///< its own width, in the font's pixels
};

/// A QFont at its size on a device, ready to shape text for a document's pages.
class TextFont {
public:
    /// @param dpi pixels an inch of the device
    TextFont(FontSet& fonts, const QFont& font, int dpi);

    /// The same with a given typeface of the font, one that stands in for it, say.
    TextFont(FontSet& fonts, const QRawFont& face, const QFont& font, int dpi);

    /// Whether @p text can be shaped here: every character in the typeface, and no script that
    /// needs more than kerning.
    bool covers(const QString& text) const;

    /// Shapes @p text, which covers() accepts: kerned, and without ligatures, so that every
    /// character comes back out of the page. Controls become blanks.
    ///
    /// @return the run's width in pixels
    double shape(const QString& text, std::vector<ShapedGlyph>& glyphs) const;

    /// Width of a glyph by itself, in pixels.
    double width(quint32 glyph) const { return face_.advance(glyph) * pixels_; }

    /// Of a fixed-pitch face, the width of each printable Latin-1 character in pixels, as Qt has
    /// it; else 0. Glyphs are stretched by the little that it differs from their own width.
    double pitch() const { return pitch_; }

    /// The shown bytes of Latin-1 text in a fixed pitch, controls as blanks.
    ///
    /// @return false when a character is not drawn at the pitch
    bool fixed_codes(const QString& text, std::string& codes) const;

    /// Font matrix in the document's font: ems to font pixels, y downwards.
    const QTransform& matrix() const { return matrix_; }

    EmbeddedFont& face() const { return face_; }

    /// Width in ems of the stroke that thickens a face without a bold of its own; 0 for none.
    double thickening() const { return thickening_; }

    /// Whether the machine has a typeface for the font at all.
    static bool can_load(const QFont& font);

    /// Whether the font asks for what only Qt's layout gives: spacing, capitals, stretch.
    static bool needs_layout(const QFont& font);

private:
    struct BufferDeleter {
        void operator()(hb_buffer_t* p) const;
    };

    void find_latin1();
    void find_pitch(const QFont& font);
    char32_t shown(char32_t ch) const;
    double place(const QList<uint>& text, std::vector<ShapedGlyph>& glyphs) const;

    EmbeddedFont& face_;
    double pixels_;
    double pitch_ = 0.0;
    bool kerning_;
    double thickening_ = 0.0;
    QTransform matrix_;

    enum class Latin1 : char { missing, control, drawn };
    std::array<Latin1, 256> kinds_{};
    std::array<quint32, 256> glyphs_{};
    std::array<double, 256> widths_{}; ///< in pixels
    std::unique_ptr<hb_buffer_t, BufferDeleter> buffer_;
};

} // namespace printman
