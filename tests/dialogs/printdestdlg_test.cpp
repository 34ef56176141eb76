#include "tests/dialogs/destfixture.h"
#include "tests/support/language.h"
#include "tests/support/waiting.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHideEvent>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <qtestspontaneevent.h>

using testsupport::text;

namespace {

using PrintDestDialog = PrintDestFixture;

/// The groups that are enabled: s(creen), p(rint), f(ile).
std::string enabled_groups(const PrintDestDlg& dialog) {
    return std::string(dialog.gbScreen->isEnabled() ? "s" : "") +
           (dialog.bgbPrint->isEnabled() ? "p" : "") + (dialog.gbFile->isEnabled() ? "f" : "");
}

} // namespace

TEST_F(PrintDestDialog, itsSlotsStandInOrder) {
    const QMetaObject& meta = PrintDestDlg::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names << QString::fromLatin1(meta.method(i).methodSignature());
    EXPECT_EQ(names.join(u' '),
              text("btnOK_clicked() btnCancel_clicked() opToScreen_clicked() "
                   "opToPrinter_clicked() opToFile_clicked() opLocalPrint_clicked() "
                   "opServerPrint_clicked() txtPrintID_textChanged(QString) btnPIDBrw_clicked() "
                   "txtPathName_textChanged(QString) btnFileBrw_clicked() "
                   "txtFont_textChanged(QString) btnFontBrw_clicked() chkNoPageFmt_clicked()"));
}

TEST_F(PrintDestDialog, startsOnTheScreenWithOneCopy) {
    const PrintDestDlg dialog(nullptr, "mine", true);
    EXPECT_EQ(dialog.objectName(), text("mine"));
    EXPECT_TRUE(dialog.isModal());
    EXPECT_EQ(bytes_of(dialog.dest), std::string(416, '\0'));
    EXPECT_TRUE(dialog.server_printer_id.isEmpty());
    EXPECT_TRUE(dialog.local_printer_id.isEmpty());
    EXPECT_EQ(dialog.screen_font, QFont());
    EXPECT_EQ(dialog.printman, nullptr);
    EXPECT_TRUE(dialog.opToScreen->isChecked());
    EXPECT_TRUE(dialog.opServerPrint->isChecked());
    EXPECT_EQ(dialog.spNCopies->minimum(), 1);
    EXPECT_EQ(dialog.spNCopies->value(), 1);
    EXPECT_TRUE(dialog.chkCollate->isChecked());
    EXPECT_EQ(enabled_groups(dialog), "s");
    EXPECT_EQ(dialog.maximumSize(), QSize(10, 10));
    EXPECT_EQ(testhost::calls(), QStringList());
}

TEST_F(PrintDestDialog, anAllZeroRecordLeavesTheScreenChosen) {
    PrintDestDlg dialog;
    open(dialog, record(0, false));
    EXPECT_TRUE(dialog.opToScreen->isChecked());
    EXPECT_TRUE(dialog.opLocalPrint->isChecked());
    EXPECT_EQ(dialog.txtPrintID->text(), text("LOCAL1"));
    EXPECT_EQ(dialog.spNCopies->value(), 1);
    EXPECT_FALSE(dialog.chkCollate->isChecked());
    EXPECT_EQ(enabled_groups(dialog), "s");
}

TEST_F(PrintDestDialog, showsWhatTheRecordHolds) {
    PrintDestDlg dialog;
    open(dialog, record(3, true));
    EXPECT_TRUE(dialog.opToFile->isChecked());
    EXPECT_TRUE(dialog.opServerPrint->isChecked());
    EXPECT_EQ(dialog.txtPrintID->text(), text("SERVER1"));
    EXPECT_EQ(dialog.server_printer_id, text("SERVER1"));
    EXPECT_EQ(dialog.spNCopies->value(), 3);
    EXPECT_TRUE(dialog.chkCollate->isChecked());
    EXPECT_TRUE(dialog.chkPageLength->isChecked());
    EXPECT_FALSE(dialog.chkSelPrtFnt->isChecked());
    EXPECT_FALSE(dialog.chkNoPageFmt->isChecked());
    EXPECT_EQ(dialog.txtPathName->text(), text("/tmp/before.txt"));
}

TEST_F(PrintDestDialog, aLocalRecordShowsTheStationsPrinterAndNotItsOwn) {
    PrintDestDlg dialog;
    open(dialog, record(2, false));
    EXPECT_EQ(dialog.txtPrintID->text(), text("LOCAL1"));
    EXPECT_EQ(dialog.server_printer_id, text("LOCAL2"));
    EXPECT_FALSE(dialog.chkSelPrtFnt->isChecked());
}

