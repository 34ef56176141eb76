#include "tests/dialogs/dialogwidgets.h"
#include "tests/dialogs/printerrecords.h"
#include "tests/support/dialogs.h"
#include "tests/support/language.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <printman/dialogs/selprinterdlg.h>

#include <QAccessible>
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

const std::initializer_list<const char*> all_fields = {
    "txtPrinterName", "txtPaperSize",  "txtOrientation", "txtFontName", "txtStyle",
    "txtSize",        "txtPageLength", "txtFirstLine",   "txtLastLine", "txtTop",
    "txtBottom",      "txtLeft",       "txtRight"};

/// A dialog over a manager with three host-defined printers.
class SelectPrinter : public testing::Test {
protected:
    SelectPrinter() {
        testhost::reset();
        set_host_printers(manager_,
                          {host_printer("first"), host_printer("second"), host_printer("third")});
        dialog_.printman = &manager_;
        dialog_.server_printers = true;
    }
    ~SelectPrinter() override { testhost::reset(); }

    std::vector<std::string> shown() const { return texts_of(dialog_, all_fields); }

    CPrintMan manager_;
    SelPrinterDlg dialog_;
};

} // namespace

TEST(SelectPrinterLayout, hasItsTextsAndNames) {
    const selPrinterDlgBase dialog;
    EXPECT_EQ(dialog.objectName(), text("selPrinterDlgBase"));
    EXPECT_EQ(selPrinterDlgBase(nullptr, "mine").objectName(), text("mine"));
    EXPECT_FALSE(dialog.isModal());
    EXPECT_TRUE(selPrinterDlgBase(nullptr, "mine", true).isModal());
    EXPECT_EQ(dialog.windowTitle(), text("Select Printer"));
    const struct {
        QLabel* label;
        const char* name;
        const char* text;
        QWidget* field;
    } labels[] = {
        {dialog.lbPrinterID, "lbPrinterID", "Printer ID", dialog.cbPrinterID},
        {dialog.lbPrinterName, "lbPrinterName", "Name", dialog.txtPrinterName},
        {dialog.lbPaperSize, "lbPaperSize", "Paper Size", dialog.txtPaperSize},
        {dialog.lbOrientation, "lbOrientation", "Orientation", dialog.txtOrientation},
        {dialog.lbFontName, "lbFontName", "Name", dialog.txtFontName},
        {dialog.lbStype, "lbStype", "Style", dialog.txtStyle},
        {dialog.lbSize, "lbSize", "Size", dialog.txtSize},
        {dialog.lbPageLength, "lbPageLength", "Page Length", dialog.txtPageLength},
        {dialog.lbFirstLine, "lbFirstLine", "First Line", dialog.txtFirstLine},
        {dialog.lbLastLine, "lbLastLine", "Last Line", dialog.txtLastLine},
        {dialog.lbTop, "lbTop", "Top", dialog.txtTop},
        {dialog.lbBottom, "lbBottom", "Bottom", dialog.txtBottom},
        {dialog.lbLeft, "lbLeft", "Left", dialog.txtLeft},
        {dialog.lbRight, "lbRight", "Right", dialog.txtRight},
        {dialog.TextLabel1, "TextLabel1", "in", nullptr},
        {dialog.TextLabel1_2, "TextLabel1_2", "in", nullptr},
        {dialog.TextLabel1_3, "TextLabel1_3", "in", nullptr},
        {dialog.TextLabel1_4, "TextLabel1_4", "in", nullptr},
    };
    for (const auto& expected : labels) {
        EXPECT_EQ(expected.label->objectName(), text(expected.name));
        EXPECT_EQ(expected.label->text(), text(expected.text)) << expected.name;
        EXPECT_EQ(expected.label->buddy(), expected.field) << expected.name;
    }
    EXPECT_EQ(dialog.gbPrinter->title(), text("Printer"));
    EXPECT_EQ(dialog.gbFont->title(), text("Font"));
    EXPECT_EQ(dialog.gbDefPageLength->title(), text("Default Page Length"));
    EXPECT_EQ(dialog.gbPageMargins->title(), text("Page Margins"));
    EXPECT_EQ(dialog.btnOK->text(), text("Ok"));
    EXPECT_EQ(dialog.btnCancel->text(), text("Cancel"));
    for (const char* name : {"cbPrinterID", "gbPrinter", "gbFont", "gbDefPageLength",
                             "gbPageMargins", "btnOK", "btnCancel"})
        EXPECT_NE(dialog.findChild<QWidget*>(text(name)), nullptr) << name;
}

