#include <printman/typeset/embeddedfont.h>

#include <hb-ot.h>
#include <hb-subset.h>

#include <algorithm>
#include <cmath>

namespace printman {

namespace {

constexpr int first_free_code = 0x21;

QByteArray glyph_name(quint32 glyph, char32_t ch) {
    if (ch == 0)
        return "g" + QByteArray::number(glyph);
    const QByteArray digits = QByteArray::number(static_cast<uint>(ch), 16).toUpper();
    return ch > 0xffff ? "u" + digits : "uni" + digits.rightJustified(4, '0');
}

bool is_latin1_text(char32_t ch) {
    return (ch >= 0x20 && ch < 0x7f) || (ch >= 0xa0 && ch < 0x100);
}

quint16 u16(const QByteArray& table, int offset) {
    if (table.size() < offset + 2)
        return 0;
    return static_cast<quint16>((static_cast<uchar>(table[offset]) << 8) |
                                static_cast<uchar>(table[offset + 1]));
}

struct HbDeleter {
    void operator()(hb_subset_input_t* p) const { hb_subset_input_destroy(p); }
    void operator()(hb_face_t* p) const { hb_face_destroy(p); }
    void operator()(hb_blob_t* p) const { hb_blob_destroy(p); }
};
template <typename T>
using HbPtr = std::unique_ptr<T, HbDeleter>;

HbPtr<hb_blob_t> subset_truetype(hb_face_t* face, const std::vector<quint32>& glyphs) {
    const HbPtr<hb_subset_input_t> input(hb_subset_input_create_or_fail());
    if (!input)
        return {};
    // The names in the font refer to the glyphs by their original numbers.
    hb_subset_input_set_flags(input.get(),
                              HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
    hb_set_t* wanted = hb_subset_input_glyph_set(input.get());
    hb_set_add(wanted, 0);
    for (const quint32 glyph : glyphs)
        hb_set_add(wanted, glyph);
    hb_set_t* dropped = hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG);
    for (const char* tag : {"GSUB", "GPOS", "GDEF", "kern", "cmap", "name", "post", "OS/2", "gasp",
                            "DSIG", "LTSH", "VDMX", "hdmx", "FFTM", "PCLT", "meta", "BASE", "JSTF",
                            "vhea", "vmtx", "MATH", "COLR", "CPAL", "SVG ", "CBDT", "CBLC"})
        hb_set_add(dropped, hb_tag_from_string(tag, 4));
    const HbPtr<hb_face_t> subset(hb_subset_or_fail(face, input.get()));
    return HbPtr<hb_blob_t>(subset ? hb_face_reference_blob(subset.get()) : nullptr);
}

} // namespace

EmbeddedFont::EmbeddedFont(const QRawFont& face, QByteArray name)
    : face_(face), name_(std::move(name)), encodings_(1) {
    if (face_.unitsPerEm() > 0)
        units_per_em_ = face_.unitsPerEm();
    // At one pixel per unit, outlines and widths are in the face's own units.
    face_.setPixelSize(units_per_em_);
    read_style();
    // The tables of a variable font hold another instance than the one that was asked for.
    if (face_.fontTable("head").isEmpty() || !face_.fontTable("fvar").isEmpty())
        return;
    tables_ = hb_face_create_for_tables(
        [](hb_face_t*, hb_tag_t tag, void* font) {
            return hb_blob_reference(static_cast<EmbeddedFont*>(font)->table(tag));
        },
        this, nullptr);
    shaper_ = hb_font_create(tables_);
}

EmbeddedFont::~EmbeddedFont() {
    hb_font_destroy(shaper_);
    hb_face_destroy(tables_);
    for (const auto& [tag, blob] : blobs_)
        hb_blob_destroy(blob);
}

/// A table of the face, kept as long as the font lives: the subsetter refers to glyphs in a table
/// that it has released.
hb_blob_t* EmbeddedFont::table(hb_tag_t tag) {
    hb_blob_t*& blob = blobs_[tag];
    if (!blob) {
        char name[5] = {};
        hb_tag_to_string(tag, name);
        auto* bytes = new QByteArray(face_.fontTable(name));
        blob = hb_blob_create(bytes->constData(), static_cast<unsigned>(bytes->size()),
                              HB_MEMORY_MODE_READONLY, bytes,
                              [](void* data) { delete static_cast<QByteArray*>(data); });
    }
    return blob;
}

void EmbeddedFont::read_style() {
    const QByteArray os2 = face_.fontTable("OS/2");
    constexpr int weight_offset = 4;
    constexpr int selection_offset = 62;
    constexpr quint16 italic_or_oblique = 0x201;
    // The face's outlines are slanted already; its tables are not.
    italic_ = !has_truetype_tables() || (u16(os2, selection_offset) & italic_or_oblique) != 0;
    bold_ = (os2.isEmpty() ? face_.weight() : u16(os2, weight_offset)) >= QFont::DemiBold;
}

bool EmbeddedFont::has_truetype_tables() const {
    return !face_.fontTable("glyf").isEmpty() && face_.fontTable("fvar").isEmpty();
}

quint32 EmbeddedFont::glyph(char32_t ch) const {
    const QList<quint32> glyphs = face_.glyphIndexesForString(QString::fromUcs4(&ch, 1));
    return glyphs.isEmpty() ? 0 : glyphs.first();
}

double EmbeddedFont::advance(quint32 glyph) const {
    if (shaper_)
        return hb_font_get_glyph_h_advance(shaper_, glyph) / units_per_em_;
    const QList<QPointF> advances = face_.advancesForGlyphIndexes({glyph});
    return advances.isEmpty() ? 0.0 : advances.first().x() / units_per_em_;
}

GlyphCode EmbeddedFont::encode(quint32 glyph, char32_t ch) {
    if (ch < 256 && glyph != 0 && latin1_glyphs_[ch] == glyph)
        return {0, static_cast<char>(ch)};
    const quint64 key = (quint64{glyph} << 32) | ch;
    if (const auto known = codes_.find(key); known != codes_.end())
        return known->second;

    GlyphCode code;
    QByteArray name = glyph_name(glyph, ch);
    char32_t meant = 0;
    if (is_latin1_text(ch) && glyph != 0 && latin1_glyphs_[ch] == 0) {
        latin1_glyphs_[ch] = glyph;
        code.code = static_cast<char>(ch);
    } else {
        if (next_code_ == 256) {
            encodings_.emplace_back();
            next_code_ = first_free_code;
        }
        code.encoding = encodings() - 1;
        code.code = static_cast<char>(next_code_++);
        // Another glyph may already have the character's name.
        const bool taken =
            std::any_of(glyphs_.begin(), glyphs_.end(), [&](const NamedGlyph& other) {
                return other.name == name && other.glyph != glyph;
            });
        if (taken) {
            name = glyph_name(glyph, 0) + name;
            meant = ch;
        }
    }
    encodings_[code.encoding][static_cast<uchar>(code.code)] = name;
    glyphs_.push_back({glyph, name, meant});
    codes_.emplace(key, code);
    return code;
}

QByteArray EmbeddedFont::name(int encoding) const {
    return encoding == 0 ? name_ : name_ + "-e" + QByteArray::number(encoding);
}

QByteArray EmbeddedFont::truetype_subset() const {
    if (!tables_ || !has_truetype_tables())
        return {};
    std::vector<quint32> used;
    for (const NamedGlyph& glyph : glyphs_)
        used.push_back(glyph.glyph);
    const HbPtr<hb_blob_t> sfnt = subset_truetype(tables_, used);
    unsigned length = 0;
    const char* data = sfnt ? hb_blob_get_data(sfnt.get(), &length) : nullptr;
    return {data, static_cast<qsizetype>(length)};
}

} // namespace printman