TEST_F(PrintDestDialog, theGroupsStayAsTheyWereWhenARecordIsLoaded) {
    PrintDestDlg dialog;
    open(dialog, record(2, true));
    EXPECT_TRUE(dialog.opToPrinter->isChecked());
    EXPECT_EQ(enabled_groups(dialog), "s");
    click(dialog.opToPrinter);
    EXPECT_EQ(enabled_groups(dialog), "p");
    dialog.hide();
    dialog.set_print_dest(record(3, true));
    dialog.show();
    EXPECT_TRUE(dialog.opToFile->isChecked());
    EXPECT_EQ(enabled_groups(dialog), "p");
}

TEST_F(PrintDestDialog, aDestinationEnablesItsGroupAlone) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    click(dialog.opToFile);
    EXPECT_EQ(enabled_groups(dialog), "f");
    EXPECT_TRUE(dialog.txtPathName->isEnabled() && dialog.btnFileBrw->isEnabled());
    EXPECT_FALSE(dialog.txtFont->isEnabled() || dialog.btnPIDBrw->isEnabled());
    click(dialog.opToPrinter);
    EXPECT_EQ(enabled_groups(dialog), "p");
    click(dialog.opToScreen);
    EXPECT_EQ(enabled_groups(dialog), "s");
    EXPECT_TRUE(dialog.txtFont->isEnabled() && dialog.btnFontBrw->isEnabled());
}

TEST_F(PrintDestDialog, theArrowKeysChooseADestinationToo) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    dialog.activateWindow();
    ASSERT_TRUE(testsupport::wait_until_active(dialog));
    EXPECT_TRUE(dialog.opToScreen->hasFocus());
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(dialog.opToPrinter->isChecked());
    EXPECT_EQ(enabled_groups(dialog), "p");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
    EXPECT_EQ(enabled_groups(dialog), "f");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Up);
    EXPECT_EQ(enabled_groups(dialog), "p");
}

TEST_F(PrintDestDialog, thePageLengthIsThatOfTheServersPrinter) {
    for (const bool has_length : {true, false}) {
        PrintDestDlg dialog;
        PrintDest dest = record(1, true);
        set_text(dest.prt_id, has_length ? "SERVER1" : "SERVER2");
        dest.page_length = !has_length;
        open(dialog, dest);
        EXPECT_EQ(dialog.chkPageLength->isChecked(), !has_length);
        click(dialog.opToPrinter);
        EXPECT_EQ(dialog.chkPageLength->isChecked(), has_length);
        EXPECT_FALSE(dialog.chkSelPrtFnt->isEnabled());
        EXPECT_FALSE(dialog.chkSelPrtFnt->isChecked());
    }
}

TEST_F(PrintDestDialog, thePageLengthIsThatOfTheStationsPrinter) {
    for (const bool has_length : {true, false}) {
        PrintDestDlg dialog;
        open(dialog, record(1, false));
        dialog.local_printer_id = text(has_length ? "LOCAL1" : "LOCAL2");
        click(dialog.opToPrinter);
        EXPECT_EQ(dialog.chkPageLength->isChecked(), has_length);
        EXPECT_FALSE(dialog.chkSelPrtFnt->isEnabled());
        EXPECT_FALSE(dialog.chkSelPrtFnt->isChecked());
    }
}

TEST_F(PrintDestDialog, localAndServerButtonsShowTheirPrinters) {
    PrintDestDlg dialog;
    PrintDest dest = record(1, true);
    set_text(dest.prt_id, "SERVER2");
    open(dialog, dest);
    click(dialog.opToPrinter);
    click(dialog.opLocalPrint);
    EXPECT_EQ(dialog.txtPrintID->text(), text("LOCAL1"));
    EXPECT_EQ(dialog.dest.server_print, 0);
    EXPECT_TRUE(dialog.chkPageLength->isChecked());
    EXPECT_TRUE(dialog.chkSelPrtFnt->isEnabled());
    click(dialog.chkSelPrtFnt);
    EXPECT_TRUE(dialog.chkSelPrtFnt->isChecked());
    click(dialog.opLocalPrint);
    EXPECT_FALSE(dialog.chkSelPrtFnt->isChecked());
    click(dialog.opServerPrint);
    EXPECT_EQ(dialog.txtPrintID->text(), text("SERVER2"));
    EXPECT_EQ(dialog.dest.server_print, 1);
    EXPECT_FALSE(dialog.chkPageLength->isChecked());
    EXPECT_FALSE(dialog.chkSelPrtFnt->isEnabled());
}

