#pragma once

#include <printman/render/textruler.h>
#include <printman/stringitem.h>

namespace printman {

/// Cuts items to the characters that lie under a rectangle. Everything is in the logical units in
/// which the page was painted; a run's place is measured, never counted in cells, so fonts of any
/// pitch work.
///
/// A piece has the run's text, where it is drawn and the item's alignment code; its other fields
/// stay as the caller prepared them. A run is taken while it is at most as wide as is asked for.
///
/// Cost: one measurement a character, two for an inner run.
class ItemCutter {
public:
    explicit ItemCutter(const TextMeasure& measure) : measure_(measure) {}

    /// The part of @p item under @p selection. Nothing is hit by a null rectangle, of an item that
    /// was not painted or shows no ink, or when the item's lines do not lie wholly within those of
    /// the rectangle.
    ///
    /// @param piece a fresh item; becomes a full copy of @p item when all of it is covered
    /// @return whether the item is hit; @p piece may then still be as it was, when a run from one
    ///         end is as long as the whole text
    bool cut(const QRect& selection, const StringItem& item, StringItem& piece) const;

    /// The leading run of at most @p width, one character at least.
    ///
    /// @return false, and @p piece stays, when the whole text fits
    bool left(const StringItem& item, int width, StringItem& piece) const;

    /// The trailing run, likewise.
    bool right(const StringItem& item, int width, StringItem& piece) const;

    /// The inner run that starts behind the first leading run as wide as @p start, and ends with
    /// the last one that is at most @p start + @p width wide. Where the second does not reach
    /// beyond the first, the run goes on to the end of the text. Where there is no such first run
    /// its rectangle starts at the origin and has no height; without an end it is empty.
    void centre(const StringItem& item, int start, int width, StringItem& piece) const;

private:
    QRect leading(const StringItem& item, qsizetype length) const;
    QRect trailing(const StringItem& item, qsizetype length) const;

    const TextMeasure& measure_;
};

} // namespace printman