TEST(SelectPrinterLayout, itsFieldsAreReadOnly) {
    const selPrinterDlgBase dialog;
    for (const char* name : all_fields) {
        const auto* const field = dialog.findChild<QLineEdit*>(text(name));
        ASSERT_NE(field, nullptr) << name;
        EXPECT_TRUE(field->isReadOnly()) << name;
        EXPECT_TRUE(field->text().isEmpty()) << name;
    }
    EXPECT_EQ(dialog.findChildren<QLineEdit*>(QRegularExpression(text("^txt"))).size(), 13);
    EXPECT_TRUE(dialog.cbPrinterID->isEditable());
    EXPECT_FALSE(dialog.cbPrinterID->lineEdit()->isReadOnly());
}

TEST(SelectPrinterLayout, standsInAGridOfTwoColumns) {
    const selPrinterDlgBase dialog;
    EXPECT_EQ(dialog.size(), QSize(478, 430).expandedTo(dialog.minimumSizeHint()));
    auto* const grid = dynamic_cast<QGridLayout*>(dialog.layout());
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->objectName(), text("selPrinterDlgBaseLayout"));
    const auto cell = [grid](QLayoutItem* item) {
        int row = -1;
        int column = -1;
        int rows = -1;
        int columns = -1;
        grid->getItemPosition(grid->indexOf(item), &row, &column, &rows, &columns);
        return std::vector<int>{row, column, rows, columns};
    };
    const auto of_widget = [grid](QWidget* widget) { return grid->itemAt(grid->indexOf(widget)); };
    EXPECT_THAT(cell(grid->itemAtPosition(0, 0)), ElementsAre(0, 0, 2, 1));
    EXPECT_THAT(cell(of_widget(dialog.gbFont)), ElementsAre(2, 0, 1, 1));
    EXPECT_THAT(cell(of_widget(dialog.gbDefPageLength)), ElementsAre(3, 0, 1, 1));
    EXPECT_THAT(cell(of_widget(dialog.gbPageMargins)), ElementsAre(4, 0, 1, 1));
    EXPECT_THAT(cell(grid->itemAtPosition(0, 1)), ElementsAre(0, 1, 1, 1));
    EXPECT_THAT(cell(grid->itemAtPosition(1, 1)), ElementsAre(1, 1, 4, 1));
    EXPECT_NE(grid->itemAtPosition(1, 1)->spacerItem(), nullptr);
    EXPECT_EQ(grid->itemAtPosition(0, 1)->layout()->spacing(), 2);
    EXPECT_EQ(dialog.gbDefPageLength->layout()->spacing(), 22);
    EXPECT_EQ(dialog.gbPageMargins->layout()->spacing(), 28);
    auto* const font = dynamic_cast<QGridLayout*>(dialog.gbFont->layout());
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->itemAtPosition(0, 1)->widget(), dialog.txtFontName);
    EXPECT_EQ(font->itemAtPosition(0, 2)->widget(), dialog.txtFontName);
    EXPECT_EQ(font->itemAtPosition(1, 1)->widget(), dialog.txtStyle);
}

TEST(SelectPrinterLayout, fieldsHaveRoomForWhatTheyShow) {
    SelPrinterDlg dialog;
    dialog.show();
    const auto fits = [](QLineEdit* field, const char* sample) {
        field->setText(text(sample));
        const int cursor_and_frame = 8;
        return field->fontMetrics().horizontalAdvance(text(sample)) + cursor_and_frame <=
               field->width();
    };
    EXPECT_TRUE(fits(dialog.txtPaperSize, "105 x 241 mm, US Common #10 Emvelope"));
    EXPECT_TRUE(fits(dialog.txtFontName, "Courier New 10 Bold Italic"));
    EXPECT_TRUE(fits(dialog.txtStyle, "Bold Italic"));
    EXPECT_TRUE(fits(dialog.txtSize, "128"));
    EXPECT_TRUE(fits(dialog.txtPageLength, "10000"));
    EXPECT_TRUE(fits(dialog.txtRight, "10.25"));
}

TEST(SelectPrinterLayout, takesTheLanguageThatTheProgramChangesTo) {
    selPrinterDlgBase dialog;
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
        ASSERT_EQ(after.size(), 25);
        for (int i = 0; i < after.size(); ++i)
            EXPECT_EQ(after[i], before[i].repeated(3));
    }
    dialog.languageChange();
    EXPECT_EQ(texts(), before);
}

