#include "tests/dialogs/dialogwidgets.h"
#include "tests/dialogs/printerrecords.h"
#include "tests/support/dialogs.h"
#include "tests/support/language.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <printman/dialogs/selunixprinterdlg.h>

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::DialogAnswers;
using testsupport::LongLanguage;

using testsupport::text;

namespace {

const std::initializer_list<const char*> all_fields = {"txtPort", "txtDescription", "txtPageLength",
                                                       "txtFirstLine", "txtLastLine"};

/// A dialog over a manager with three local printers.
class SelectUnixPrinter : public testing::Test {
protected:
    SelectUnixPrinter() {
        testhost::reset();
        set_unix_printers(manager_,
                          {unix_printer("hall"), unix_printer("attic"), unix_printer("cellar")});
        dialog_.printman = &manager_;
    }
    ~SelectUnixPrinter() override { testhost::reset(); }

    std::vector<std::string> shown() const { return texts_of(dialog_, all_fields); }

    CPrintMan manager_;
    SelUnixPrinterDlg dialog_;
};

} // namespace

TEST(SelectUnixPrinterLayout, hasItsTextsAndNames) {
    const selUnixPrinterDlgBase dialog;
    EXPECT_EQ(dialog.objectName(), text("selUnixPrinterDlgBase"));
    EXPECT_EQ(selUnixPrinterDlgBase(nullptr, "mine").objectName(), text("mine"));
    EXPECT_FALSE(dialog.isModal());
    EXPECT_TRUE(selUnixPrinterDlgBase(nullptr, "mine", true).isModal());
    EXPECT_EQ(dialog.windowTitle(), text("Select Printer"));
    const struct {
        QLabel* label;
        const char* name;
        const char* text;
        QWidget* field;
    } labels[] = {
        {dialog.lbPrinterID, "lbPrinterID", "Printer ID", dialog.cbPrinterID},
        {dialog.lbPort, "lbPort", "Port/Spooler", dialog.txtPort},
        {dialog.lbDescription, "lbDescription", "Description", dialog.txtDescription},
        {dialog.lbPageLength, "lbPageLength", "Page Length", dialog.txtPageLength},
        {dialog.lbFirstLine, "lbFirstLine", "First Line", dialog.txtFirstLine},
        {dialog.lbLastLine, "lbLastLine", "Last Line", dialog.txtLastLine},
    };
    for (const auto& expected : labels) {
        EXPECT_EQ(expected.label->objectName(), text(expected.name));
        EXPECT_EQ(expected.label->text(), text(expected.text)) << expected.name;
        EXPECT_EQ(expected.label->buddy(), expected.field) << expected.name;
    }
    EXPECT_EQ(dialog.gbPrinter->title(), text("Printer"));
    EXPECT_EQ(dialog.gbDefPageLength->title(), text("Default Page Length"));
    EXPECT_EQ(dialog.btnOK->text(), text("OK"));
    EXPECT_EQ(dialog.btnCancel->text(), text("Cancel"));
    for (const char* name : {"cbPrinterID", "gbPrinter", "gbDefPageLength", "btnOK", "btnCancel"})
        EXPECT_NE(dialog.findChild<QWidget*>(text(name)), nullptr) << name;
    for (const char* name : all_fields) {
        const auto* const field = dialog.findChild<QLineEdit*>(text(name));
        ASSERT_NE(field, nullptr) << name;
        EXPECT_TRUE(field->isReadOnly()) << name;
    }
    EXPECT_TRUE(dialog.cbPrinterID->isEditable());
}

TEST(SelectUnixPrinterLayout, standsInAGridOfTwoColumns) {
    const selUnixPrinterDlgBase dialog;
    EXPECT_EQ(dialog.size(), QSize(454, 210).expandedTo(dialog.minimumSizeHint()));
    auto* const grid = dynamic_cast<QGridLayout*>(dialog.layout());
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->objectName(), text("selUnixPrinterDlgBaseLayout"));
    EXPECT_EQ(grid->contentsMargins(), QMargins(11, 11, 11, 11));
    EXPECT_EQ(grid->spacing(), 6);
    EXPECT_EQ(grid->itemAtPosition(0, 0)->widget(), dialog.gbPrinter);
    EXPECT_EQ(grid->itemAtPosition(1, 0)->widget(), dialog.gbDefPageLength);
    QLayoutItem* const buttons = grid->itemAtPosition(0, 1);
    EXPECT_EQ(grid->itemAtPosition(1, 1), buttons);
    EXPECT_EQ(buttons->layout()->itemAt(0)->widget(), dialog.btnOK);
    EXPECT_EQ(buttons->layout()->itemAt(1)->widget(), dialog.btnCancel);
    EXPECT_NE(buttons->layout()->itemAt(2)->spacerItem(), nullptr);
    auto* const printer = dynamic_cast<QGridLayout*>(dialog.gbPrinter->layout());
    ASSERT_NE(printer, nullptr);
    EXPECT_EQ(printer->itemAtPosition(0, 1)->widget(), dialog.cbPrinterID);
    EXPECT_EQ(printer->itemAtPosition(1, 1)->widget(), dialog.txtPort);
    EXPECT_EQ(printer->itemAtPosition(2, 1)->widget(), dialog.txtDescription);
}

