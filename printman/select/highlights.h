#pragma once

#include <printman/select/highlightpainter.h>
#include <printman/select/highlightset.h>
#include <printman/select/matchcursor.h>

#include <QPoint>
#include <QRect>

#include <list>

class QPainter;

namespace printman {

class PageRows;
class PageUnits;
class ScreenView;

/// What is highlighted on the page image: the pieces of the selection, or the matches of a search.
///
/// A highlight is a StringItem with the piece's text and place, and the text, cell and alignment of
/// the item that it was cut from. A gap closes the space between two highlights on a line: its
/// drawn rectangle is the gap, its cell rectangle the place of the highlight to its right.
///
/// Only what changes is repainted: pieces that were shown and are not found again wait until they
/// are un-shown, which leaves nothing of them.
class Highlights {
public:
    Highlights(ScreenView& screen, PageRows& rows, PageUnits& units)
        : screen_(screen), rows_(rows), units_(units), painter_(screen, rows, units) {}
    Highlights(const Highlights&) = delete;
    Highlights& operator=(const Highlights&) = delete;

    /// The highlights, in page order or in search order.
    const std::list<StringItem>& list() const { return set_.pieces(); }

    /// Replaces the highlights by the pieces that a drag covers; what was highlighted waits to be
    /// un-shown, except for the pieces that are found again. Nothing is painted.
    void collect(QPoint from, QPoint to) { replace(from, to); }

    /// The same as collect(), unshow() and show(true), with the same picture in the end: what is
    /// highlighted before and after is not painted again. Cost: by what changes.
    void follow(QPoint from, QPoint to);

    /// Takes the record drawn at @p record's place, and a gap at that place, from what waits to be
    /// un-shown.
    void keep(const StringItem& record) { set_.keep(record.drawn); }

    /// Takes the first gap drawn at @p gap from what waits to be un-shown.
    void keep_gap(const QRect& gap) { set_.keep_gap(gap); }

    /// Paints the highlights and shows the image.
    ///
    /// @param merge whether the gaps between neighbours on a line are painted too
    void show(bool merge);

    /// Restores the page at the pieces and gaps that wait to be un-shown, and shows the image. Does
    /// nothing when no piece waits.
    void unshow();

    /// Un-shows everything and forgets it.
    void clear();

    /// Forgets everything without painting, because the image will be made again.
    void forget();

    /// Paints what is highlighted once more, onto a new page image.
    ///
    /// @param p open on the image
    void repaint(QPainter& p);

    /// Appends matches, in search order.
    void append(std::list<StringItem> matches) { set_.append(std::move(matches)); }

    // The current match: one of the highlights, shown by itself.

    /// Goes to the first highlight and shows it; false if there is none.
    bool first_match();

    /// Goes to the next highlight and shows only that. After the last one everything is cleared.
    ///
    /// @return false if there is no next one
    bool next_match();

    /// Paints the current match, shows the image and scrolls to the match.
    void show_match();

    /// Restores the page at every highlight and shows the image; the list stays.
    void unshow_matches();

private:
    HighlightSet::Pointers replace(QPoint from, QPoint to);
    HighlightSet::Records pieces_under(QPoint from, QPoint to);

    template <typename Paint>
    void change_image(const Paint& paint);

    ScreenView& screen_;
    const PageRows& rows_;
    const PageUnits& units_;
    HighlightPainter painter_;
    HighlightSet set_;
    MatchCursor match_{set_.pieces()};
    bool shows_all_ = false; ///< all highlights are on the image; else only the current match
};

} // namespace printman
