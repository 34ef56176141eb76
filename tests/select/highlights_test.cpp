#include "tests/support/reportonscreen.h"

#include <QFontMetrics>
#include <QPainter>
#include <QScrollBar>
#include <QTest>

#include <algorithm>

namespace {

// Fields, so that a line has several items; the third line has one run of text with blanks in it.
const QByteArray report =
    "#!?PAGETOP 60,8\n"
    "#!?L1,8,8;Alpha    #!?R10,8,8;    1.25  #!?R20,8,8;   17.50\n"
    "#!?L1,8,8;Beta     #!?R10,8,8;    2.25  #!?R20,8,8;   27.50\n"
    "one two three four\n"
    "#!?L1,8,8;Gamma    #!?R10,8,8;    3.25                                   #!?L53,8,8;lastcol!\n"
    "#!?PAGEEND\n"
    "#!?PAGETOP\nPage two\n#!?PAGEEND\n";

const QRgb black = qRgb(0, 0, 0);
const QRgb paper = qRgb(255, 255, 0);

class Highlighting : public ReportOnScreen {
protected:
    QSize cell_size() const {
        const QFontMetrics metrics(screen()->font(), screen());
        return {metrics.maxWidth(), metrics.height()};
    }

    /// The pixel in the middle of a cell, on the image.
    QPoint at(int column, int row) const {
        const QSize cell = cell_size();
        return {20 + column * cell.width() + cell.width() / 2,
                20 + row * cell.height() + cell.height() / 2};
    }

    QStringList texts() const {
        QStringList all;
        for (const StringItem& record : manager_.hilights())
            all << record.text;
        return all;
    }

    void drag(QPoint from, QPoint to) {
        QTest::mousePress(screen(), Qt::LeftButton, {}, from);
        QTest::mouseMove(screen(), to);
        QTest::mouseRelease(screen(), Qt::LeftButton, {}, to);
    }

    /// Which share of a rectangle of page units is of a colour, in percent.
    int share(const QRect& place, QRgb colour) const {
        const QImage picture = image();
        int count = 0;
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x)
                count += picture.pixel(x + 20, y + 20) == colour;
        }
        return 100 * count / std::max(1, place.width() * place.height());
    }

    bool is_inverse(const QRect& place) const {
        return share(place, black) > 50 && share(place, paper) == 0;
    }

    QRect drawn(int row, int item) const { return manager_.page_row(row).at(item).drawn; }
};

} // namespace

TEST_F(Highlighting, aDragOverALineSelectsItsFields) {
    show(report);
    drag(at(0, 0), at(27, 0));
    EXPECT_EQ(texts(), (QStringList{QStringLiteral("Alpha"), QStringLiteral("1.25"),
                                    QStringLiteral("17.50")}));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(is_inverse(drawn(0, i))) << i;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(share(drawn(1, i), black), 0) << i;
}

TEST_F(Highlighting, wholeItemsCarryEverythingOfTheirSource) {
    show(report);
    drag(at(0, 0), at(27, 0));
    const StringItem& item = manager_.page_row(0).at(1);
    const StringItem& record = *std::next(manager_.hilights().begin());
    EXPECT_EQ(record.cell, item.cell);
    EXPECT_EQ(record.drawn, item.drawn);
    EXPECT_EQ(record.align, item.align);
    EXPECT_EQ(record.source_text, item.text);
    EXPECT_EQ(record.source_cell, item.cell);
    EXPECT_EQ(record.source_align, item.align);
}

