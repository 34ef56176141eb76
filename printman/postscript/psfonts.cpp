#include <printman/postscript/psfonts.h>
#include <printman/postscript/psstream.h>
#include <printman/typeset/fontset.h>

#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace printman {

namespace {

// A Type 42 font keeps its tables in strings of at most 65535 bytes, the last of them unused.
constexpr unsigned max_sfnts_string = 65534;

unsigned be16(const uchar* p) {
    return static_cast<unsigned>(p[0]) << 8 | p[1];
}

unsigned be32(const uchar* p) {
    return be16(p) << 16 | be16(p + 2);
}

/// Where the sfnt may be cut: before a table, or within glyf before a glyph.
std::vector<unsigned> cut_points(std::string_view sfnt) {
    const auto* data = reinterpret_cast<const uchar*>(sfnt.data());
    const auto size = static_cast<unsigned>(sfnt.size());
    std::vector<unsigned> cuts{size};
    unsigned glyf = 0, loca = 0, loca_size = 0, head = 0;
    const unsigned tables = size >= 12 ? be16(data + 4) : 0;
    for (unsigned i = 0; i < tables && 28 + 16 * i <= size; ++i) {
        const uchar* entry = data + 12 + 16 * i;
        const unsigned offset = be32(entry + 8);
        cuts.push_back(offset);
        const std::string_view tag(reinterpret_cast<const char*>(entry), 4);
        if (tag == "glyf")
            glyf = offset;
        else if (tag == "head")
            head = offset;
        else if (tag == "loca") {
            loca = offset;
            loca_size = be32(entry + 12);
        }
    }
    constexpr unsigned index_format_offset = 50;
    const bool wide = head && head + 52 <= size && be16(data + head + index_format_offset) != 0;
    const unsigned step = wide ? 4 : 2;
    for (unsigned i = 0; loca && i + step <= loca_size && loca + i + step <= size; i += step) {
        const uchar* entry = data + loca + i;
        cuts.push_back(glyf + (wide ? be32(entry) : 2 * be16(entry)));
    }
    std::sort(cuts.begin(), cuts.end());
    return cuts;
}

void write_sfnts(PsStream& out, std::string_view sfnt) {
    const std::vector<unsigned> cuts = cut_points(sfnt);
    out << "/sfnts[\n";
    unsigned start = 0;
    const auto size = static_cast<unsigned>(sfnt.size());
    while (start < size) {
        // The last cut within the string's reach; a longer piece is cut where the string ends.
        auto cut = std::upper_bound(cuts.begin(), cuts.end(), start + max_sfnts_string);
        unsigned end = cut == cuts.begin() ? start : std::min(size, *std::prev(cut));
        if (end <= start || end % 2 != 0)
            end = std::min(size, start + max_sfnts_string);
        out << '<';
        out.hex(sfnt.substr(start, end - start)) << "00>\n";
        start = end;
    }
    out << "]def\n";
}

/// The encryption of Type 1 charstrings, with its four leading bytes.
QByteArray encrypt_charstring(const QByteArray& plain) {
    quint16 key = 4330;
    QByteArray out;
    const auto put = [&](uchar byte) {
        const auto cipher = static_cast<uchar>(byte ^ (key >> 8));
        key = static_cast<quint16>((cipher + key) * 52845 + 22719);
        out.append(static_cast<char>(cipher));
    };
    for (int i = 0; i < 4; ++i)
        put(0);
    for (const char byte : plain)
        put(static_cast<uchar>(byte));
    return out;
}

/// Writes a Type 1 charstring: operands and operators of the outline language.
class Charstring {
public:
    enum Operator : uchar {
        rlineto = 5,
        rrcurveto = 8,
        closepath = 9,
        hsbw = 13,
        endchar = 14,
        rmoveto = 21
    };

    Charstring& operand(int value) {
        if (value >= -107 && value <= 107) {
            byte(value + 139);
        } else if (value >= 108 && value <= 1131) {
            byte(247 + ((value - 108) >> 8)).byte(value - 108);
        } else if (value >= -1131 && value <= -108) {
            byte(251 + ((-value - 108) >> 8)).byte(-value - 108);
        } else {
            const auto bits = static_cast<quint32>(value);
            byte(255).byte(bits >> 24).byte(bits >> 16).byte(bits >> 8).byte(bits);
        }
        return *this;
    }
    Charstring& op(Operator code) { return byte(code); }

    /// Operands for the way from the current point to @p to, which becomes the current point.
    Charstring& to(QPointF to) {
        const int x = qRound(to.x());
        const int y = qRound(-to.y());
        operand(x - x_).operand(y - y_);
        x_ = x;
        y_ = y;
        return *this;
    }
    const QByteArray& bytes() const { return bytes_; }

private:
    Charstring& byte(quint32 value) {
        bytes_.append(static_cast<char>(value & 0xff));
        return *this;
    }

