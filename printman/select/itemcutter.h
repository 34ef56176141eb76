#pragma once

#include <printman/render/textruler.h>
#include <printman/stringitem.h>

namespace printman {

/// Cuts items down to the characters under a rectangle. Everything is in the logical units in which
/// the page was painted; a run's place is measured, never counted in cells, so that fonts of any
/// pitch work.
///
/// A piece receives the run's text, where it is drawn, and the item's alignment code; its other
/// fields are left alone. A run takes as many characters as fit into the given width.
///
/// Cost: one measurement per character, two for an inner run.
class ItemCutter {
public:
    explicit ItemCutter(const TextMeasure& measure) : measure_(measure) {}

    /// The part of @p item under @p selection. An item is not hit when the rectangle is null, when
    /// it was not painted or is blank, or when it does not lie wholly between the rectangle's top
    /// and bottom.
    ///
    /// @param piece a new item; becomes a full copy of @p item when all of it is covered
    /// @return whether the item is hit; @p piece is unchanged even so when a run from one end is as
    ///         long as the whole text
    bool cut(const QRect& selection, const StringItem& item, StringItem& piece) const;

    /// The leading run of at most @p width, but at least one character.
    ///
    /// @return false, with @p piece unchanged, when the whole text fits
    bool left(const StringItem& item, int width, StringItem& piece) const;

    /// The same for the trailing run.
    bool right(const StringItem& item, int width, StringItem& piece) const;

    /// The inner run between two leading runs: it starts after the first one that is as wide as
    /// @p start, and ends with the last one that is at most @p start + @p width wide. If that one
    /// is the shorter of the two, the inner run extends to the end of the text. If no leading run
    /// is that wide, its rectangle starts at the origin and has no height; if all fit, it is empty.
    void centre(const StringItem& item, int start, int width, StringItem& piece) const;

private:
    QRect leading(const StringItem& item, qsizetype length) const;
    QRect trailing(const StringItem& item, qsizetype length) const;

    const TextMeasure& measure_;
};

} // namespace printman
