#pragma once

#include <printman/select/highlightset.h>
#include <printman/select/inkoverhang.h>

#include <QRect>

#include <vector>

class QPainter;

namespace printman {

class PageRows;
class PageUnits;
class ScreenView;

/// How highlights look on the page image: white text on black. A piece's text never leaves its
/// place, so that the page can be restored there; nothing of a highlight is left then.
class HighlightPainter {
public:
    using Records = HighlightSet::Records;

    HighlightPainter(const ScreenView& screen, const PageRows& rows, const PageUnits& units)
        : screen_(screen), rows_(rows), units_(units) {}

    // Every painter is open on the page image.

    /// Paints one piece.
    void paint(QPainter& p, const StringItem& piece);

    /// Paints all pieces and gaps of @p set.
    void paint(QPainter& p, const HighlightSet& set);

    /// Restores what waits in @p set and paints what is new, with the same picture in the end as
    /// restoring everything before and painting everything now. Cost: by what changes.
    ///
    /// @param fresh_pieces the pieces that are not painted yet, in the set's order
    /// @param fresh_gaps   the places of the gaps that are not painted yet
    void paint_changes(QPainter& p, const HighlightSet& set,
                       const HighlightSet::Pointers& fresh_pieces,
                       const std::vector<QRect>& fresh_gaps);

    /// Restores the page at the places of @p records, pieces or gaps.
    void restore(QPainter& p, const Records& records);

private:
    void draw_text(QPainter& p, const StringItem& piece, const QRect& place) const;
    void restore(QPainter& p, const QRect& place, const StringItem* piece) const;
    bool draw_items(QPainter& p, int line, const QRect& place, const StringItem* piece) const;

    const ScreenView& screen_;
    const PageRows& rows_;
    const PageUnits& units_;
    InkOverhang ink_;
};

} // namespace printman
