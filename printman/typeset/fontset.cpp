#include <printman/typeset/fontset.h>

#include <QCryptographicHash>

#include <algorithm>

namespace printman {

namespace {

QByteArray face_key(const QRawFont& face) {
    QCryptographicHash hash(QCryptographicHash::Md5);
    // The head table holds a checksum of the whole file.
    hash.addData(face.fontTable("head"));
    hash.addData((face.familyName() + u'\n' + face.styleName()).toUtf8());
    hash.addData(QByteArray::number(face.weight()) + ' ' + QByteArray::number(face.style()));
    return hash.result();
}

} // namespace

EmbeddedFont& FontSet::font(const QRawFont& face) {
    EmbeddedFont*& known = by_face_[face_key(face)];
    if (!known) {
        fonts_.push_back(std::make_unique<EmbeddedFont>(face, unique_name(face)));
        known = fonts_.back().get();
    }
    return *known;
}

QByteArray FontSet::unique_name(const QRawFont& face) const {
    QByteArray base;
    for (const QChar c : QString(face.familyName() + u'-' + face.styleName())) {
        if (c.unicode() < 0x80 && (c.isLetterOrNumber() || c == u'-'))
            base += static_cast<char>(c.unicode());
    }
    // A name may not look like a number, and its length is limited to 127 characters.
    base = base.left(80);
    if (base.isEmpty() ||
        !((base[0] >= 'A' && base[0] <= 'Z') || (base[0] >= 'a' && base[0] <= 'z')))
        base.prepend('F');
    QByteArray name = base;
    for (int n = 2; std::any_of(fonts_.begin(), fonts_.end(),
                                [&](const auto& font) { return font->name(0) == name; });
         ++n)
        name = base + '-' + QByteArray::number(n);
    return name;
}

std::vector<QByteArray> FontSet::names() const {
    std::vector<QByteArray> names;
    for (const auto& font : fonts_) {
        for (int encoding = 0; encoding < font->encodings(); ++encoding)
            names.push_back(font->name(encoding));
    }
    return names;
}

} // namespace printman
