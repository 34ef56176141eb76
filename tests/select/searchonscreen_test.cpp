#include "tests/support/dialogs.h"
#include "tests/support/reportonscreen.h"

#include <printman/select/finddlg.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::DialogAnswers;

namespace {

const QByteArray report = "#!?PAGETOP 24,4\n"
                          "Total 1  total 2\n"
                          "  other\n"
                          "      Total 3 Total 4\n"
                          "#!?PAGEEND\n"
                          "#!?PAGETOP\nsecond Total\n#!?PAGEEND\n";

using Act = std::function<void(findDlg&)>;

Act find_next(const char* text) {
    return [text](findDlg& dialog) {
        dialog.cbFind->lineEdit()->selectAll();
        QTest::keyClicks(dialog.cbFind->lineEdit(), QString::fromLatin1(text));
        QTest::keyClick(dialog.cbFind->lineEdit(), Qt::Key_Return);
    };
}

Act mark_all(const char* text) {
    return [text](findDlg& dialog) {
        dialog.cbFind->lineEdit()->selectAll();
        QTest::keyClicks(dialog.cbFind->lineEdit(), QString::fromLatin1(text));
        QTest::mouseClick(dialog.btnMarkAll, Qt::LeftButton);
    };
}

void accept_as_it_is(findDlg& dialog) {
    QTest::keyClick(dialog.cbFind->lineEdit(), Qt::Key_Return);
}

void cancel(findDlg& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
}

class SearchOnScreen : public ReportOnScreen {
protected:
    void SetUp() override { show(report); }

    DialogAnswers::Answer dialog(const Act& act) {
        return [this, act](QDialog& shown) {
            EXPECT_EQ(shown.parentWidget(), view());
            act(dynamic_cast<findDlg&>(shown));
        };
    }

    void search(const Act& act) {
        const DialogAnswers answers{dialog(act)};
        QTest::keyClick(screen(), Qt::Key_F, Qt::ControlModifier);
    }

    void search_in_vain(const Act& act) {
        const DialogAnswers answers{dialog(act), [this](QDialog& shown) {
                                        EXPECT_NE(dynamic_cast<QMessageBox*>(&shown), nullptr);
                                        EXPECT_EQ(shown.parentWidget(), view());
                                        shown.accept();
                                    }};
        QTest::keyClick(screen(), Qt::Key_F, Qt::ControlModifier);
    }

    std::vector<std::string> matches() const {
        std::vector<std::string> all;
        for (const StringItem& record : manager_.hilights())
            all.push_back(record.text.toStdString());
        return all;
    }

    /// The number of the match that is shown alone, from 1; 0 for none, -1 when several are.
    int shown_match() const {
        const QImage picture = image();
        int shown = 0;
        int number = 0;
        for (const StringItem& record : manager_.hilights()) {
            ++number;
            // At 100 % a unit of the page is a pixel; no letter reaches into this corner.
            const QPoint corner = record.drawn.topLeft() + QPoint(margin, margin);
            if (picture.pixelColor(corner) == QColor(Qt::black))
                shown = shown == 0 ? number : -1;
        }
        return shown;
    }

    static constexpr int margin = 20;
};

} // namespace

TEST_F(SearchOnScreen, findNextStepsThroughTheMatchesAndThenTellsThatThereIsNone) {
    search(find_next("Total \\d"));
    EXPECT_THAT(matches(), ElementsAre("Total 1", "total 2", "Total 3", "Total 4"));
    EXPECT_EQ(shown_match(), 1);
    for (int i = 2; i <= 4; ++i) {
        search(accept_as_it_is);
        EXPECT_EQ(shown_match(), i);
    }
    search_in_vain(accept_as_it_is);
    EXPECT_THAT(matches(), IsEmpty());
    search([](findDlg& shown) {
        EXPECT_TRUE(shown.cbFind->currentText().isEmpty());
        EXPECT_EQ(shown.cbFind->itemText(0), QStringLiteral("Total \\d"));
        cancel(shown);
    });
}

TEST_F(SearchOnScreen, markAllShowsEveryMatchAndTheNextSearchIsFresh) {
    search(mark_all("total"));
    EXPECT_EQ(matches().size(), 4U);
    EXPECT_EQ(shown_match(), -1);
    search([](findDlg& shown) {
        EXPECT_TRUE(shown.cbFind->currentText().isEmpty());
        cancel(shown);
    });
    EXPECT_EQ(matches().size(), 4U);
}

TEST_F(SearchOnScreen, whatIsNotOnThePageIsNotFound) {
    search_in_vain(find_next("second"));
    search_in_vain(mark_all("nowhere"));
    EXPECT_THAT(matches(), IsEmpty());
    search([](findDlg& shown) {
        EXPECT_EQ(shown.cbFind->count(), 1);
        EXPECT_EQ(shown.cbFind->itemText(0), QStringLiteral("second"));
        cancel(shown);
    });
}

