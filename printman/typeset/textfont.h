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
    char32_t ch = 0;    ///< the character that it stands for; 0 if it has none of its own
    QPointF position;   ///< from the start of the run's baseline, in the font's pixels
    double advance = 0; ///< its own width, in the font's pixels
};

/// A QFont at its size on a device, ready to shape text for a document's pages.
class TextFont {
public:
    /// @param dpi the device's pixels per inch
    TextFont(FontSet& fonts, const QFont& font, int dpi);

    /// The same with a given typeface, such as a substitute for characters that the font lacks.
    TextFont(FontSet& fonts, const QRawFont& face, const QFont& font, int dpi);

    /// Whether @p text can be shaped here: the typeface has every character, and no script needs
    /// more than kerning.
    bool covers(const QString& text) const;

    /// Shapes @p text, which covers() accepts: with kerning but without ligatures, so that every
    /// character can be extracted from the page. Control characters become blanks.
    ///
    /// @return the run's width in pixels
    double shape(const QString& text, std::vector<ShapedGlyph>& glyphs) const;

    /// The width of a single glyph, in pixels.
    double width(quint32 glyph) const { return face_.advance(glyph) * pixels_; }

    /// The width of each printable Latin-1 character of a fixed-pitch face in pixels, as Qt
    /// measures it; 0 for any other face. Glyphs are stretched slightly to that width.
    double pitch() const { return pitch_; }

    /// The codes that show Latin-1 text in a fixed pitch, control characters as blanks.
    ///
    /// @return false if a character does not have that pitch
    bool fixed_codes(const QString& text, std::string& codes) const;

    /// The matrix of the document's font: ems to font pixels, y downwards.
    const QTransform& matrix() const { return matrix_; }

    EmbeddedFont& face() const { return face_; }

    /// The width in ems of the stroke that thickens a face without a bold of its own; 0 for none.
    double thickening() const { return thickening_; }

    /// Whether the machine has any typeface for the font.
    static bool can_load(const QFont& font);

    /// Whether the font needs something that only Qt's layout does: spacing, capitals, stretch.
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
