#pragma once

#include <QFont>
#include <QString>

#include <array>

class QPainter;

namespace printman {

/// Whether text may leave ink outside its place, above or below its line or at its ends: accents of
/// capitals do in many fonts, and on a scaled or dense image whatever comes within a pixel or so of
/// the line's edge.
class InkOverhang {
public:
    /// Measures the painter's font, unless it is that of the last call. Cost: 256 characters.
    void measure(const QPainter& p);

    bool above(const QString& text) const { return any(above_, text); }
    bool below(const QString& text) const { return any(below_, text); }
    bool before(const QString& text) const { return any(before_, text.left(1)); }
    bool behind(const QString& text) const { return any(behind_, text.right(1)); }

private:
    using Table = std::array<bool, 256>; ///< of Latin-1; any other character may

    static bool any(const Table& table, const QString& text);

    QFont font_;
    double slack_ = -1; ///< how near the edge counts, in logical units; negative at first
    Table above_{};
    Table below_{};
    Table before_{};
    Table behind_{};
};

} // namespace printman