TEST(SelectUnixPrinterLayout, takesTheLanguageThatTheProgramChangesTo) {
    selUnixPrinterDlgBase dialog;
    const auto texts = [&dialog] {
        QStringList all{dialog.windowTitle()};
        for (const QLabel* label : dialog.findChildren<QLabel*>())
            all << label->text();
        for (const QGroupBox* box : dialog.findChildren<QGroupBox*>())
            all << box->title();
        for (const QPushButton* button : dialog.findChildren<QPushButton*>())
            all << button->text();
        return all;
    };
    const QStringList before = texts();
    {
        const LongLanguage language;
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&dialog, &change);
        const QStringList after = texts();
        ASSERT_EQ(after.size(), 11);
        for (int i = 0; i < after.size(); ++i)
            EXPECT_EQ(after[i], before[i].repeated(3));
    }
    dialog.languageChange();
    EXPECT_EQ(texts(), before);
}

TEST_F(SelectUnixPrinter, itsSlotsStandInOrder) {
    const QMetaObject& meta = SelUnixPrinterDlg::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names << QString::fromLatin1(meta.method(i).methodSignature());
    EXPECT_EQ(names.join(u' '),
              text("cbPrinterID_activated(QString) btnOK_clicked() btnCancel_clicked()"));
}

TEST_F(SelectUnixPrinter, listsThePrintersInTheirOrderAndPicksNone) {
    EXPECT_EQ(dialog_.cbPrinterID->count(), 0);
    dialog_.show();
    EXPECT_THAT(entries(dialog_.cbPrinterID), ElementsAre("hall", "attic", "cellar"));
    EXPECT_TRUE(dialog_.cbPrinterID->currentText().isEmpty());
    EXPECT_EQ(dialog_.cbPrinterID->currentIndex(), -1);
    EXPECT_TRUE(dialog_.cbPrinterID->lineEdit()->isReadOnly());
    EXPECT_THAT(shown(), Each(""));
}

TEST_F(SelectUnixPrinter, showsAPickedPrinter) {
    dialog_.show();
    pick(dialog_.cbPrinterID, 1);
    EXPECT_THAT(shown(), ElementsAre("lp -d attic", "In the hall: attic", "72", "2", "70"));
    EXPECT_EQ(dialog_.printer_id, text("attic"));
}

TEST_F(SelectUnixPrinter, isLedWithTheKeyboardAlone) {
    const DialogAnswers answers{[this](QDialog& shown_dialog) {
        QTest::keyClick(dialog_.focusWidget(), Qt::Key_Down);
        EXPECT_EQ(dialog_.printer_id, text("hall"));
        QTest::keyClicks(dialog_.focusWidget(), text("typed"));
        QTest::keyClick(dialog_.focusWidget(), Qt::Key_End);
        EXPECT_EQ(dialog_.cbPrinterID->currentText(), text("hall"));
        QTest::keyClick(dialog_.focusWidget(), Qt::Key_Down);
        QTest::keyClick(dialog_.focusWidget(), Qt::Key_Down);
        QTest::keyClick(shown_dialog.focusWidget(), Qt::Key_Return);
    }};
    EXPECT_EQ(dialog_.exec(), QDialog::Accepted);
    EXPECT_EQ(dialog_.printer_id, text("cellar"));
    EXPECT_EQ(dialog_.txtPort->text(), text("lp -d cellar"));
}

TEST_F(SelectUnixPrinter, anIdThatIsNotFoundIsRememberedAllTheSame) {
    dialog_.show();
    pick(dialog_.cbPrinterID, 0);
    const std::vector<std::string> before = shown();
    for (const char* id : {"HALL", "elsewhere", ""}) {
        dialog_.cbPrinterID_activated(text(id));
        EXPECT_EQ(dialog_.printer_id, text(id));
        EXPECT_EQ(shown(), before);
    }
}

TEST_F(SelectUnixPrinter, okWithoutAPickAnswersAnEmptyId) {
    const DialogAnswers answers{
        [this](QDialog& /*shown*/) { QTest::mouseClick(dialog_.btnOK, Qt::LeftButton); }};
    EXPECT_EQ(dialog_.exec(), QDialog::Accepted);
    EXPECT_TRUE(dialog_.printer_id.isEmpty());
}

TEST_F(SelectUnixPrinter, cancelAndEscapeReject) {
    {
        const DialogAnswers answers{
            [this](QDialog& /*shown*/) { QTest::mouseClick(dialog_.btnCancel, Qt::LeftButton); }};
        EXPECT_EQ(dialog_.exec(), QDialog::Rejected);
    }
    const DialogAnswers answers{
        [](QDialog& shown_dialog) { QTest::keyClick(&shown_dialog, Qt::Key_Escape); }};
    EXPECT_EQ(dialog_.exec(), QDialog::Rejected);
}

