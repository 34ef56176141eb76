#include "tests/select/highlighting.h"

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

TEST_F(Highlighting, tenThousandPiecesAreFollowedThereAndBack) {
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

TEST_F(Highlighting, restoringUsesTheColorsThatThePageWasPaintedIn) {
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