TEST_F(Highlighting, piecesCarryTheirSourceAndNoCell) {
    show(report);
    drag(at(4, 2), at(11, 2));
    ASSERT_EQ(manager_.hilights().size(), 1U);
    const StringItem& record = manager_.hilights().front();
    EXPECT_EQ(record.source_text, QStringLiteral("one two three four"));
    EXPECT_EQ(record.source_cell, manager_.page_row(2).at(0).cell);
    EXPECT_TRUE(record.cell.isNull());
    EXPECT_TRUE(record.source_text.contains(record.text));
    EXPECT_LT(record.text.size(), 10);
    EXPECT_TRUE(is_inverse(record.drawn));
    EXPECT_EQ(share(drawn(2, 0).adjusted(14 * cell_size().width(), 0, 0, 0), black), 0);
}

TEST_F(Highlighting, everyLineCanBeSelectedAtEveryFontAndSize) {
    for (const char* family : {"Liberation Mono", "Liberation Sans", "Liberation Serif",
                               "DejaVu Sans Mono", "DejaVu Sans"}) {
        for (int size = 5; size <= 24; ++size) {
            font_ = QFont(QString::fromLatin1(family), size);
            show(report);
            drag(at(0, 0), at(59, 7));
            EXPECT_EQ(texts(),
                      (QStringList{QStringLiteral("Alpha"), QStringLiteral("1.25"),
                                   QStringLiteral("17.50"), QStringLiteral("Beta"),
                                   QStringLiteral("2.25"), QStringLiteral("27.50"),
                                   QStringLiteral("one two three four"), QStringLiteral("Gamma"),
                                   QStringLiteral("3.25"), QStringLiteral("lastcol!")}))
                << family << size;
        }
    }
}

TEST_F(Highlighting, theOppositeDragSelectsTheSame) {
    show(report);
    drag(at(3, 0), at(22, 3));
    const QStringList forth = texts();
    const QImage picture = image();
    drag(at(22, 3), at(3, 0));
    EXPECT_EQ(texts(), forth);
    EXPECT_EQ(image(), picture);
    EXPECT_FALSE(forth.isEmpty());
}

TEST_F(Highlighting, theFirstLineReachesOneColumnBeyondThePageAndTheMiddleDoesNot) {
    show(report);
    drag(at(40, 3), at(0, 4));
    EXPECT_EQ(texts(), QStringList(QStringLiteral("Gamma"))
                           << QStringLiteral("3.25") << QStringLiteral("lastcol!"));
    // The first line of a drag that starts at column 40 holds the field in the last columns.
    drag(at(40, 3), at(45, 4));
    EXPECT_EQ(texts(), QStringList(QStringLiteral("lastcol!")));
    EXPECT_TRUE(is_inverse(drawn(3, 2)));
}

TEST_F(Highlighting, neighboursOnALineAreJoinedByBlackGaps) {
    show(report);
    drag(at(0, 0), at(27, 1));
    const QRect gap(QPoint(drawn(0, 0).right() + 1, drawn(0, 0).top()),
                    QPoint(drawn(0, 1).left() - 1, drawn(0, 0).bottom()));
    ASSERT_GT(gap.width(), 5);
    EXPECT_EQ(share(gap, black), 100);
    // Not from the end of a line to the next.
    const QRect behind(drawn(0, 2).right() + 1, drawn(0, 2).top(), 50, drawn(0, 2).height());
    EXPECT_EQ(share(behind, black), 0);
}

TEST_F(Highlighting, gapsAreLeftOutOnDemand) {
    show(report);
    manager_.collect_hilights(at(0, 0), at(27, 0));
    manager_.show_page_hilights(false);
    const QRect gap(QPoint(drawn(0, 0).right() + 1, drawn(0, 0).top()),
                    QPoint(drawn(0, 1).left() - 1, drawn(0, 0).bottom()));
    EXPECT_EQ(share(gap, paper), 100);
    EXPECT_TRUE(is_inverse(drawn(0, 1)));
}

TEST_F(Highlighting, highlightsAreBlackAndWhiteWhateverTheColours) {
    show(report);
    drag(at(0, 0), at(27, 0));
    const QRect place = drawn(0, 0);
    const QImage picture = image();
    bool has_white = false;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            const QColor pixel = picture.pixelColor(x + 20, y + 20);
            EXPECT_EQ(pixel.red(), pixel.blue());
            EXPECT_EQ(pixel.red(), pixel.green());
            has_white |= pixel == QColor(Qt::white);
        }
    }
    EXPECT_TRUE(has_white);
}