TEST_F(SearchOnScreen, anotherDirectionStartsFromTheOtherEnd) {
    search(find_next("Total"));
    EXPECT_EQ(shown_match(), 1);
    search([](findDlg& shown) {
        shown.opUp->click();
        shown.chkCase->click();
        accept_as_it_is(shown);
    });
    EXPECT_THAT(matches(), ElementsAre("Total", "Total", "Total"));
    EXPECT_EQ(shown_match(), 1);
    EXPECT_EQ(manager_.hilights().front().source_cell.y(), 2);
    EXPECT_EQ(manager_.hilights().back().source_cell.y(), 0);
}

TEST_F(SearchOnScreen, cancelLeavesWhatIsHighlighted) {
    search(find_next("Total 3"));
    search(cancel);
    EXPECT_THAT(matches(), ElementsAre("Total 3"));
    EXPECT_EQ(shown_match(), 1);
    search([](findDlg& shown) {
        EXPECT_TRUE(shown.cbFind->currentText().isEmpty());
        cancel(shown);
    });
}

TEST_F(SearchOnScreen, aClickTakesTheMatchesAwayAndTheNextStepFindsNone) {
    search(find_next("Total"));
    QTest::mouseClick(screen(), Qt::LeftButton, {}, QPoint(50, 50));
    EXPECT_THAT(matches(), IsEmpty());
    search_in_vain(accept_as_it_is);
    search(find_next("Total"));
    EXPECT_EQ(shown_match(), 1);
}

TEST_F(SearchOnScreen, aZoomOrAnotherPageTakesTheMatchesAway) {
    search(find_next("Total"));
    manager_.zoom_rpt_page(QStringLiteral("150%"));
    EXPECT_THAT(matches(), IsEmpty());
    search_in_vain(accept_as_it_is);
    search(find_next("Total"));
    manager_.show_rpt_page(2);
    EXPECT_THAT(matches(), IsEmpty());
    search_in_vain(accept_as_it_is);
    search(find_next("Total"));
    EXPECT_THAT(matches(), ElementsAre("Total"));
}

TEST_F(SearchOnScreen, theHostMaySearchByItself) {
    EXPECT_EQ(manager_.find_string_item(QStringLiteral("total"), false, false, true), 1);
    EXPECT_THAT(matches(), ElementsAre("Total", "Total", "total", "Total"));
    EXPECT_EQ(shown_match(), 0);
    EXPECT_EQ(manager_.first_item_hilight(), 1);
    EXPECT_EQ(shown_match(), 1);
    EXPECT_EQ(manager_.find_string_item(QStringLiteral("x"), true, true, false), 0);
    EXPECT_THAT(matches(), IsEmpty());
    EXPECT_EQ(shown_match(), 0);
}

TEST_F(SearchOnScreen, theHostMaySearchAnItem) {
    QImage picture(10, 10, QImage::Format_RGB32);
    QPainter p(&picture);
    const StringItem item = manager_.page_row(2).last();
    EXPECT_EQ(manager_.get_stringitems(&p, QStringLiteral("Total"), item, false, true, false), 1);
    EXPECT_THAT(matches(), ElementsAre("Total", "Total"));
    EXPECT_GT(manager_.hilights().front().drawn.x(), manager_.hilights().back().drawn.x());
    EXPECT_EQ(manager_.get_stringitems(&p, QStringLiteral("x"), item, true, true, false), 1);
    EXPECT_EQ(manager_.get_stringitems(&p, QStringLiteral("x"), StringItem(), true, true, false),
              0);
    EXPECT_EQ(manager_.get_stringitems(nullptr, QStringLiteral("x"), item, true, true, false), 0);
}

TEST_F(SearchOnScreen, aPageThatIsLoadedButNotShownHasNoMatches) {
    ASSERT_EQ(manager_.get_rpt_page(2), 1);
    EXPECT_EQ(manager_.find_string_item(QStringLiteral("Total"), true, true, false), 0);
}

TEST_F(SearchOnScreen, theWindowMayBeClosedWhileItIsAsked) {
    QWidget* const scroll = view();
    const DialogAnswers answers{[scroll](QDialog& /*dialog*/) { delete scroll; }};
    manager_.search_text();
    EXPECT_THAT(matches(), IsEmpty());
}

TEST(Search, withoutAViewDoesNothing) {
    CPrintMan manager;
    manager.search_text();
    EXPECT_EQ(manager.find_string_item(QStringLiteral("x"), true, true, false), 0);
    EXPECT_TRUE(manager.hilights().empty());
}

TEST(Search, mayOutliveItsManager) {
    testhost::reset();
    QTemporaryDir scratch;
    const QString file = scratch.filePath(QStringLiteral("r.rpt"));
    testsupport::write_file(file, report);
    QWidget window;
    window.show();
    auto manager = std::make_unique<CPrintMan>();
    ASSERT_EQ(manager->init_printman(file.toLocal8Bit().constData()), 0);
    const QSize size(400, 300);
    ASSERT_EQ(manager->init_rpt_view(&window, &size, nullptr), 1);
    ASSERT_EQ(manager->show_rpt_page(1), 1);
    const DialogAnswers answers{[&manager](QDialog& shown) {
        manager.reset();
        find_next("Total")(dynamic_cast<findDlg&>(shown));
    }};
    QTest::keyClick(window.findChild<CScreen*>(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(manager, nullptr);
}
