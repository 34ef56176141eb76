#pragma once

#include <QFont>
#include <QString>

#include <array>

class QPainter;

namespace printman {

/// Whether the ink of a text may reach beyond its place, above or below its line or at its ends:
/// accents of capitals do in many fonts, and on a scaled or dense image so does whatever comes
/// within about a pixel of the edge.
class InkOverhang {
public:
    /// Measures the painter's font unless it is that of the last call. Cost: 256 characters.
    void measure(const QPainter& p);

    bool above(const QString& text) const { return any(above_, text); }
    bool below(const QString& text) const { return any(below_, text); }
    bool before(const QString& text) const { return any(before_, text.left(1)); }
    bool after(const QString& text) const { return any(after_, text.right(1)); }

private:
    using Table = std::array<bool, 256>; ///< by Latin-1 character; any other one may reach out

    static bool any(const Table& table, const QString& text);

    QFont font_;
    double slack_ = -1; ///< distance from the edge that counts, in logical units; -1: not measured
    Table above_{};
    Table below_{};
    Table before_{};
    Table after_{};
};

} // namespace printman