TEST_F(Highlighting, aClickTakesEverythingAway) {
    show(report);
    const QImage before = image();
    drag(at(0, 0), at(27, 3));
    EXPECT_NE(image(), before);
    QTest::mouseClick(screen(), Qt::LeftButton, {}, at(50, 6));
    EXPECT_TRUE(manager_.hilights().empty());
    EXPECT_EQ(image(), before);
    EXPECT_EQ(screen()->grab().toImage(), before);
}

TEST_F(Highlighting, aClickEndsTheDragAndADragDoesNot) {
    show(report);
    QTest::mouseClick(screen(), Qt::LeftButton, {}, at(0, 0));
    manager_.mouse_move(at(27, 0));
    EXPECT_TRUE(manager_.hilights().empty());
    drag(at(0, 0), at(27, 0));
    manager_.mouse_move(at(27, 1));
    EXPECT_EQ(manager_.hilights().size(), 6U);
}

TEST_F(Highlighting, aPressAtTheOriginIsNoDrag) {
    show(report);
    manager_.mouse_press(QPoint(0, 0));
    manager_.mouse_move(at(27, 3));
    manager_.mouse_release(at(27, 3));
    EXPECT_TRUE(manager_.hilights().empty());
    manager_.mouse_press(QPoint(0, 1));
    manager_.mouse_release(at(27, 3));
    EXPECT_FALSE(manager_.hilights().empty());
}

TEST_F(Highlighting, nothingOfAHighlightStaysWhateverTheDrag) {
    for (const char* family : {"Liberation Mono", "Liberation Serif"}) {
        for (const bool italic : {false, true}) {
            font_ = QFont(QString::fromLatin1(family), 11);
            font_.setItalic(italic);
            show(report);
            for (const char* zoom : {"100%", "150%", "preview"}) {
                if (qstrcmp(zoom, "preview") == 0)
                    manager_.zoomout();
                else
                    manager_.zoom_rpt_page(QString::fromLatin1(zoom));
                const QImage before = image();
                const int width = screen()->width();
                const int height = screen()->height();
                manager_.mouse_press(QPoint(1, 1));
                for (int step = 1; step <= 12; ++step) {
                    manager_.mouse_move(
                        QPoint(width * (step * 5 % 12) / 12, height * (step * 7 % 12) / 12));
                }
                manager_.mouse_release(QPoint(width, height / 2));
                EXPECT_NE(image(), before);
                manager_.clear_hilights();
                EXPECT_EQ(image(), before) << family << italic << zoom;
                manager_.zoomin();
            }
        }
    }
}

TEST_F(Highlighting, aShrinkingDragRestoresWhatItLeaves) {
    show(report);
    const QImage before = image();
    manager_.mouse_press(at(0, 0));
    manager_.mouse_move(at(27, 0));
    const QImage one_line = image();
    manager_.mouse_move(at(59, 6));
    manager_.mouse_move(at(27, 0));
    EXPECT_EQ(image(), one_line);
    EXPECT_NE(image(), before);
}

TEST_F(Highlighting, aDragPaintsWhatRebuildingTheWholeSelectionWould) {
    font_.setItalic(true);
    show(report);
    for (const bool preview : {false, true}) {
        if (preview)
            manager_.zoomout();
        const QPoint from = QPoint(screen()->width() / 5, screen()->height() / 7);
        manager_.mouse_press(from);
        for (int step = 0; step < 40; ++step) {
            const QPoint to(step * 389 % screen()->width(), step * 83 % (screen()->height() / 2));
            manager_.mouse_move(to);
            const QImage followed = image();
            const QStringList selected = texts();
            manager_.clear_hilights();
            manager_.collect_hilights(from, to);
            manager_.show_page_hilights(true);
            EXPECT_EQ(image(), followed) << preview << step;
            EXPECT_EQ(texts(), selected);
        }
    }
}

