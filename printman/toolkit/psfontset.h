#pragma once

#include <printman/toolkit/psfont.h>

#include <QFont>

#include <map>
#include <memory>

namespace printman {

/// The typefaces of a print job.
class PsFontSet {
public:
    /// The job's font for @p face, made when it is met first; its size does not matter.
    PsFont& font(const QRawFont& face);

    /// The names of all fonts, in the order in which they were met.
    std::vector<QByteArray> names() const;

    void write(PsStream& out) const;

private:
    QByteArray unique_name(const QRawFont& face) const;

    std::map<QByteArray, PsFont*> by_face_;
    std::vector<std::unique_ptr<PsFont>> fonts_;
};

} // namespace printman
