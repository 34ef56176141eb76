#pragma once

#include <printman/typeset/embeddedfont.h>

#include <QRawFont>

#include <map>
#include <memory>
#include <vector>

namespace printman {

/// The typefaces of a document.
class FontSet {
public:
    /// The document's font for @p face, created on first use; the face's size does not matter.
    EmbeddedFont& font(const QRawFont& face);

    /// The names of all fonts, in the order of their first use.
    std::vector<QByteArray> names() const;

    /// The fonts in the same order.
    const std::vector<std::unique_ptr<EmbeddedFont>>& fonts() const { return fonts_; }

private:
    QByteArray unique_name(const QRawFont& face) const;

    std::map<QByteArray, EmbeddedFont*> by_face_;
    std::vector<std::unique_ptr<EmbeddedFont>> fonts_;
};

} // namespace printman
