#include "tests/support/dialogs.h"
#include "tests/support/language.h"
#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <printman/select/finddlg.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QMetaMethod>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testsupport::DialogAnswers;
using testsupport::LongLanguage;

using testsupport::text;

namespace {

/// Runs the dialog while a user does @p act with it.
int run(findDlg& dialog, const std::function<void(findDlg&)>& act) {
    const DialogAnswers answers{[&act](QDialog& shown) { act(dynamic_cast<findDlg&>(shown)); }};
    return dialog.exec();
}

QStringList tab_order(QWidget& window, QWidget* first) {
    QStringList names;
    QWidget* widget = first;
    do {
        if ((widget->focusPolicy() & Qt::TabFocus) && widget->window() == &window &&
            qobject_cast<QLineEdit*>(widget) == nullptr)
            names << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != first);
    return names;
}

} // namespace

TEST(FindDialog, hasTheTextsOfItsWidgets) {
    const findDlgBase dialog;
    EXPECT_EQ(dialog.windowTitle(), text("Find"));
    EXPECT_EQ(dialog.lbFindWhat->text(), text("&Find What"));
    EXPECT_EQ(dialog.lbFindWhat->buddy(), dialog.cbFind);
    EXPECT_EQ(dialog.bgbDirection->title(), text("Direction"));
    EXPECT_EQ(dialog.opUp->text(), text("Find Backword"));
    EXPECT_EQ(dialog.opDown->text(), text("Find Foreword"));
    EXPECT_EQ(dialog.gbOptions->title(), text("Options"));
    EXPECT_EQ(dialog.chkWhole->text(), text("Whole Word Only"));
    EXPECT_EQ(dialog.chkCase->text(), text("Case Sensitive"));
    EXPECT_EQ(dialog.btnFindNext->text(), text("Find Next"));
    EXPECT_EQ(dialog.btnMarkAll->text(), text("Mark All"));
    EXPECT_EQ(dialog.btnCancel->text(), text("Cancel"));
}

TEST(FindDialog, everyWidgetAndLayoutHasItsName) {
    const findDlgBase dialog;
    for (const char* name : {"lbFindWhat", "cbFind", "bgbDirection", "opUp", "opDown", "gbOptions",
                             "chkWhole", "chkCase", "btnFindNext", "btnMarkAll", "btnCancel"})
        EXPECT_NE(dialog.findChild<QWidget*>(text(name)), nullptr) << name;
    EXPECT_EQ(dialog.layout()->objectName(), text("findDlgBaseLayout"));
    for (const char* name : {"Layout11", "Layout12", "Layout7", "Layout8"})
        EXPECT_NE(dialog.findChild<QLayout*>(text(name)), nullptr) << name;
    EXPECT_EQ(dialog.opUp->parentWidget(), dialog.bgbDirection);
    EXPECT_EQ(dialog.opDown->parentWidget(), dialog.bgbDirection);
    EXPECT_EQ(dialog.chkWhole->parentWidget(), dialog.gbOptions);
    EXPECT_EQ(dialog.chkCase->parentWidget(), dialog.gbOptions);
}

TEST(FindDialog, isNamedAsItIsTold) {
    EXPECT_EQ(findDlgBase().objectName(), text("findDlgBase"));
    EXPECT_EQ(findDlgBase(nullptr, "mine").objectName(), text("mine"));
    EXPECT_EQ(findDlg(nullptr, "mine").objectName(), text("mine"));
    EXPECT_TRUE(findDlgBase(nullptr, "mine", true, Qt::WindowStaysOnTopHint).isModal());
    EXPECT_FALSE(findDlg().isModal());
}

TEST(FindDialog, itsResultsAndDirectionsHaveTheirNumbers) {
    EXPECT_EQ(findDlg::find_next_result, 0);
    EXPECT_EQ(findDlg::mark_all_result, 1);
    EXPECT_EQ(findDlg::cancel_result, 2);
    EXPECT_EQ(findDlg::backward, 3);
    EXPECT_EQ(findDlg::forward, 4);
}

TEST(FindDialog, itsSlotsStandInOrder) {
    const QMetaObject& meta = findDlg::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names << QString::fromLatin1(meta.method(i).name());
    EXPECT_EQ(names.mid(0, 3),
              QStringList({text("find_next"), text("mark_all"), text("cancel_dlg")}));
    EXPECT_GE(findDlgBase::staticMetaObject.indexOfSlot("languageChange()"), 0);
}

