#include "tests/select/searchtime.h"

#include <printman/render/textruler.h>
#include <printman/report/escapetable.h>
#include <printman/report/pagerows.h>
#include <printman/select/pagesearch.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace printman;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int char_width = 10;
constexpr int line_height = 12;

/// Every character is 10 wide, a line 12 high.
class GridFont : public TextMeasure {
public:
    QRect bounding_rect(const QRect& cell, int flags, const QString& text) const override {
        EXPECT_EQ(flags, Qt::AlignLeft | Qt::AlignVCenter);
        return {cell.x(), cell.y() + (cell.height() - line_height) / 2,
                static_cast<int>(text.size()) * char_width, line_height};
    }
};

constexpr SearchOptions forward;
constexpr SearchOptions backward{.forward = false};
constexpr SearchOptions any_case{.case_sensitive = false};
constexpr SearchOptions whole_word{.whole_word = true};

StringItem item_of(const QString& text) {
    StringItem item;
    item.text = text;
    item.align = 3;
    item.cell = QRect(4, 2, 20, 1);
    item.drawn = QRect(40, 24, static_cast<int>(text.size()) * char_width, line_height);
    item.spare = QStringLiteral("spare");
    return item;
}

std::list<StringItem> find(const char* text, const SearchOptions& options, const QString& in) {
    SearchPattern pattern(QString::fromLatin1(text), options);
    std::list<StringItem> matches;
    find_in_item(GridFont(), pattern, item_of(in), matches);
    return matches;
}

std::vector<std::string> texts(const std::list<StringItem>& records) {
    std::vector<std::string> all;
    for (const StringItem& record : records)
        all.push_back(record.text.toStdString());
    return all;
}

std::vector<std::string> found(const char* text, const SearchOptions& options, const char* in) {
    return texts(find(text, options, QString::fromLatin1(in)));
}

/// The page's columns in which the matches begin.
std::vector<int> places(const std::list<StringItem>& records) {
    std::vector<int> all;
    for (const StringItem& record : records)
        all.push_back(record.drawn.x() / char_width);
    return all;
}

PageRows page(const std::string& cells, int columns, int lines) {
    EscapeTable fields;
    fields.create(lines);
    PageRows rows;
    rows.load(cells, columns, lines, fields);
    for (QValueList<StringItem>& row : rows.rows()) {
        for (StringItem& item : row)
            item.drawn = QRect(item.cell.x() * char_width, item.cell.y() * line_height,
                               item.cell.width() * char_width, line_height);
    }
    return rows;
}

std::list<StringItem> find_on(const PageRows& rows, const char* text,
                              const SearchOptions& options) {
    SearchPattern pattern(QString::fromLatin1(text), options);
    return find_in_rows(GridFont(), pattern, rows);
}

} // namespace

TEST(FindInItem, aMatchAtTheStartIsDrawnAsThoseCharacters) {
    const auto matches = find("ab", forward, QStringLiteral("abc"));
    ASSERT_EQ(matches.size(), 1U);
    EXPECT_EQ(matches.front().drawn, QRect(40, 24, 20, 12));
}

TEST(FindInItem, aMatchFurtherOnBeginsBehindWhatIsBeforeIt) {
    const auto matches = find("bc", forward, QStringLiteral("abcd"));
    ASSERT_EQ(matches.size(), 1U);
    QRect place;
    place.setCoords(50, 24, 50 + 20, 24 + 11);
    EXPECT_EQ(matches.front().drawn, place);
}

TEST(FindInItem, aMatchTellsWhereItWasCutFrom) {
    const StringItem match = find("b", forward, QStringLiteral("abc")).front();
    EXPECT_EQ(match.text, QStringLiteral("b"));
    EXPECT_EQ(match.align, 3);
    EXPECT_EQ(match.source_text, QStringLiteral("abc"));
    EXPECT_EQ(match.source_cell, QRect(4, 2, 20, 1));
    EXPECT_EQ(match.source_align, 3);
    EXPECT_TRUE(match.cell.isNull());
    EXPECT_TRUE(match.spare.isNull());
}

