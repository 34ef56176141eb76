#pragma once

#include <printman/select/patterncost.h>
#include <printman/stringitem.h>

#include <QElapsedTimer>
#include <QRegExp>
#include <QString>

#include <list>
#include <optional>

namespace printman {

class PageRows;
class TextMeasure;

/// How a text is searched for.
struct SearchOptions {
    bool forward = true;
    bool case_sensitive = true;
    bool whole_word = false;

    bool operator==(const SearchOptions&) const = default;
};

/// A search text, which is a regular expression, made ready for one search.
///
/// An expression that is malformed finds nothing, and so does one that could keep the user waiting:
/// one that might take a second for a single item, or a search that has lasted 5 seconds.
class SearchPattern {
public:
    SearchPattern(const QString& text, const SearchOptions& options);

    struct Match {
        qsizetype position = 0;
        qsizetype length = 0; ///< 0 when there is none
    };

    /// The first match in @p text that starts at @p from or behind it, the longest there. A match
    /// of no characters is none.
    Match find(const QString& text, qsizetype from);

    /// Whether the search ended before it was through.
    bool gave_up() const { return gave_up_; }

    bool is_forward() const { return forward_; }

private:
    bool may_search(qsizetype length);
    const QRegExp& expression();

    bool forward_;
    QString text_;
    Qt::CaseSensitivity case_;
    PatternCost cost_;
    std::optional<QRegExp> expression_; ///< compiled once a search is known to end
    QElapsedTimer time_;
    qsizetype longest_ = 0; ///< text that was found to be worth its cost
    bool gave_up_ = false;
};

/// Appends the matches in an item, in search order; none when the search gave up. Each has the
/// matched characters and where they are drawn, and what it was cut from.
///
/// @param measure as the page was painted
/// @param item    painted before, so that it knows its place
/// @return whether the item has text at all
bool find_in_item(const TextMeasure& measure, SearchPattern& pattern, const StringItem& item,
                  std::list<StringItem>& matches);

/// The matches on a page, in search order: from the top left on, or the exact reverse; none when
/// the search gave up.
std::list<StringItem> find_in_rows(const TextMeasure& measure, SearchPattern& pattern,
                                   const PageRows& rows);

} // namespace printman