TEST_F(SelectPrinter, itsSlotsStandInOrder) {
    const QMetaObject& meta = SelPrinterDlg::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names << QString::fromLatin1(meta.method(i).methodSignature());
    EXPECT_EQ(names.join(u' '),
              text("btnOK_clicked() btnCancel_clicked() cbPrinterID_activated(QString)"));
}

TEST_F(SelectPrinter, startsWithoutManagerPrinterAndList) {
    const SelPrinterDlg dialog;
    EXPECT_EQ(dialog.printman, nullptr);
    EXPECT_FALSE(dialog.server_printers);
    EXPECT_TRUE(dialog.printer_id.isEmpty());
    EXPECT_EQ(dialog.cbPrinterID->count(), 0);
    EXPECT_TRUE(dialog.cbPrinterID->lineEdit()->isReadOnly());
}

TEST_F(SelectPrinter, listsTheHostsPrintersInTheirOrderAndPicksNone) {
    dialog_.show();
    EXPECT_THAT(entries(dialog_.cbPrinterID), ElementsAre("first", "second", "third"));
    EXPECT_TRUE(dialog_.cbPrinterID->currentText().isEmpty());
    EXPECT_EQ(dialog_.cbPrinterID->currentIndex(), -1);
    EXPECT_THAT(shown(), Each(""));
}

TEST_F(SelectPrinter, showsAPickedPrinter) {
    dialog_.show();
    pick(dialog_.cbPrinterID, 1);
    EXPECT_THAT(shown(), ElementsAre("Host second", "8.5 x 11 inches, 216 x 279 mm", "Landscape",
                                     "Courier 12", "Bold", "12", "66", "3", "60", "0.50", "0.25",
                                     "1.13", "2.00"));
    EXPECT_EQ(dialog_.printer_id, text("second"));
    EXPECT_EQ(dialog_.cbPrinterID->currentText(), text("second"));
}

TEST_F(SelectPrinter, isLedWithTheKeyboardAlone) {
    const DialogAnswers answers{[this](QDialog& shown_dialog) {
        QTest::keyClick(dialog_.focusWidget(), Qt::Key_Down);
        EXPECT_EQ(dialog_.printer_id, text("first"));
        QTest::keyClick(dialog_.focusWidget(), Qt::Key_Down);
        EXPECT_EQ(dialog_.txtPrinterName->text(), text("Host second"));
        QTest::keyClicks(dialog_.focusWidget(), text("typed"));
        EXPECT_EQ(dialog_.cbPrinterID->currentText(), text("second"));
        QTest::keyClick(shown_dialog.focusWidget(), Qt::Key_Return);
    }};
    EXPECT_EQ(dialog_.exec(), QDialog::Accepted);
    EXPECT_EQ(dialog_.printer_id, text("second"));
}

TEST_F(SelectPrinter, okWithoutAPickAnswersAnEmptyId) {
    const DialogAnswers answers{
        [this](QDialog& /*shown*/) { QTest::mouseClick(dialog_.btnOK, Qt::LeftButton); }};
    EXPECT_EQ(dialog_.exec(), QDialog::Accepted);
    EXPECT_TRUE(dialog_.printer_id.isEmpty());
}

TEST_F(SelectPrinter, cancelAndEscapeReject) {
    {
        const DialogAnswers answers{
            [this](QDialog& /*shown*/) { QTest::mouseClick(dialog_.btnCancel, Qt::LeftButton); }};
        EXPECT_EQ(dialog_.exec(), QDialog::Rejected);
    }
    const DialogAnswers answers{
        [](QDialog& shown_dialog) { QTest::keyClick(&shown_dialog, Qt::Key_Escape); }};
    EXPECT_EQ(dialog_.exec(), QDialog::Rejected);
}

TEST_F(SelectPrinter, everyShowAfterAHideAppendsTheListAgain) {
    dialog_.show();
    pick(dialog_.cbPrinterID, 0);
    dialog_.hide();
    EXPECT_EQ(dialog_.cbPrinterID->count(), 3);
    set_host_printers(manager_, {host_printer("new")});
    dialog_.show();
    EXPECT_THAT(entries(dialog_.cbPrinterID), testing::SizeIs(4));
    EXPECT_TRUE(dialog_.cbPrinterID->currentText().isEmpty());
    EXPECT_EQ(dialog_.txtPrinterName->text(), text("Host first"));
    EXPECT_EQ(dialog_.printer_id, text("first"));
    dialog_.show();
    EXPECT_EQ(dialog_.cbPrinterID->count(), 4);
}