TEST(FindInItem, onlyAnItemWithTextIsSearched) {
    std::list<StringItem> matches;
    SearchPattern pattern(QStringLiteral("x"), forward);
    EXPECT_FALSE(find_in_item(GridFont(), pattern, item_of(QString()), matches));
    EXPECT_FALSE(find_in_item(GridFont(), pattern, item_of(QStringLiteral("")), matches));
    EXPECT_TRUE(find_in_item(GridFont(), pattern, item_of(QStringLiteral("abc")), matches));
    EXPECT_THAT(matches, IsEmpty());
}

TEST(FindInItem, appendsToWhatIsThere) {
    std::list<StringItem> matches;
    SearchPattern pattern(QStringLiteral("[ab]"), backward);
    find_in_item(GridFont(), pattern, item_of(QStringLiteral("1ab")), matches);
    find_in_item(GridFont(), pattern, item_of(QStringLiteral("2a")), matches);
    EXPECT_THAT(texts(matches), ElementsAre("b", "a", "a"));
}

TEST(FindInItem, matchesDoNotOverlapAndBackwardComeFromTheRight) {
    EXPECT_THAT(places(find("aa", forward, QStringLiteral("aaaaa"))), ElementsAre(4, 6));
    EXPECT_THAT(places(find("aa", backward, QStringLiteral("aaaaa"))), ElementsAre(6, 4));
}

TEST(FindInItem, aWholeWordStandsBetweenWordBoundaries) {
    EXPECT_THAT(places(find("abc", whole_word, QStringLiteral("xabc abc"))), ElementsAre(9));
    EXPECT_THAT(found("abc", whole_word, "abcd xabc _abc"), IsEmpty());
}

TEST(FindInItem, theTextIsARegularExpression) {
    EXPECT_THAT(found("a.c", forward, "abc axc a.c ac"), ElementsAre("abc", "axc", "a.c"));
    EXPECT_THAT(found("[0-9]+", forward, "1.234,50"), ElementsAre("1", "234", "50"));
    EXPECT_THAT(found("a|ab", forward, "ab"), ElementsAre("ab"));
    EXPECT_THAT(found("x.*y", forward, "xayby"), ElementsAre("xayby"));
}

TEST(FindInItem, theCaseCountsOnlyWhenItShall) {
    EXPECT_THAT(found("total", forward, "TOTAL total Total"), ElementsAre("total"));
    EXPECT_THAT(found("total", any_case, "TOTAL total Total"),
                ElementsAre("TOTAL", "total", "Total"));
    EXPECT_THAT(find("STRA\xdf"
                     "E \xc9",
                     any_case, QStringLiteral("straße é"))
                    .size(),
                1U);
}

TEST(FindInItem, aMatchOfNoCharactersIsNone) {
    EXPECT_THAT(found("x*", forward, "axxb"), ElementsAre("xx"));
    EXPECT_THAT(found("x*", backward, "axxbx"), ElementsAre("x", "xx"));
    for (const char* text : {"", "^", "$", "\\b", "()", "z*", "(?=a)", "a{0}", "|"})
        EXPECT_THAT(found(text, forward, "aaa"), IsEmpty()) << text;
}

TEST(FindInItem, aMalformedExpressionFindsNothing) {
    for (const char* text : {"(", "[a", "*", "a{2", "a**", "\\", "(?<=a)a", "a)"}) {
        EXPECT_THAT(found(text, forward, "a(*[{\\"), IsEmpty()) << text;
        EXPECT_THAT(found(text, whole_word, "a(*[{\\"), IsEmpty()) << text;
    }
}

TEST(FindInItem, markersAndMarkupInTheTextMeanThemselves) {
    EXPECT_THAT(found("a%1b", whole_word, "x a%1b y"), ElementsAre("a%1b"));
    EXPECT_THAT(found("%1%2", forward, "%1%2"), ElementsAre("%1%2"));
    EXPECT_THAT(found("<b>&amp;", forward, "<b>&amp;</b>"), ElementsAre("<b>&amp;"));
}