TEST_F(Highlighting, collectingUnshowingAndShowingGiveTheSamePicture) {
    show(report);
    std::vector<QImage> pictures;
    for (const bool by_mouse : {true, false}) {
        size_t at = 0;
        manager_.mouse_press(this->at(3, 0));
        for (int step = 0; step < 40; ++step) {
            const QPoint to(step * 389 % screen()->width(), step * 83 % screen()->height());
            if (by_mouse) {
                manager_.mouse_move(to);
                pictures.push_back(image());
                continue;
            }
            manager_.collect_hilights(this->at(3, 0), to);
            manager_.unshow_page_hilights();
            manager_.show_page_hilights(true);
            EXPECT_EQ(image(), pictures.at(at++)) << step;
        }
        manager_.clear_hilights();
    }
}

TEST_F(Highlighting, whatHangsInFromOtherLinesComesBack) {
    const QByteArray accents = "#!?PAGETOP 30,4\nSumme gypsy\n\xc4\xd6\xdc \xc0\xc9 \xd1gj\n"
                               "\xc5ngstr\xf6m \xc7\n#!?PAGEEND\n";
    for (const char* family :
         {"Liberation Mono", "Liberation Serif", "DejaVu Sans", "DejaVu Sans Mono"}) {
        for (int size = 6; size <= 16; ++size) {
            font_ = QFont(QString::fromLatin1(family), size);
            show(accents);
            for (const bool preview : {false, true}) {
                if (preview)
                    manager_.zoomout();
                const QImage before = image();
                const int height = screen()->height();
                for (int line = 0; line < 12; ++line) {
                    drag(QPoint(21, height * line / 12 + 1),
                         QPoint(screen()->width() - 21, height * line / 12 + 3));
                    manager_.clear_hilights();
                    EXPECT_EQ(image(), before) << family << size << preview << line;
                }
            }
            manager_.zoomin();
        }
    }
}

TEST_F(Highlighting, manyPiecesAreFollowedInTimeThatGrowsWithTheirNumber) {
    QByteArray many = "#!?PAGETOP 160,1000\n";
    for (int line = 0; line < 1000; ++line) {
        for (int column = 1; column < 160; column += 8)
            many += "#!?L" + QByteArray::number(column) + ",7,7;abc def ";
        many += '\n';
    }
    font_.setPointSize(6);
    show(many + "#!?PAGEEND\n");
    manager_.zoom_rpt_page(QStringLiteral("50%"));
    manager_.mouse_press(QPoint(21, 21));
    manager_.mouse_move(QPoint(screen()->width() - 30, screen()->height() - 30));
    const size_t all = manager_.hilights().size();
    EXPECT_GT(all, 10000U);
    const QImage followed = image();
    manager_.mouse_move(QPoint(25, 25));
    EXPECT_LT(manager_.hilights().size(), 100U);
    manager_.mouse_move(QPoint(screen()->width() - 30, screen()->height() - 30));
    EXPECT_EQ(manager_.hilights().size(), all);
    EXPECT_EQ(image(), followed);
}

TEST_F(Highlighting, aPageThatWasLoadedMeanwhileIsShownWithoutTheOldHighlights) {
    show(report);
    manager_.show_rpt_page(2);
    const QImage second = image();
    manager_.show_rpt_page(1);
    drag(at(0, 0), at(27, 1));
    manager_.get_rpt_page(2);
    EXPECT_EQ(manager_.show_rpt_page(0), 1);
    EXPECT_EQ(image(), second);
    EXPECT_TRUE(manager_.hilights().empty());
}

