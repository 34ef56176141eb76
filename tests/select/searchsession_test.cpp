#include "tests/support/dialogs.h"

#include <printman/select/finddlg.h>
#include <printman/select/searchsession.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace printman;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::DialogAnswers;

namespace {

/// Records what a search asks for, and has as many matches as it is told.
class FakeTarget : public SearchTarget {
public:
    QWidget* search_parent() override { return parent.get(); }
    bool find_matches(const QString& text, const SearchOptions& options) override {
        calls.push_back(
            "find " + text.toStdString() + (options.forward ? " forward" : " backward") +
            (options.case_sensitive ? " case" : "") + (options.whole_word ? " whole" : ""));
        left = matches;
        return left > 0;
    }
    void show_matches() override { calls.emplace_back("all"); }
    bool show_first_match() override {
        calls.emplace_back("first");
        return left > 0;
    }
    bool show_next_match() override {
        calls.emplace_back("next");
        left = std::max(0, left - 1);
        return left > 0;
    }

    std::vector<std::string> take_calls() { return std::exchange(calls, {}); }

    std::unique_ptr<QWidget> parent = std::make_unique<QWidget>();
    std::vector<std::string> calls;
    int matches = 2;
    int left = 0;
};

using Act = std::function<void(findDlg&)>;

void type(findDlg& dialog, const char* text) {
    dialog.cbFind->lineEdit()->selectAll();
    QTest::keyClicks(dialog.cbFind->lineEdit(), QString::fromLatin1(text));
}

void press(QPushButton* button) {
    QTest::mouseClick(button, Qt::LeftButton);
}

Act find_next(const char* text) {
    return [text](findDlg& dialog) {
        type(dialog, text);
        press(dialog.btnFindNext);
    };
}

Act mark_all(const char* text) {
    return [text](findDlg& dialog) {
        type(dialog, text);
        press(dialog.btnMarkAll);
    };
}

void accept_as_it_is(findDlg& dialog) {
    press(dialog.btnFindNext);
}

void cancel(findDlg& dialog) {
    press(dialog.btnCancel);
}

class SearchCycling : public testing::Test {
protected:
    DialogAnswers::Answer dialog(const Act& act) {
        return [act](QDialog& shown) { act(dynamic_cast<findDlg&>(shown)); };
    }
    DialogAnswers::Answer error(const char* text) {
        return [text](QDialog& shown) {
            const auto& box = dynamic_cast<QMessageBox&>(shown);
            EXPECT_EQ(
                box.text(),
                QStringLiteral("Can not find searching text: %1").arg(QString::fromLatin1(text)));
            shown.accept();
        };
    }

    /// One Ctrl+F that succeeds.
    void search(const Act& act) {
        const DialogAnswers answers{dialog(act)};
        session_.run(target_);
    }

    /// One Ctrl+F that ends with the message.
    void search_in_vain(const Act& act, const char* text) {
        const DialogAnswers answers{dialog(act), error(text)};
        session_.run(target_);
    }

    void expect_no_search() {
        EXPECT_TRUE(session_.text().isEmpty());
        EXPECT_EQ(session_.options(), SearchOptions());
    }

    std::vector<std::string> history() const {
        std::vector<std::string> texts;
        for (const QString& text : session_.history())
            texts.push_back(text.toStdString());
        return texts;
    }

    FakeTarget target_;
    SearchSession session_;
};

} // namespace

TEST_F(SearchCycling, startsWithoutASearch) {
    expect_no_search();
    EXPECT_THAT(history(), IsEmpty());
    search([this](findDlg& shown) {
        EXPECT_EQ(shown.parentWidget(), target_.parent.get());
        EXPECT_TRUE(shown.cbFind->currentText().isEmpty());
        EXPECT_FALSE(shown.opUp->isChecked() || shown.opDown->isChecked() ||
                     shown.chkCase->isChecked() || shown.chkWhole->isChecked());
        cancel(shown);
    });
    EXPECT_THAT(target_.take_calls(), IsEmpty());
}

TEST_F(SearchCycling, findNextShowsTheFirstMatchAndRemembersTheSettings) {
    search([](findDlg& shown) {
        shown.opUp->click();
        shown.chkWhole->click();
        find_next("abc")(shown);
    });
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abc backward whole", "first"));
    EXPECT_EQ(session_.text(), QStringLiteral("abc"));
    EXPECT_EQ(session_.options(), (SearchOptions{false, false, true}));
    EXPECT_THAT(history(), ElementsAre("abc"));
    search([](findDlg& shown) {
        EXPECT_EQ(shown.cbFind->currentText(), QStringLiteral("abc"));
        EXPECT_TRUE(shown.opUp->isChecked());
        EXPECT_TRUE(shown.chkWhole->isChecked());
        EXPECT_FALSE(shown.chkCase->isChecked());
        cancel(shown);
    });
}

TEST_F(SearchCycling, findNextInVainTellsSoButKeepsTheTextInTheHistory) {
    target_.matches = 0;
    search_in_vain(find_next("abc"), "abc");
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abc forward", "first"));
    EXPECT_THAT(history(), ElementsAre("abc"));
    expect_no_search();
}