TEST(FindDialog, nothingIsCheckedAtFirstAndThenItSearchesForward) {
    const findDlg dialog;
    EXPECT_FALSE(dialog.opUp->isChecked());
    EXPECT_FALSE(dialog.opDown->isChecked());
    EXPECT_EQ(dialog.get_direction(), 4);
    EXPECT_FALSE(dialog.is_case_sensitive());
    EXPECT_FALSE(dialog.is_whole_word());
    EXPECT_TRUE(dialog.search_text.isNull());
    EXPECT_TRUE(dialog.search_history.isEmpty());
}

TEST(FindDialog, showsTheSettingsThatItIsGiven) {
    findDlg dialog;
    dialog.set_foreword(false);
    EXPECT_EQ(dialog.get_direction(), 3);
    dialog.set_foreword(true);
    EXPECT_EQ(dialog.get_direction(), 4);
    EXPECT_FALSE(dialog.opUp->isChecked());
    dialog.set_case(true);
    dialog.set_wholeword(true);
    EXPECT_TRUE(dialog.chkCase->isChecked());
    EXPECT_TRUE(dialog.chkWhole->isChecked());
    dialog.set_case(false);
    dialog.set_wholeword(false);
    EXPECT_FALSE(dialog.is_case_sensitive());
    EXPECT_FALSE(dialog.is_whole_word());
    dialog.set_search_text(text("abc"));
    EXPECT_EQ(dialog.search_text, text("abc"));
    EXPECT_EQ(dialog.cbFind->currentText(), text("abc"));
}

TEST(FindDialog, itsTabOrderRunsFromTheFieldToTheButtons) {
    findDlg dialog;
    EXPECT_EQ(tab_order(dialog, dialog.cbFind).join(u' '),
              text("cbFind opUp opDown chkCase chkWhole btnFindNext btnMarkAll btnCancel"));
}

TEST(FindDialog, theHistoryLeavesTheFieldAsItIs) {
    findDlg dialog;
    dialog.set_search_history({text("one"), text("two")});
    EXPECT_TRUE(dialog.cbFind->currentText().isEmpty());
    EXPECT_EQ(dialog.cbFind->count(), 2);
    EXPECT_EQ(dialog.cbFind->itemText(0), text("one"));
    EXPECT_EQ(dialog.cbFind->itemText(1), text("two"));
    EXPECT_EQ(dialog.search_history, QStringList({text("one"), text("two")}));
    findDlg filled;
    filled.set_search_text(text("three"));
    filled.set_search_history({text("one")});
    EXPECT_EQ(filled.cbFind->currentText(), text("three"));
}

TEST(FindDialog, whatIsTypedIsNotCompleted) {
    findDlg dialog;
    dialog.set_search_history({text("Total amount")});
    EXPECT_EQ(run(dialog,
                  [](findDlg& shown) {
                      QTest::keyClicks(shown.cbFind->lineEdit(), text("tot"));
                      QTest::keyClick(shown.cbFind->lineEdit(), Qt::Key_Return);
                  }),
              0);
    EXPECT_EQ(dialog.search_text, text("tot"));
    EXPECT_EQ(dialog.cbFind->count(), 1);
}

TEST(FindDialog, theFieldHasTheKeyboardAndItsTextIsReplacedByTyping) {
    findDlg dialog;
    dialog.set_search_text(text("old"));
    run(dialog, [](findDlg& shown) {
        ASSERT_TRUE(testsupport::wait_until_active(shown));
        ASSERT_EQ(QApplication::focusWidget(), shown.cbFind);
        QTest::keyClicks(QApplication::focusWidget(), text("new"));
        QTest::mouseClick(shown.btnFindNext, Qt::LeftButton);
    });
    EXPECT_EQ(dialog.search_text, text("new"));
}

TEST(FindDialog, anEarlierTextIsChosenWithTheArrowKeys) {
    findDlg dialog;
    dialog.set_search_history({text("one"), text("two")});
    run(dialog, [](findDlg& shown) {
        QTest::keyClick(shown.cbFind, Qt::Key_Down);
        QTest::keyClick(shown.cbFind, Qt::Key_Down);
        QTest::keyClick(shown.cbFind, Qt::Key_Return);
    });
    EXPECT_EQ(dialog.search_text, text("two"));
}

TEST(FindDialog, eachButtonHasItsResult) {
    for (const int result : {0, 1, 2}) {
        findDlg dialog;
        dialog.set_search_text(text("x"));
        EXPECT_EQ(run(dialog,
                      [result](findDlg& shown) {
                          QPushButton* const buttons[] = {shown.btnFindNext, shown.btnMarkAll,
                                                          shown.btnCancel};
                          QTest::mouseClick(buttons[result], Qt::LeftButton);
                      }),
                  result);
    }
}