TEST_F(Highlighting, previewThatWasOnlySetLeavesTheImageItsMargins) {
    show(report);
    const QImage before = image();
    drag(at(0, 0), at(27, 1));
    manager_.set_preview(true);
    manager_.clear_hilights();
    EXPECT_EQ(image(), before);
    drag(at(0, 0), at(27, 1));
    EXPECT_EQ(manager_.hilights().size(), 6U);
}

TEST_F(Highlighting, restoringUsesTheColoursThatThePageWasPaintedIn) {
    show(report);
    const QImage before = image();
    drag(at(0, 0), at(27, 1));
    testhost::set("KRV_COLOR_SBG", "0,0,255");
    EXPECT_EQ(manager_.show_rpt_page(3), 0);
    manager_.load_screencolor();
    manager_.clear_hilights();
    EXPECT_EQ(image(), before);
}

TEST_F(Highlighting, fontsThatAskForNoHintingAreSelectedWholeToo) {
    const QByteArray last_column = "#!?PAGETOP 60,4\nfirst\n#!?L1,4,4;left"
                                   "                                                "
                                   "#!?R53,8,8;lastcol!\nlast\n#!?PAGEEND\n";
    for (const auto hinting : {QFont::PreferNoHinting, QFont::PreferVerticalHinting}) {
        for (int size = 5; size <= 14; ++size) {
            font_ = QFont(QStringLiteral("Liberation Mono"), size);
            font_.setHintingPreference(hinting);
            show(last_column);
            drag(at(0, 0), at(59, 3));
            EXPECT_EQ(texts(), (QStringList{QStringLiteral("first"), QStringLiteral("left"),
                                            QStringLiteral("lastcol!"), QStringLiteral("last")}))
                << size;
        }
    }
}

TEST_F(Highlighting, theCurrentMatchIsShownAloneOnlyWhenTheOthersWereTakenAway) {
    show(report);
    manager_.collect_hilights(at(0, 0), at(27, 0));
    manager_.show_page_hilights(false);
    EXPECT_EQ(manager_.first_item_hilight(), 1);
    const QImage all = image();
    manager_.show_rpt_page(0);
    EXPECT_EQ(image(), all);
    EXPECT_EQ(manager_.next_item_hilight(), 1);
    EXPECT_FALSE(is_inverse(drawn(0, 0)));
    EXPECT_TRUE(is_inverse(drawn(0, 1)));
    const QImage one = image();
    manager_.show_rpt_page(0);
    EXPECT_EQ(image(), one);
    EXPECT_EQ(manager_.next_item_hilight(), 1);
    EXPECT_EQ(manager_.next_item_hilight(), 0);
    EXPECT_TRUE(manager_.hilights().empty());
}

TEST_F(Highlighting, aMatchOutOfSightIsScrolledTo) {
    show(report);
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    manager_.collect_hilights(QPoint(screen()->width() - 300, 20 + 3 * cell_size().height() + 5),
                              QPoint(screen()->width() - 25, 20 + 3 * cell_size().height() + 9));
    ASSERT_FALSE(manager_.hilights().empty());
    EXPECT_EQ(view()->contentsX(), 0);
    manager_.first_item_hilight();
    const QRect place = manager_.hilights().front().drawn;
    EXPECT_EQ(view()->contentsX(), std::min(view()->horizontalScrollBar()->maximum(),
                                            place.right() + 51 - view()->viewport()->width()));
}

TEST_F(Highlighting, gapsOfTheLastShowAreTakenAwayByALaterUnshow) {
    show(report);
    manager_.collect_hilights(at(0, 0), at(27, 0));
    manager_.show_page_hilights(true);
    const QRect gap(QPoint(drawn(0, 0).right() + 1, drawn(0, 0).top()),
                    QPoint(drawn(0, 1).left() - 1, drawn(0, 0).bottom()));
    // Without the pieces that the gap stands between nothing waits for it.
    manager_.collect_hilights(at(0, 0), at(27, 0));
    manager_.unshow_page_hilights();
    EXPECT_EQ(share(gap, black), 100);
    manager_.collect_hilights(at(40, 6), at(41, 6));
    manager_.unshow_page_hilights();
    EXPECT_EQ(share(gap, black), 100);
    EXPECT_FALSE(is_inverse(drawn(0, 0)));
}

