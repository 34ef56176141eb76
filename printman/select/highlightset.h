#pragma once

#include <printman/stringitem.h>

#include <QRect>

#include <list>
#include <vector>

namespace printman {

/// What is highlighted on a page, and what was: the records alone, nothing is painted here.
///
/// The gaps lie between neighbours of pieces() on a line; there are none until they are added.
/// Waiting are the pieces and gaps that were highlighted before the last replace() and may still be
/// painted, less those that were found again or kept.
class HighlightSet {
public:
    using Records = std::list<StringItem>;
    using Pointers = std::vector<const StringItem*>;

    const Records& pieces() const { return pieces_; }
    const Records& gaps() const { return gaps_; }
    const Records& waiting_pieces() const { return waiting_pieces_; }
    const Records& waiting_gaps() const { return waiting_gaps_; }

    /// Makes @p pieces the highlights. The earlier ones and their gaps wait from now on, except for
    /// a piece and a gap at the place of each new piece; what waited until now is forgotten.
    ///
    /// @return those of pieces() that were not highlighted before, in the same order; valid until
    ///         pieces() changes
    Pointers replace(Records pieces);

    /// Appends highlights.
    void append(Records pieces) { pieces_.splice(pieces_.end(), pieces); }

    /// Adds the gaps between neighbours.
    void add_gaps();

    /// Takes the gaps from those that wait.
    ///
    /// @return the places of those that did not wait
    std::vector<QRect> keep_gaps();

    /// Takes the first piece and the first gap at @p place from those that wait.
    void keep(const QRect& place);

    /// Takes the first gap at @p place from those that wait.
    void keep_gap(const QRect& place);

    /// Nothing waits any more.
    void forget_waiting();

    /// Removes everything.
    void clear();

private:
    Records pieces_;
    Records gaps_;
    Records waiting_pieces_;
    Records waiting_gaps_;
};

} // namespace printman
