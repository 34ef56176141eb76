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

/// Options of a search.
struct SearchOptions {
    bool forward = true;
    bool case_sensitive = true;
    bool whole_word = false;

    bool operator==(const SearchOptions&) const = default;
};

/// A search text, which is a regular expression, prepared for one search.
///
/// A malformed expression finds nothing, and neither does one that could keep the user waiting: one
/// that might take a second for a single item, or a search that has lasted 5 seconds.
class SearchPattern {
public:
    SearchPattern(const QString& text, const SearchOptions& options);

    struct Match {
        qsizetype position = 0;
        qsizetype length = 0; ///< 0 for no match
    };

    /// The first match in @p text that starts at or after @p from, the longest one there. An empty
    /// match does not count.
    Match find(const QString& text, qsizetype from);

    /// Whether the search ended early.
    bool gave_up() const { return gave_up_; }

    bool is_forward() const { return forward_; }

private:
    bool may_search(qsizetype length);
    const QRegExp& expression();

    bool forward_;
    QString text_;
    Qt::CaseSensitivity case_;
    PatternCost cost_;
    std::optional<QRegExp> expression_; ///< compiled once it is known not to run too long
    QElapsedTimer time_;
    qsizetype max_allowed_ = 0; ///< the longest text whose cost was found acceptable
    bool gave_up_ = false;
};

/// Appends the matches in an item, in search order; none when the search gave up. Each holds the
/// matched characters, where they are drawn, and the item that they come from.
///
/// @param measure measures as the page was painted
/// @param item    has been painted, so that its place is known
/// @return whether the item has any text
bool find_in_item(const TextMeasure& measure, SearchPattern& pattern, const StringItem& item,
                  std::list<StringItem>& matches);

/// The matches on a page, in search order: from the top left, or in exactly the reverse order; none
/// when the search gave up.
std::list<StringItem> find_in_rows(const TextMeasure& measure, SearchPattern& pattern,
                                   const PageRows& rows);

} // namespace printman
