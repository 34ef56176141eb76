#include <printman/select/highlightset.h>
#include <printman/select/matchcursor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using printman::HighlightSet;
using printman::MatchCursor;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

StringItem piece(int x, int y = 0) {
    StringItem record;
    record.drawn = QRect(x, y, 10, 5);
    return record;
}

QRect gap(int from, int to, int y = 0) {
    return {QPoint(from, y), QPoint(to, y + 4)};
}

std::vector<QRect> places(const HighlightSet::Records& records) {
    std::vector<QRect> all;
    for (const StringItem& record : records)
        all.push_back(record.drawn);
    return all;
}

} // namespace

TEST(HighlightSet, piecesThatAreFoundAgainDoNotWait) {
    HighlightSet set;
    EXPECT_EQ(set.replace({piece(0), piece(20)}).size(), 2U);
    const HighlightSet::Pointers fresh = set.replace({piece(20), piece(40)});
    EXPECT_THAT(fresh, ElementsAre(&set.pieces().back()));
    EXPECT_THAT(places(set.waiting_pieces()), ElementsAre(piece(0).drawn));
    set.replace({});
    EXPECT_THAT(places(set.waiting_pieces()), ElementsAre(piece(20).drawn, piece(40).drawn));
}

TEST(HighlightSet, eachOfTwoPiecesAtOnePlaceIsFoundAgainOnce) {
    HighlightSet set;
    set.replace({piece(0), piece(0)});
    EXPECT_THAT(set.replace({piece(0)}), IsEmpty());
    EXPECT_THAT(places(set.waiting_pieces()), ElementsAre(piece(0).drawn));
}

TEST(HighlightSet, gapsLieBetweenNeighboursOnALine) {
    HighlightSet set;
    set.add_gaps();
    EXPECT_THAT(set.gaps(), IsEmpty());
    set.replace({piece(0), piece(20), piece(40), piece(0, 5), piece(60, 5)});
    set.add_gaps();
    EXPECT_THAT(places(set.gaps()), ElementsAre(gap(10, 20), gap(30, 40), gap(10, 60, 5)));
    EXPECT_EQ(set.gaps().front().cell, piece(20).drawn);
}

TEST(HighlightSet, gapsWaitUntilTheyAreFoundAgain) {
    HighlightSet set;
    set.replace({piece(0), piece(20), piece(40)});
    set.add_gaps();
    set.replace({piece(0), piece(20), piece(60)});
    EXPECT_THAT(places(set.waiting_gaps()), ElementsAre(gap(10, 20), gap(30, 40)));
    set.add_gaps();
    EXPECT_THAT(set.keep_gaps(), ElementsAre(gap(30, 60)));
    EXPECT_THAT(places(set.waiting_gaps()), ElementsAre(gap(30, 40)));
}

TEST(HighlightSet, aPieceIsKeptWithAGapAtItsPlaceAndAGapAlone) {
    HighlightSet set;
    set.replace({piece(0), piece(20), piece(40)});
    set.add_gaps();
    set.replace({});
    set.keep(piece(20).drawn);
    set.keep_gap(gap(10, 20));
    set.keep_gap(gap(11, 20));
    EXPECT_THAT(places(set.waiting_pieces()), ElementsAre(piece(0).drawn, piece(40).drawn));
    EXPECT_THAT(places(set.waiting_gaps()), ElementsAre(gap(30, 40)));
    set.forget_waiting();
    EXPECT_THAT(set.waiting_pieces(), IsEmpty());
    EXPECT_THAT(set.waiting_gaps(), IsEmpty());
}

TEST(HighlightSet, isEmptyOnceItIsCleared) {
    HighlightSet set;
    set.replace({piece(0), piece(20)});
    set.add_gaps();
    set.replace({piece(40), piece(60)});
    set.add_gaps();
    set.clear();
    for (const auto* records :
         {&set.pieces(), &set.gaps(), &set.waiting_pieces(), &set.waiting_gaps()})
        EXPECT_THAT(*records, IsEmpty());
}

TEST(MatchCursor, goesFromTheFirstRecordBehindTheLast) {
    std::list<StringItem> records;
    MatchCursor cursor(records);
    EXPECT_EQ(cursor.first(), nullptr);
    EXPECT_EQ(cursor.next(), nullptr);
    records = {piece(0), piece(20)};
    EXPECT_EQ(cursor.current(), nullptr);
    EXPECT_EQ(cursor.first(), &records.front());
    EXPECT_EQ(cursor.next(), &records.back());
    records.push_back(piece(40));
    EXPECT_EQ(cursor.next(), &records.back());
    EXPECT_EQ(cursor.next(), nullptr);
    EXPECT_EQ(cursor.next(), nullptr);
}

TEST(MatchCursor, hasNoneAfterAReset) {
    std::list<StringItem> records = {piece(0)};
    MatchCursor cursor(records);
    cursor.first();
    cursor.reset();
    records.clear();
    EXPECT_EQ(cursor.current(), nullptr);
    EXPECT_EQ(cursor.next(), nullptr);
}