TEST_F(SearchCycling, markAllInVainTellsSoAndForgetsTheText) {
    target_.matches = 0;
    search_in_vain(mark_all("abc"), "abc");
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abc forward"));
    EXPECT_THAT(history(), IsEmpty());
    expect_no_search();
}

TEST_F(SearchCycling, markAllShowsAllMatchesAndEndsTheSearch) {
    search(mark_all("abc"));
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abc forward", "all"));
    EXPECT_THAT(history(), ElementsAre("abc"));
    expect_no_search();
    search([](findDlg& shown) {
        EXPECT_TRUE(shown.cbFind->currentText().isEmpty());
        EXPECT_EQ(shown.cbFind->itemText(0), QStringLiteral("abc"));
        cancel(shown);
    });
}

TEST_F(SearchCycling, markAllEndsAlsoASearchThatWasSteppingOn) {
    search(find_next("abc"));
    target_.take_calls();
    search(mark_all("abc"));
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abc forward", "all"));
    expect_no_search();
}

TEST_F(SearchCycling, findNextWithTheSameSettingsStepsOn) {
    search(find_next("abc"));
    target_.take_calls();
    search(accept_as_it_is);
    EXPECT_THAT(target_.take_calls(), ElementsAre("next"));
    EXPECT_EQ(session_.text(), QStringLiteral("abc"));
    EXPECT_THAT(history(), ElementsAre("abc"));
}

TEST_F(SearchCycling, afterTheLastMatchItTellsSoAndStartsAnew) {
    target_.matches = 1;
    search(find_next("abc"));
    search_in_vain(accept_as_it_is, "abc");
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abc forward", "first", "next"));
    expect_no_search();
    search(find_next("abc"));
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abc forward", "first"));
}

TEST_F(SearchCycling, otherTextOrSettingsStartANewSearch) {
    search(find_next("abc"));
    target_.take_calls();
    search(find_next("abd"));
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abd forward", "first"));
    search([](findDlg& shown) {
        shown.opUp->click();
        accept_as_it_is(shown);
    });
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abd backward", "first"));
    search([](findDlg& shown) {
        shown.chkCase->click();
        accept_as_it_is(shown);
    });
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abd backward case", "first"));
    search([](findDlg& shown) {
        shown.chkWhole->click();
        accept_as_it_is(shown);
    });
    EXPECT_THAT(target_.take_calls(), ElementsAre("find abd backward case whole", "first"));
    EXPECT_THAT(history(), ElementsAre("abc", "abd"));
}

TEST_F(SearchCycling, aNewSearchInVainEndsTheOldOne) {
    search(find_next("abc"));
    target_.matches = 0;
    search_in_vain(find_next("x"), "x");
    expect_no_search();
}

TEST_F(SearchCycling, cancelEscapeAndCloseEndTheSearch) {
    for (const Act& act :
         {Act(cancel), Act([](findDlg& shown) { QTest::keyClick(&shown, Qt::Key_Escape); }),
          Act([](findDlg& shown) { shown.close(); })}) {
        search(find_next("abc"));
        target_.take_calls();
        search(act);
        EXPECT_THAT(target_.take_calls(), IsEmpty());
        expect_no_search();
    }
}

TEST_F(SearchCycling, aSearchWithoutATextIsCanceled) {
    search(find_next("abc"));
    target_.take_calls();
    // The dialog does not let it through; another way to close it might.
    search([](findDlg& shown) {
        shown.search_text.clear();
        shown.done(0);
    });
    expect_no_search();
    EXPECT_THAT(target_.take_calls(), IsEmpty());
    search([](findDlg& shown) { shown.done(1); });
    EXPECT_THAT(target_.take_calls(), IsEmpty());
}

TEST_F(SearchCycling, matchesThatWereClearedMeanwhileAreMissed) {
    search(find_next("abc"));
    target_.left = 0;
    search_in_vain(accept_as_it_is, "abc");
    expect_no_search();
}

TEST_F(SearchCycling, theHistoryKeepsEveryTextOnceOldestFirst) {
    search(find_next("b"));
    search(mark_all("a"));
    search(mark_all("b"));
    search(mark_all("B"));
    EXPECT_THAT(history(), ElementsAre("b", "a", "B"));
}

TEST_F(SearchCycling, aWindowThatIsClosedWhileTheDialogIsOpenEndsIt) {
    search([this](findDlg& /*shown*/) { target_.parent.reset(); });
    EXPECT_THAT(target_.take_calls(), IsEmpty());
}

TEST(SearchSession, mayGoWhileItsDialogIsOpen) {
    FakeTarget target;
    auto session = std::make_unique<SearchSession>();
    const DialogAnswers answers{[&session](QDialog& shown) {
        session.reset();
        type(dynamic_cast<findDlg&>(shown), "x");
        press(dynamic_cast<findDlg&>(shown).btnFindNext);
    }};
    session->run(target);
    EXPECT_THAT(target.calls, IsEmpty());
}

TEST(SearchSession, mayGoWhileItsMessageIsShown) {
    FakeTarget target;
    target.matches = 0;
    auto session = std::make_unique<SearchSession>();
    const DialogAnswers answers{
        [](QDialog& shown) { find_next("x")(dynamic_cast<findDlg&>(shown)); },
        [&](QDialog& /*box*/) {
            session.reset();
            target.parent.reset();
        }};
    session->run(target);
    EXPECT_EQ(session, nullptr);
}