TEST_F(PrintDestDialog, alwaysSelectIsOfferedForALocalPrinterOfAServersRecord) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    click(dialog.opToPrinter);
    click(dialog.opLocalPrint);
    click(dialog.chkSelPrtFnt);
    click(dialog.opToScreen);
    click(dialog.opToPrinter);
    EXPECT_TRUE(dialog.chkSelPrtFnt->isEnabled());
    EXPECT_FALSE(dialog.chkSelPrtFnt->isChecked());
}

TEST_F(PrintDestDialog, alwaysSelectStaysOffOnceARecordWasLocal) {
    PrintDestDlg dialog;
    open(dialog, record(1, false));
    dialog.hide();
    dialog.set_print_dest(record(1, true));
    dialog.show();
    click(dialog.opToPrinter);
    click(dialog.opLocalPrint);
    EXPECT_FALSE(dialog.chkSelPrtFnt->isEnabled());
}

TEST_F(PrintDestDialog, pageFormattingIsOffWhenTheSettingBeginsWithAY) {
    for (const char* setting : {"yes", "Yes", "y", "Y", "yellow"}) {
        testhost::set("NOPAGEMAP", setting);
        PrintDestDlg dialog;
        open(dialog, record(1, true));
        EXPECT_TRUE(dialog.chkNoPageFmt->isChecked()) << setting;
        EXPECT_EQ(dialog.dest.no_page_fmt, 1) << setting;
    }
    for (const char* setting : {"no", "", " yes", "1"}) {
        testhost::set("NOPAGEMAP", setting);
        PrintDestDlg dialog;
        open(dialog, record(1, true));
        EXPECT_FALSE(dialog.chkNoPageFmt->isChecked()) << setting;
        EXPECT_EQ(dialog.dest.no_page_fmt, 0) << setting;
    }
}

TEST_F(PrintDestDialog, aRecordWithoutPageFormattingIsShownSoWhateverTheSettingSays) {
    testhost::set("NOPAGEMAP", "no");
    PrintDestDlg dialog;
    PrintDest dest = record(1, true);
    dest.no_page_fmt = 1;
    open(dialog, dest);
    EXPECT_TRUE(dialog.chkNoPageFmt->isChecked());
}

TEST_F(PrintDestDialog, pageFormattingIsSetAtOnceAndStaysWhenCanceled) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    click(dialog.opToPrinter);
    EXPECT_EQ(stored(), QStringList());
    click(dialog.chkNoPageFmt);
    const QString yes = text("SetEnv(NOPAGEMAP=yes, dlwmenu.ini, env, 1)");
    EXPECT_EQ(stored(), QStringList(yes));
    click(dialog.chkNoPageFmt);
    EXPECT_EQ(stored(), QStringList({yes, text("SetEnv(NOPAGEMAP=no, dlwmenu.ini, env, 1)")}));
    click(dialog.chkNoPageFmt);
    click(dialog.btnCancel);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(stored().size(), 3);
    EXPECT_EQ(stored().last(), yes);
}

TEST_F(PrintDestDialog, showingItAgainDiscardsWhatWasNotConfirmed) {
    PrintDestDlg dialog;
    open(dialog, record(2, true));
    click(dialog.opToPrinter);
    enter(dialog.txtPrintID, text("typed"));
    dialog.spNCopies->setValue(9);
    click(dialog.chkCollate);
    click(dialog.opToFile);
    enter(dialog.txtPathName, text("/tmp/typed"));
    dialog.hide();
    dialog.show();
    EXPECT_TRUE(dialog.opToPrinter->isChecked());
    EXPECT_EQ(dialog.txtPrintID->text(), text("SERVER1"));
    EXPECT_EQ(dialog.spNCopies->value(), 3);
    EXPECT_TRUE(dialog.chkCollate->isChecked());
    EXPECT_EQ(dialog.txtPathName->text(), text("/tmp/before.txt"));
    EXPECT_EQ(enabled_groups(dialog), "f");
}