TEST_F(SelectUnixPrinter, loadsItsListOnce) {
    dialog_.show();
    pick(dialog_.cbPrinterID, 2);
    dialog_.hide();
    set_unix_printers(manager_, {unix_printer("new")});
    dialog_.show();
    EXPECT_THAT(entries(dialog_.cbPrinterID), ElementsAre("hall", "attic", "cellar"));
    EXPECT_EQ(dialog_.cbPrinterID->currentText(), text("cellar"));
    dialog_.load_printers();
    EXPECT_EQ(dialog_.cbPrinterID->count(), 3);
}

TEST_F(SelectUnixPrinter, withoutAManagerThereAreNone) {
    SelUnixPrinterDlg dialog;
    EXPECT_EQ(dialog.printman, nullptr);
    dialog.show();
    EXPECT_EQ(dialog.cbPrinterID->count(), 0);
    EXPECT_TRUE(dialog.cbPrinterID->lineEdit()->isReadOnly());
    dialog.cbPrinterID_activated(text("hall"));
    EXPECT_EQ(dialog.printer_id, text("hall"));
    dialog.hide();
    dialog.printman = &manager_;
    dialog.show();
    EXPECT_EQ(dialog.cbPrinterID->count(), 3);
}

TEST_F(SelectUnixPrinter, listsEverySlotAndShowsTheFirstOfAnId) {
    CPrintMan manager;
    UnixPrtSetup second = unix_printer("same");
    second.page_length = 1;
    set_unix_printers(manager, {unix_printer("same"), second, UnixPrtSetup{}});
    SelUnixPrinterDlg dialog;
    dialog.printman = &manager;
    dialog.show();
    EXPECT_THAT(entries(dialog.cbPrinterID), ElementsAre("same", "same", ""));
    pick(dialog.cbPrinterID, 1);
    EXPECT_EQ(dialog.txtPageLength->text(), text("72"));
}

TEST_F(SelectUnixPrinter, textsThatFillTheirFieldsEndInThem) {
    CPrintMan manager;
    UnixPrtSetup full;
    std::memset(&full, 'x', sizeof full);
    set_unix_printers(manager, {full});
    SelUnixPrinterDlg dialog;
    dialog.printman = &manager;
    dialog.show();
    pick(dialog.cbPrinterID, 0);
    EXPECT_EQ(dialog.printer_id, QString(55, u'x'));
    EXPECT_EQ(dialog.txtPort->text(), QString(79, u'x'));
    EXPECT_EQ(dialog.txtDescription->text(), QString(83, u'x'));
    EXPECT_EQ(dialog.txtDescription->cursorPosition(), 0);
    EXPECT_EQ(dialog.cbPrinterID->lineEdit()->cursorPosition(), 0);
}

TEST_F(SelectUnixPrinter, tabGoesThroughItFromTopToBottom) {
    dialog_.show();
    ASSERT_TRUE(testsupport::wait_until_active(dialog_));
    EXPECT_EQ(dialog_.focusWidget(), dialog_.cbPrinterID);
    EXPECT_EQ(tab_walk(dialog_, dialog_.cbPrinterID),
              "cbPrinterID txtPort txtDescription txtPageLength txtFirstLine txtLastLine btnOK "
              "btnCancel");
}

TEST_F(SelectUnixPrinter, isAsSmallAsItsLayoutAllowsAndStaysSo) {
    EXPECT_EQ(dialog_.maximumSize(), QSize(10, 10));
    dialog_.show();
    const QSize smallest = dialog_.layout()->totalMinimumSize();
    EXPECT_EQ(dialog_.size(), smallest);
    dialog_.resize(900, 900);
    EXPECT_EQ(dialog_.size(), smallest);
    pick(dialog_.cbPrinterID, 2);
    EXPECT_EQ(dialog_.size(), smallest);
}

TEST_F(SelectUnixPrinter, growsWithTheLanguageAlone) {
    dialog_.show();
    const int width = dialog_.width();
    const LongLanguage language;
    const auto cut_labels = [this] {
        std::vector<std::string> names;
        for (const QLabel* label : dialog_.findChildren<QLabel*>()) {
            if (label->width() < label->sizeHint().width())
                names.push_back(label->objectName().toStdString());
        }
        return names;
    };
    EXPECT_TRUE(
        testsupport::wait_for([&] { return dialog_.width() > width && cut_labels().empty(); }));
    EXPECT_THAT(cut_labels(), IsEmpty());
}

TEST_F(SelectUnixPrinter, returnTakesThePrinterThatIsShownHoweverOthersAreSpelt) {
    CPrintMan manager;
    set_unix_printers(manager, {unix_printer("lp"), unix_printer("LP")});
    dialog_.printman = &manager;
    dialog_.show();
    pick(dialog_.cbPrinterID, 1);
    QTest::keyClick(dialog_.cbPrinterID, Qt::Key_Return);
    EXPECT_EQ(dialog_.result(), QDialog::Accepted);
    EXPECT_EQ(dialog_.printer_id, text("LP"));
}
