#include <printman/render/textruler.h>
#include <printman/report/pagerows.h>
#include <printman/select/pagesearch.h>

#include <algorithm>

namespace printman {

namespace {

constexpr qint64 max_milliseconds = 5000;
constexpr int left_flags = Qt::AlignLeft | Qt::AlignVCenter;

QString expression_text(const QString& text, const SearchOptions& options) {
    return options.whole_word ? QStringLiteral("\\b%1\\b").arg(text) : text;
}

/// Where a match is drawn: the text before it is measured too.
QRect match_place(const TextMeasure& measure, const StringItem& item,
                  const SearchPattern::Match& match) {
    const auto leading = [&](qsizetype length) {
        return measure.bounding_rect(item.drawn, left_flags, item.text.left(length));
    };
    if (match.position == 0)
        return leading(match.length);
    const QRect before = leading(match.position);
    const QRect with_match = leading(match.position + match.length);
    QRect place;
    place.setCoords(before.right() + 1, before.top(),
                    before.right() + 1 + with_match.width() - before.width(), before.bottom());
    return place;
}

} // namespace

SearchPattern::SearchPattern(const QString& text, const SearchOptions& options)
    : forward_(options.forward), text_(expression_text(text, options)),
      case_(options.case_sensitive ? Qt::CaseSensitive : Qt::CaseInsensitive), cost_(text_) {
    time_.start();
}

const QRegExp& SearchPattern::expression() {
    if (!expression_)
        expression_.emplace(text_, case_);
    return *expression_;
}

SearchPattern::Match SearchPattern::find(const QString& text, qsizetype from) {
    if (!cost_.compiles() || !may_search(text.size()) || !expression().isValid())
        return {};
    while (from < text.size() && !time_.hasExpired(max_milliseconds)) {
        const qsizetype position = expression_->indexIn(text, static_cast<int>(from));
        if (position < 0)
            return {};
        const qsizetype length = expression_->matchedLength();
        if (length > 0)
            return {position, length};
        from = position + 1;
    }
    gave_up_ |= from < text.size();
    return {};
}

bool SearchPattern::may_search(qsizetype length) {
    if (length > max_allowed_) {
        if (cost_.allows(length))
            max_allowed_ = length;
        else
            gave_up_ = true;
    }
    return !gave_up_;
}

bool find_in_item(const TextMeasure& measure, SearchPattern& pattern, const StringItem& item,
                  std::list<StringItem>& matches) {
    if (item.text.isEmpty())
        return false;
    std::list<StringItem> found;
    for (auto match = pattern.find(item.text, 0); match.length > 0;
         match = pattern.find(item.text, match.position + match.length)) {
        StringItem record;
        record.text = item.text.mid(match.position, match.length);
        record.drawn = match_place(measure, item, match);
        record.align = item.align;
        record.source_text = item.text;
        record.source_cell = item.cell;
        record.source_align = item.align;
        found.push_back(std::move(record));
    }
    if (pattern.gave_up())
        found.clear();
    if (!pattern.is_forward())
        found.reverse();
    matches.splice(matches.end(), found);
    return true;
}

std::list<StringItem> find_in_rows(const TextMeasure& measure, SearchPattern& pattern,
                                   const PageRows& rows) {
    std::list<StringItem> matches;
    const auto find = [&](const StringItem& item) {
        find_in_item(measure, pattern, item, matches);
    };
    for (int i = 0; i < rows.size() && !pattern.gave_up(); ++i) {
        const auto& line = rows.row(pattern.is_forward() ? i : rows.size() - 1 - i);
        if (pattern.is_forward())
            std::for_each(line.begin(), line.end(), find);
        else
            std::for_each(line.rbegin(), line.rend(), find);
    }
    if (pattern.gave_up())
        matches.clear();
    return matches;
}

} // namespace printman