TEST(FindDialog, escapeAndTheCloseButtonCancel) {
    findDlg dialog;
    dialog.set_search_text(text("x"));
    EXPECT_EQ(run(dialog, [](findDlg& shown) { QTest::keyClick(&shown, Qt::Key_Escape); }), 2);
    EXPECT_EQ(run(dialog, [](findDlg& shown) { shown.close(); }), 2);
}

TEST(FindDialog, anEmptyTextDoesNotLeaveIt) {
    findDlg dialog;
    EXPECT_EQ(run(dialog,
                  [](findDlg& shown) {
                      QTest::mouseClick(shown.btnFindNext, Qt::LeftButton);
                      EXPECT_TRUE(shown.isVisible());
                      QTest::mouseClick(shown.btnMarkAll, Qt::LeftButton);
                      EXPECT_TRUE(shown.isVisible());
                      QTest::keyClick(shown.cbFind, Qt::Key_Return);
                      EXPECT_TRUE(shown.isVisible());
                      QTest::keyClicks(shown.cbFind->lineEdit(), text("a"));
                      QTest::mouseClick(shown.btnMarkAll, Qt::LeftButton);
                  }),
              1);
    EXPECT_EQ(dialog.search_text, text("a"));
}

TEST(FindDialog, theDirectionsExcludeEachOtherAndBothMayStayOpen) {
    findDlg dialog;
    dialog.set_search_text(text("x"));
    run(dialog, [](findDlg& shown) {
        shown.opUp->click();
        EXPECT_EQ(shown.get_direction(), 3);
        shown.opDown->click();
        EXPECT_FALSE(shown.opUp->isChecked());
        QTest::mouseClick(shown.btnCancel, Qt::LeftButton);
    });
}

TEST(FindDialog, takesTheLanguageThatTheProgramChangesTo) {
    findDlgBase dialog;
    {
        const LongLanguage language;
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&dialog, &change);
        EXPECT_EQ(dialog.btnMarkAll->text(), text("Mark AllMark AllMark All"));
    }
    dialog.languageChange();
    EXPECT_EQ(dialog.btnMarkAll->text(), text("Mark All"));
}

TEST(FindDialog, growsWithTheLanguageWhileItIsOpen) {
    findDlg dialog;
    dialog.show();
    const QSize before = dialog.size();
    {
        const LongLanguage language;
        EXPECT_TRUE(testsupport::wait_for([&] { return dialog.width() > before.width(); }));
        EXPECT_EQ(dialog.windowTitle(), text("FindFindFind"));
        EXPECT_EQ(dialog.btnMarkAll->text(), text("Mark AllMark AllMark All"));
        for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->objectName().startsWith(u"qt_"))
                continue;
            EXPECT_GE(widget->width(), widget->minimumSizeHint().width())
                << widget->objectName().toStdString();
        }
    }
    EXPECT_TRUE(testsupport::wait_for([&] { return dialog.windowTitle() == text("Find"); }));
}

TEST(FindDialog, aLongHistoryEntryDoesNotWidenIt) {
    findDlg dialog;
    const QSize size = dialog.sizeHint();
    dialog.set_search_history({QString(5000, u'W')});
    dialog.set_search_text(QString(5000, u'W'));
    EXPECT_EQ(dialog.sizeHint(), size);
}

TEST(SearchHistory, knowsATextLetterForLetter) {
    QStringList history{text("abc"), text("Total")};
    EXPECT_TRUE(is_in_history(history, text("abc")));
    EXPECT_FALSE(is_in_history(history, text("total")));
    EXPECT_FALSE(is_in_history(history, text("ab")));
    EXPECT_FALSE(is_in_history(history, QString()));
}

TEST(SearchError, showsThePlainTextInABoxWithOneButton) {
    for (const char* searched : {"abc", "a%1b%2", "<b>bold</b> &amp; <img src=x>"}) {
        const DialogAnswers answers{[searched](QDialog& shown) {
            auto& box = dynamic_cast<QMessageBox&>(shown);
            EXPECT_EQ(box.icon(), QMessageBox::Information);
            EXPECT_EQ(box.windowTitle(), text("Find Error"));
            EXPECT_EQ(box.text(), text("Can not find searching text: ") + text(searched));
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
            QTest::keyClick(&box, Qt::Key_Return);
        }};
        search_error(nullptr, text(searched));
    }
}

TEST(SearchError, fitsTheScreenWithTheLongestText) {
    const DialogAnswers answers{[](QDialog& box) {
        EXPECT_LT(box.width(), 1200);
        EXPECT_LT(box.height(), 600);
        box.accept();
    }};
    search_error(nullptr, QString(32767, u'W'));
}

TEST(SearchError, survivesThatItsParentIsClosed) {
    auto* const parent = new QWidget;
    const DialogAnswers answers{[parent](QDialog& /*box*/) { delete parent; }};
    search_error(parent, text("x"));
}