TEST_F(SelectPrinter, tabGoesThroughItFromTopToBottom) {
    dialog_.show();
    ASSERT_TRUE(testsupport::wait_until_active(dialog_));
    EXPECT_EQ(dialog_.focusWidget(), dialog_.cbPrinterID);
    EXPECT_EQ(tab_walk(dialog_, dialog_.cbPrinterID),
              "cbPrinterID txtPrinterName txtPaperSize txtOrientation txtFontName txtStyle txtSize "
              "txtPageLength txtFirstLine txtLastLine txtTop txtBottom txtLeft txtRight btnOK "
              "btnCancel");
}

TEST_F(SelectPrinter, aScreenReaderTellsItsFieldsByTheirLabels) {
    const auto name = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    EXPECT_EQ(name(dialog_.cbPrinterID), text("Printer ID"));
    EXPECT_EQ(name(dialog_.txtPaperSize), text("Paper Size"));
    EXPECT_EQ(name(dialog_.txtRight), text("Right"));
}

TEST_F(SelectPrinter, isAsSmallAsItsLayoutAllowsAndStaysSo) {
    EXPECT_EQ(dialog_.maximumSize(), QSize(10, 10));
    dialog_.show();
    const QSize smallest = dialog_.layout()->totalMinimumSize();
    EXPECT_EQ(dialog_.size(), smallest);
    dialog_.resize(900, 900);
    EXPECT_EQ(dialog_.size(), smallest);
    pick(dialog_.cbPrinterID, 2);
    EXPECT_EQ(dialog_.size(), smallest);
}

TEST_F(SelectPrinter, longTextsDoNotWidenItAndAreShownFromTheirBeginning) {
    dialog_.show();
    const QSize smallest = dialog_.size();
    WinPrtSetup wide = host_printer(std::string(127, 'W'));
    set_text(wide.printer_name, std::string(127, 'N'));
    CPrintMan other;
    set_host_printers(other, {wide});
    SelPrinterDlg dialog;
    dialog.printman = &other;
    dialog.server_printers = true;
    dialog.show();
    pick(dialog.cbPrinterID, 0);
    EXPECT_EQ(dialog.size(), smallest);
    EXPECT_EQ(dialog.txtPrinterName->text(), QString(127, u'N'));
    EXPECT_EQ(dialog.txtPrinterName->cursorPosition(), 0);
    EXPECT_EQ(dialog.cbPrinterID->currentText(), QString(127, u'W'));
    EXPECT_EQ(dialog.cbPrinterID->lineEdit()->cursorPosition(), 0);
}

TEST_F(SelectPrinter, growsWithTheLanguageAlone) {
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

TEST_F(SelectPrinter, returnTakesThePrinterThatIsShownHoweverOthersAreSpelt) {
    CPrintMan manager;
    set_host_printers(manager, {host_printer("lp"), host_printer("LP"), host_printer("Lp")});
    dialog_.printman = &manager;
    dialog_.show();
    for (const char* id : {"LP", "Lp"}) {
        pick(dialog_.cbPrinterID,
             dialog_.cbPrinterID->findText(text(id), Qt::MatchExactly | Qt::MatchCaseSensitive));
        QTest::keyClick(dialog_.cbPrinterID, Qt::Key_Return);
        EXPECT_EQ(dialog_.result(), QDialog::Accepted);
        EXPECT_EQ(dialog_.printer_id, text(id));
        EXPECT_EQ(dialog_.txtPrinterName->text(), text("Host ") + text(id));
        dialog_.show();
    }
}

TEST_F(SelectPrinter, minimisingItKeepsItsListAndWhatWasPicked) {
    dialog_.show();
    pick(dialog_.cbPrinterID, 1);
    QHideEvent hidden;
    QSpontaneKeyEvent::setSpontaneous(&hidden);
    QShowEvent shown;
    qApp->notify(&dialog_, &hidden);
    qApp->notify(&dialog_, &shown);
    EXPECT_THAT(entries(dialog_.cbPrinterID), ElementsAre("first", "second", "third"));
    EXPECT_EQ(dialog_.cbPrinterID->currentText(), text("second"));
}