TEST_F(Highlighting, aReleaseElsewhereTakesTheGapsOfTheLastMoveAway) {
    show(report);
    manager_.mouse_press(at(0, 0));
    manager_.mouse_move(at(27, 1));
    const QRect gap(QPoint(drawn(0, 0).right() + 1, drawn(0, 0).top()),
                    QPoint(drawn(0, 1).left() - 1, drawn(0, 0).bottom()));
    EXPECT_EQ(share(gap, black), 100);
    manager_.mouse_release(at(27, 0));
    // The first line is still selected, but what was un-shown after the show takes its gaps away.
    EXPECT_TRUE(is_inverse(drawn(0, 0).adjusted(1, 0, 0, 0)));
    EXPECT_EQ(share(gap, paper), 100);
    EXPECT_EQ(share(drawn(1, 0), black), 0);
    EXPECT_EQ(manager_.hilights().size(), 3U);
}

TEST_F(Highlighting, aReleaseWhereTheLastMoveEndedChangesNothing) {
    show(report);
    manager_.mouse_press(at(0, 0));
    manager_.mouse_move(at(27, 1));
    const QImage moved = image();
    manager_.mouse_release(at(27, 1));
    EXPECT_EQ(image(), moved);
}

TEST_F(Highlighting, anotherPageOrZoomHasNoHighlights) {
    show(report);
    manager_.show_rpt_page(2);
    const QImage second = image();
    manager_.show_rpt_page(1);
    drag(at(0, 0), at(27, 3));
    manager_.show_rpt_page(2);
    EXPECT_TRUE(manager_.hilights().empty());
    EXPECT_EQ(image(), second);
    manager_.clear_hilights();
    manager_.unshow_page_hilights();
    EXPECT_EQ(image(), second);
    for (const int way : {0, 1, 2}) {
        manager_.goto_rpt_page(1);
        drag(at(0, 0), at(27, 3));
        EXPECT_FALSE(manager_.hilights().empty());
        if (way == 0)
            manager_.zoom_rpt_page(QStringLiteral("100%"));
        else if (way == 1)
            manager_.zoomin();
        else
            manager_.zoomout();
        EXPECT_TRUE(manager_.hilights().empty()) << way;
    }
    const QImage clean = image();
    manager_.unshow_page_hilights();
    manager_.clear_hilights();
    EXPECT_EQ(image(), clean);
}

TEST_F(Highlighting, aRefusedPageLeavesTheSelection) {
    show(report);
    drag(at(0, 0), at(27, 0));
    const QImage before = image();
    EXPECT_EQ(manager_.show_rpt_page(3), 0);
    EXPECT_EQ(manager_.hilights().size(), 3U);
    EXPECT_EQ(image(), before);
}

TEST_F(Highlighting, theSamePageShownAgainKeepsItsHighlights) {
    show(report);
    drag(at(0, 0), at(27, 1));
    const QImage before = image();
    manager_.show_rpt_page(0);
    EXPECT_EQ(image(), before);
    EXPECT_EQ(manager_.hilights().size(), 6U);
    manager_.clear_hilights();
    EXPECT_EQ(share(drawn(0, 0), black), 0);
}