    QByteArray bytes_;
    int x_ = 0;
    int y_ = 0;
};

void write_encoding(PsStream& out, const EmbeddedFont& font, int encoding) {
    out << "/Encoding 256 array 0 1 255{1 index exch/.notdef put}for\n";
    for (size_t code = 0; code < 256; ++code) {
        const QByteArray& glyph = font.code_names(encoding)[code];
        if (!glyph.isEmpty())
            out << "dup " << std::to_string(code) << '/' << glyph.toStdString() << " put\n";
    }
    out << "def\n";
}

/// What distillers look up for glyph names that do not say their character.
void write_meanings(PsStream& out, const EmbeddedFont& font) {
    out << "/FontInfo 2 dict dup begin/GlyphNames2Unicode ";
    out.integer(static_cast<qint64>(font.glyphs().size()) + 1) << " dict dup begin\n";
    for (const NamedGlyph& glyph : font.glyphs()) {
        if (glyph.meant == 0 || glyph.meant > 0xffff)
            continue;
        const QByteArray digits = QByteArray::number(static_cast<uint>(glyph.meant), 16);
        out << '/' << glyph.name.toStdString() << '<' << digits.rightJustified(4, '0').toStdString()
            << ">def\n";
    }
    out << "end def end def\n";
}

void write_type42(PsStream& out, const EmbeddedFont& font, const QByteArray& sfnt) {
    out << "12 dict begin/FontType 42 def/FontName/" << font.name(0).toStdString()
        << " def/PaintType 0 def\n/FontMatrix[1 0 0 1 0 0]def/FontBBox[0 0 0 0]def\n";
    write_encoding(out, font, 0);
    write_meanings(out, font);
    out << "/CharStrings ";
    out.integer(static_cast<qint64>(font.glyphs().size()) + 1) << " dict dup begin/.notdef 0 def\n";
    for (const NamedGlyph& glyph : font.glyphs()) {
        out << '/' << glyph.name.toStdString() << ' ';
        out.integer(glyph.glyph) << " def\n";
    }
    out << "end def\n";
    write_sfnts(out, {sfnt.constData(), static_cast<size_t>(sfnt.size())});
    out << "FontName currentdict end definefont pop\n";
}

QByteArray type1_charstring(const EmbeddedFont& font, quint32 glyph) {
    Charstring code;
    code.operand(0).operand(qRound(font.advance(glyph) * font.units_per_em())).op(Charstring::hsbw);
    const QPainterPath outline = font.outline(glyph);
    bool open = false;
    for (int i = 0; i < outline.elementCount(); ++i) {
        const QPainterPath::Element element = outline.elementAt(i);
        if (element.isMoveTo()) {
            if (open)
                code.op(Charstring::closepath);
            code.to(element).op(Charstring::rmoveto);
            open = true;
        } else if (element.isLineTo()) {
            code.to(element).op(Charstring::rlineto);
        } else {
            code.to(element).to(outline.elementAt(i + 1)).to(outline.elementAt(i + 2));
            code.op(Charstring::rrcurveto);
            i += 2;
        }
    }
    if (open)
        code.op(Charstring::closepath);
    return encrypt_charstring(code.op(Charstring::endchar).bytes());
}

void write_type1(PsStream& out, const EmbeddedFont& font) {
    out << "13 dict begin/FontType 1 def/FontName/" << font.name(0).toStdString()
        << " def/PaintType 0 def\n/FontMatrix[";
    const QByteArray unit = QByteArray::number(1.0 / font.units_per_em(), 'g', 9);
    out << unit.toStdString() << " 0 0 " << unit.toStdString()
        << " 0 0]def/FontBBox{0 0 0 0}def\n"
           "/Private 4 dict dup begin/BlueValues[]def/MinFeature{16 16}def/password 5839 def end "
           "def\n";
    write_encoding(out, font, 0);
    write_meanings(out, font);
    out << "/CharStrings ";
    out.integer(static_cast<qint64>(font.glyphs().size()) + 1) << " dict dup begin\n";
    const auto define = [&](const QByteArray& name, quint32 glyph) {
        const QByteArray code = type1_charstring(font, glyph);
        out << '/' << name.toStdString() << '<';
        out.hex({code.constData(), static_cast<size_t>(code.size())}) << ">def\n";
    };
    define(".notdef", 0);
    for (const NamedGlyph& glyph : font.glyphs())
        define(glyph.name, glyph.glyph);
    out << "end def\nFontName currentdict end definefont pop\n";
}

void write_font(PsStream& out, const EmbeddedFont& font) {
    const std::string name = font.name(0).toStdString();
    out << "%%BeginResource: font " << name << '\n';
    const QByteArray sfnt = font.truetype_subset();
    if (sfnt.isEmpty())
        write_type1(out, font);
    else
        write_type42(out, font, sfnt);
    out << "%%EndResource\n";
    for (int encoding = 1; encoding < font.encodings(); ++encoding) {
        const std::string derived = font.name(encoding).toStdString();
        out << "%%BeginResource: font " << derived << "\n/" << derived << '/' << name
            << " findfont dup length dict begin{1 index/FID eq{pop pop}{def}ifelse}forall\n";
        write_encoding(out, font, encoding);
        out << "currentdict end definefont pop\n%%EndResource\n";
    }
}

} // namespace

void write_fonts(PsStream& out, const FontSet& fonts) {
    for (const auto& font : fonts.fonts())
        write_font(out, *font);
}

} // namespace printman