TEST_F(PrintDestDialog, minimisingItKeepsWhatWasEntered) {
    PrintDestDlg dialog;
    open(dialog, record(2, true));
    click(dialog.opToFile);
    enter(dialog.txtPathName, text("/tmp/typed"));
    for (const bool by_the_desktop : {true, false}) {
        QHideEvent hidden;
        QShowEvent shown;
        if (by_the_desktop)
            QSpontaneKeyEvent::setSpontaneous(&hidden);
        qApp->notify(&dialog, &hidden);
        qApp->notify(&dialog, &shown);
        EXPECT_EQ(dialog.txtPathName->text(),
                  text(by_the_desktop ? "/tmp/typed" : "/tmp/before.txt"));
    }
}

TEST_F(PrintDestDialog, anEmptyPathLeavesTheFieldAsItWas) {
    PrintDestDlg dialog;
    open(dialog, record(3, true));
    dialog.hide();
    PrintDest dest = record(3, true);
    set_text(dest.path, "");
    dialog.set_print_dest(dest);
    dialog.show();
    EXPECT_EQ(dialog.txtPathName->text(), text("/tmp/before.txt"));
}

TEST_F(PrintDestDialog, opensWithFiveQuestionsToTheHostAndNoFile) {
    testhost::set("SCR_FACENAME", "Courier");
    PrintDestDlg dialog;
    open(dialog, record(2, true));
    EXPECT_EQ(testhost::calls(),
              QStringList({text("GetEnv(NOPAGEMAP, dlwmenu.ini, env)"),
                           text("GetEnv(SCR_FACENAME, dlwmenu.ini, screenfont)"),
                           text("GetEnv(SCR_POINTSIZE, dlwmenu.ini, screenfont)"),
                           text("GetEnv(SCR_WEIGHT, dlwmenu.ini, screenfont)"),
                           text("GetEnv(SCR_ITALIC, dlwmenu.ini, screenfont)")}));
}

TEST_F(PrintDestDialog, withoutAManagerNoPrinterHasAPageLength) {
    PrintDestDlg dialog;
    PrintDest dest = record(2, true);
    dest.page_length = 0;
    open(dialog, dest);
    dialog.printman = nullptr;
    for (QRadioButton* button : {dialog.opToPrinter, dialog.opLocalPrint, dialog.opServerPrint}) {
        click(button);
        EXPECT_FALSE(dialog.chkPageLength->isChecked());
    }
    click(dialog.btnOK);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(PrintDestDialog, isAsSmallAsItsLayoutAllowsAndStaysSo) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    const QSize smallest = dialog.layout()->totalMinimumSize();
    EXPECT_EQ(dialog.size(), smallest);
    dialog.resize(1200, 900);
    EXPECT_EQ(dialog.size(), smallest);
}

TEST_F(PrintDestDialog, growsWithTheLanguageAlone) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    const int width = dialog.width();
    const testsupport::LongLanguage language;
    const auto is_whole = [](const QWidget* widget) {
        return widget->width() >= widget->sizeHint().width();
    };
    EXPECT_TRUE(testsupport::wait_for([&] {
        return dialog.width() > width && is_whole(dialog.chkNoPageFmt) &&
               is_whole(dialog.lbPrintID) && is_whole(dialog.lbNCopies);
    }));
    EXPECT_EQ(dialog.size(), dialog.layout()->totalMinimumSize());
}

TEST_F(PrintDestDialog, cutsNoLabelThatMayGrow) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    EXPECT_EQ(dialog.lbPrintID->minimumWidth(), 60);
    dialog.lbPrintID->setText(text("Printer identification"));
    const auto fits = [](const QWidget* widget) {
        return widget->width() >= widget->sizeHint().width();
    };
    QFont large = dialog.font();
    large.setPointSize(24);
    dialog.setFont(large);
    EXPECT_TRUE(testsupport::wait_for([&] { return fits(dialog.lbPrintID); }));
    EXPECT_TRUE(testsupport::wait_for([&] {
        return dialog.txtFont->width() > QFontMetrics(large).horizontalAdvance(
                                             text("Liberation Mono, DemiBold regular, size 10"));
    }));
}

TEST_F(PrintDestDialog, theKeyboardStartsAtTheChosenDestination) {
    for (const int dest : {1, 2, 3}) {
        PrintDestDlg dialog;
        open(dialog, record(dest, true));
        QCoreApplication::processEvents();
        EXPECT_EQ(dialog.focusWidget(), dest == 1   ? dialog.opToScreen
                                        : dest == 2 ? dialog.opToPrinter
                                                    : dialog.opToFile);
    }
}

TEST_F(PrintDestDialog, enterMeansOkAndEscapeCancel) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    QTest::keyClick(dialog.txtFont, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    open(dialog, record(1, true));
    QTest::keyClick(dialog.txtFont, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}