TEST_F(Highlighting, aPageLoadedWithoutBeingShownCannotBeSelected) {
    show(report);
    drag(at(0, 0), at(27, 0));
    const QImage selected = image();
    manager_.get_rpt_page(2);
    EXPECT_EQ(image(), selected);
    // What is shown is still the first page, and comes back.
    manager_.clear_hilights();
    EXPECT_EQ(share(drawn(0, 0), black), 0);
    drag(at(0, 0), at(27, 3));
    EXPECT_TRUE(manager_.hilights().empty());
    manager_.goto_rpt_page(1);
    const QImage first = image();
    drag(at(0, 0), at(27, 0));
    manager_.get_rpt_page(2);
    manager_.clear_hilights();
    EXPECT_EQ(image(), first);
}

TEST_F(Highlighting, aDragThatLeavesTheWindowSelectsToItsEndAndScrolls) {
    show(report);
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    manager_.mouse_press(QPoint(25, 25));
    manager_.mouse_move(QPoint(5000, 4000));
    EXPECT_EQ(view()->contentsX(), view()->contentsWidth() - view()->viewport()->width());
    manager_.mouse_move(QPoint(-300, -4000));
    EXPECT_EQ(view()->contentsX(), 0);
    manager_.mouse_move(QPoint(2147483647, 2147483647));
    manager_.mouse_release(QPoint(-2147483647, 2147483647));
    EXPECT_FALSE(manager_.hilights().empty());
}

TEST_F(Highlighting, keepingARecordSparesItFromBeingUnshown) {
    show(report);
    manager_.collect_hilights(at(0, 0), at(27, 0));
    manager_.show_page_hilights(true);
    StringItem kept = *manager_.hilights().begin();
    manager_.collect_hilights(at(40, 6), at(50, 6));
    EXPECT_TRUE(manager_.hilights().empty());
    manager_.keep_hilight(kept);
    manager_.unshow_page_hilights();
    EXPECT_TRUE(is_inverse(drawn(0, 0)));
    EXPECT_EQ(share(drawn(0, 1), black), 0);
}

TEST_F(Highlighting, aGapIsKeptByItsPlace) {
    show(report);
    manager_.collect_hilights(at(0, 0), at(27, 0));
    manager_.show_page_hilights(true);
    manager_.collect_hilights(at(40, 6), at(50, 6));
    QRect gap(QPoint(drawn(0, 0).right() + 1, drawn(0, 0).top()),
              QPoint(drawn(0, 1).left(), drawn(0, 0).bottom()));
    manager_.keep_himergerect(gap);
    manager_.unshow_page_hilights();
    EXPECT_EQ(share(gap.adjusted(0, 0, -1, 0), black), 100);
    EXPECT_EQ(share(drawn(0, 0), black), 0);
}

TEST_F(Highlighting, itemsAreCutThroughTheDoorAsOnThePage) {
    show(report);
    QImage picture(10, 10, QImage::Format_RGB32);
    QPainter p(&picture);
    p.setFont(screen()->font());
    const StringItem& item = manager_.page_row(2).at(0);
    const int width = cell_size().width();
    StringItem out;
    EXPECT_EQ(manager_.item_left(&p, item, 3 * width, out), 1);
    EXPECT_EQ(out.text, QStringLiteral("one"));
    EXPECT_EQ(manager_.item_right(&p, item, 4 * width, out), 1);
    EXPECT_EQ(out.text, QStringLiteral("four"));
    EXPECT_EQ(manager_.item_center(&p, item, 4 * width, 3 * width, out), 1);
    EXPECT_EQ(out.text, QStringLiteral("two"));
    EXPECT_EQ(manager_.get_stringitem(&p, item.drawn, item, out), 1);
    EXPECT_EQ(out.text, item.text);
    EXPECT_EQ(manager_.get_stringitem(&p, QRect(), item, out), 0);
    EXPECT_EQ(manager_.item_left(nullptr, item, 5, out), 0);
    EXPECT_EQ(manager_.item_right(nullptr, item, 5, out), 0);
    EXPECT_EQ(manager_.item_center(nullptr, item, 5, 5, out), 0);
    EXPECT_EQ(manager_.get_stringitem(nullptr, item.drawn, item, out), 0);
}
