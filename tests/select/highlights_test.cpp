#include "tests/select/highlighting.h"

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

TEST_F(Highlighting, highlightsAreBlackAndWhiteWhateverTheColors) {
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