TEST(FindInItem, anExpressionThatIsTooCostlyIsNotEvenCompiled) {
    const double soon = dear_search_seconds();
    const ProcessorTime time;
    for (const char* text : {"((?=(?!a){1024})){8,}", "((?=(?!\\s*\\B){1024})){3,}",
                             "(?:[ab]{1024}){40}(?=.*(?=.*b))"}) {
        SearchPattern pattern(QString::fromLatin1(text), forward);
        std::list<StringItem> matches;
        find_in_item(GridFont(), pattern, item_of(QString(510, u'a')), matches);
        EXPECT_THAT(matches, IsEmpty()) << text;
    }
    EXPECT_LT(time.seconds(), 10 * soon);
}

TEST(FindInItem, anExpressionThatWouldNotEndIsGivenUp) {
    SearchPattern pattern(QStringLiteral("(?=.*(?=.*(?=a*b)))a"), forward);
    std::list<StringItem> matches;
    find_in_item(GridFont(), pattern, item_of(QStringLiteral("ab")), matches);
    EXPECT_THAT(texts(matches), ElementsAre("a"));
    EXPECT_FALSE(pattern.gave_up());
    find_in_item(GridFont(), pattern, item_of(QString(510, u'a')), matches);
    EXPECT_TRUE(pattern.gave_up());
    EXPECT_EQ(matches.size(), 1U);
}

TEST(FindInRows, forwardReadsThePageAndBackwardIsItsReverse) {
    const PageRows rows = page("a1  a2    "
                               "  a3      "
                               "a4 a5 a6  ",
                               10, 3);
    EXPECT_THAT(texts(find_on(rows, "a\\d", forward)),
                ElementsAre("a1", "a2", "a3", "a4", "a5", "a6"));
    EXPECT_THAT(texts(find_on(rows, "a\\d", backward)),
                ElementsAre("a6", "a5", "a4", "a3", "a2", "a1"));
}

TEST(FindInRows, theItemsOfALineAreReversedToo) {
    PageRows rows = page("x    \n", 5, 1);
    for (const char* text : {"a1 a2", "a3"}) {
        StringItem item = item_of(QString::fromLatin1(text));
        rows.add(0, item);
    }
    EXPECT_THAT(texts(find_on(rows, "a\\d", forward)), ElementsAre("a1", "a2", "a3"));
    EXPECT_THAT(texts(find_on(rows, "a\\d", backward)), ElementsAre("a3", "a2", "a1"));
}

TEST(FindInRows, aPageWithoutRowsFindsNothing) {
    EXPECT_THAT(find_on(PageRows(), ".", forward), IsEmpty());
    EXPECT_THAT(find_on(PageRows(), ".", backward), IsEmpty());
}

TEST(FindInRows, whatGivesUpFindsNothingAtAll) {
    std::string cells = "ab" + std::string(8, ' ');
    cells.resize(200, '\0');
    cells += std::string(200, 'a');
    const PageRows rows = page(cells, 200, 2);
    EXPECT_THAT(texts(find_on(rows, "ab", forward)), ElementsAre("ab"));
    EXPECT_THAT(find_on(rows, "(?=.*(?=.*(?=a*b)))ab", forward), IsEmpty());
}

TEST(FindInRows, noExpressionKeepsTheUserWaiting) {
    const PageRows rows = page(std::string(66UL * 132, 'a'), 132, 66);
    for (const char* text :
         {"(a*)*b", "(a|aa)+$", "(a*)(a*)\\2\\1b", "((a+)+)+b", "(?=.*(?=.*b))a",
          "((a{1,50}){1,50}){1,50}b", "(.*)(.*)(.*)(.*)(.*)(.*)b", "(?:a?){99}a{99}b"}) {
        const ProcessorTime time;
        find_on(rows, text, any_case);
        // A search gives up after five seconds, and then ends the step that it is at.
        EXPECT_LT(time.seconds(), 5 + 50 * dear_search_seconds()) << text;
    }
}
