#include <printman/export/pagehtml.h>

#include <gtest/gtest.h>

#include <vector>

using namespace printman;

namespace {

const QString head = QStringLiteral("<html><head><title></title></head><body><table>");
const QString tail = QStringLiteral("</table></body></html>");

StringItem piece(const char* text, int row = -1) {
    StringItem made;
    made.text = QString::fromLatin1(text);
    if (row >= 0)
        made.cell = QRect(0, row, 5, 1);
    return made;
}

QString page_html(const std::vector<QValueList<StringItem>>& rows) {
    QString html;
    append_page_html(html, rows);
    return html;
}

} // namespace

TEST(HighlightsHtml, nothingHighlightedIsNoDocument) {
    EXPECT_TRUE(highlights_html({}).isEmpty());
}

TEST(HighlightsHtml, piecesOfOneRowShareATableRow) {
    EXPECT_EQ(highlights_html({piece("one", 3), piece("two", 3)}),
              head + QStringLiteral("<tr><td>one</td><td>two</td></tr>") + tail);
}

TEST(HighlightsHtml, aSelectionOverTwoFieldsAndTheStartOfAThirdHasTwoRows) {
    EXPECT_EQ(highlights_html({piece("a", 3), piece("b", 3), piece("c")}),
              head + QStringLiteral("<tr><td>a</td><td>b</td></tr><tr><td>c</td></tr>") + tail);
}

TEST(HighlightsHtml, searchMatchesOfAllLinesShareOneRow) {
    EXPECT_EQ(highlights_html({piece("x"), piece("x"), piece("x")}),
              head + QStringLiteral("<tr><td>x</td><td>x</td><td>x</td></tr>") + tail);
}

TEST(HighlightsHtml, aRowBreaksWheneverTheKeyChangesEvenBack) {
    EXPECT_EQ(highlights_html({piece("a", 2), piece("b"), piece("c", 2)}),
              head + QStringLiteral("<tr><td>a</td></tr><tr><td>b</td></tr><tr><td>c</td></tr>") +
                  tail);
    // A whole item of the first line has the same key as a piece.
    EXPECT_EQ(highlights_html({piece("a", 0), piece("b")}),
              head + QStringLiteral("<tr><td>a</td><td>b</td></tr>") + tail);
}

TEST(HighlightsHtml, textIsNeitherEscapedNorFilledIn) {
    EXPECT_EQ(highlights_html({piece("%1 <b>&amp; %2", 1), piece("%1", 1)}),
              head + QStringLiteral("<tr><td>%1 <b>&amp; %2</td><td>%1</td></tr>") + tail);
}

TEST(PageHtml, everyLineIsARowAndEveryItemACell) {
    EXPECT_EQ(page_html({{piece(" one "), piece("two")}, {}, {piece("   ")}}),
              QStringLiteral("<table width=100%><tr><td> one </td><td>two</td></tr><tr></tr>"
                             "<tr><td>   </td></tr></table>"));
    EXPECT_EQ(page_html({}), QStringLiteral("<table width=100%></table>"));
}

TEST(PageHtml, isAppendedToWhatIsThere) {
    QString html = report_html_head;
    append_page_html(html, std::vector<QValueList<StringItem>>{{piece("%1&<")}});
    append_page_html(html, std::vector<QValueList<StringItem>>{{piece("%2")}});
    html += report_html_tail;
    EXPECT_EQ(html, QStringLiteral("<html><head><title></title></head><body>"
                                   "<table width=100%><tr><td>%1&<</td></tr></table>"
                                   "<table width=100%><tr><td>%2</td></tr></table>"
                                   "</body></html>"));
}

TEST(PageHtml, aMillionItemsAreAsManyCells) {
    const std::vector<QValueList<StringItem>> rows(1000,
                                                   QValueList<StringItem>(1000, piece("text")));
    const QString html = page_html(rows);
    EXPECT_EQ(html.count(QLatin1String("<td>text</td>")), 1000 * 1000);
}
