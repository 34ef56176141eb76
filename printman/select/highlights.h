#pragma once

#include <printman/select/inkreach.h>
#include <printman/stringitem.h>
#include <printman/toolkit/qvaluelist.h>

#include <QPoint>
#include <QRect>

#include <list>
#include <vector>

class QPainter;

namespace printman {

class PageRows;
class PageUnits;
class ScreenView;

/// What is highlighted on the page image, white on black: the pieces of the selection, or the
/// matches of a search.
///
/// A highlight is a StringItem with the piece's text and place, and the text, cell and alignment of
/// the item that it was cut from. A gap closes the space between two highlights on a line: its
/// drawn rectangle is the gap, its cell rectangle the place of the highlight to its right.
///
/// Only what changes is repainted: pieces that were shown and are not found again wait in a list of
/// their own until they are un-shown. Nothing of a highlight stays when it is.
class Highlights {
public:
    Highlights(ScreenView& screen, PageRows& rows, PageUnits& units)
        : screen_(screen), rows_(rows), units_(units) {}
    Highlights(const Highlights&) = delete;
    Highlights& operator=(const Highlights&) = delete;

    /// The highlights, in page order or in search order.
    const std::list<StringItem>& list() const { return list_; }

    /// Replaces the highlights by the pieces that a drag covers; what was highlighted waits to be
    /// un-shown, but for the pieces that are found again. Nothing is painted.
    void collect(QPoint from, QPoint to);

    /// collect(), unshow() and show(true) at once, with the same picture in the end: what is
    /// highlighted before and after is not painted again. Cost: by what changes.
    void follow(QPoint from, QPoint to);

    /// Takes the record drawn at @p record's place, and a gap at that place, from what waits to be
    /// un-shown.
    void keep(const StringItem& record);

    /// Takes the first gap drawn at @p gap from what waits to be un-shown.
    void keep_gap(const QRect& gap);

    /// Paints the highlights and shows the image.
    ///
    /// @param merge whether the gaps between neighbours on a line are painted too
    void show(bool merge);

    /// Restores the page where the pieces that wait to be un-shown and the gaps of earlier show()s
    /// are, and shows the image. Without such pieces it does nothing at all.
    void unshow();

    /// Un-shows everything and forgets it.
    void clear();

    /// Forgets everything without painting: the image is made anew.
    void forget();

    /// Paints what is highlighted once more, onto a page image that was made anew.
    ///
    /// @param p open on the image
    void repaint(QPainter& p);

    /// Appends matches, in search order.
    void append(std::list<StringItem> matches);

    // The current match: one of the highlights, shown alone.

    /// Goes to the first highlight and shows it; false when there is none.
    bool first_match();

    /// Goes to the next highlight and shows it alone. After the last one everything is cleared.
    ///
    /// @return false when there is no next one
    bool next_match();

    /// Paints the current match, shows the image and scrolls to the match.
    void show_match();

    /// Restores the page at every highlight and shows the image; the list stays.
    void unshow_matches();

private:
    using Records = std::list<StringItem>;

    void add_gaps();
    void draw_text(QPainter& p, const StringItem& record, const QRect& place);
    void paint_changes(QPainter& p, const std::vector<QRect>& fresh);
    void repaint(QPainter& p, const StringItem& record);
    bool draw_items(QPainter& p, int line, const QRect& place, const StringItem* source_of);
    void restore(QPainter& p, const QRect& place, const StringItem* record);
    void restore(QPainter& p, const Records& records);

    ScreenView& screen_;
    PageRows& rows_;
    PageUnits& units_;
    Records list_;
    Records previous_;
    Records gaps_;
    Records previous_gaps_;
    std::vector<const StringItem*> fresh_; ///< highlights that were none before the last collect()
    Records::iterator current_ = list_.end();
    bool all_shown_ = false; ///< all highlights are painted, not just the current match
    InkReach ink_;
};

} // namespace printman
