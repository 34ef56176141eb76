#include "tests/dialogs/destfixture.h"
#include "tests/support/dialogs.h"

#include <printman/dialogs/selprinterdlg.h>
#include <printman/dialogs/selunixprinterdlg.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

using testsupport::DialogAnswers;
using testsupport::text;

namespace {

QStringList entries(const QComboBox* box) {
    QStringList list;
    for (int i = 0; i < box->count(); ++i)
        list << box->itemText(i);
    return list;
}

/// A user who goes down the list to its entry number @p index, and confirms or cancels.
template <typename Chooser>
DialogAnswers::Answer pick(int index, QPushButton* Chooser::*end) {
    return [index, end](QDialog& shown) {
        auto& chooser = dynamic_cast<Chooser&>(shown);
        EXPECT_NE(dynamic_cast<PrintDestDlg*>(chooser.parentWidget()), nullptr);
        EXPECT_TRUE(chooser.isModal());
        for (int i = 0; i <= index; ++i)
            QTest::keyClick(chooser.cbPrinterID, Qt::Key_Down);
        QTest::mouseClick(chooser.*end, Qt::LeftButton);
    };
}

class PrintDestPrinter : public PrintDestFixture {
protected:
    /// Shows the dialog with the printer group enabled.
    void open_for_printers(PrintDestDlg& dialog, bool on_server) {
        open(dialog, record(2, on_server));
        click(dialog.opToPrinter);
    }

    void add_unix_printer() {
        UnixPrtSetup printer{};
        set_text(printer.printer_id, "lp7");
        manager_.set_numunix_printer(1);
        manager_.add_unix_printer(&printer);
    }
};

} // namespace

TEST_F(PrintDestPrinter, aServersPrinterIsPickedFromTheHostsList) {
    PrintDestDlg dialog;
    open_for_printers(dialog, true);
    const DialogAnswers answers{[this](QDialog& shown) {
        auto& chooser = dynamic_cast<SelPrinterDlg&>(shown);
        EXPECT_EQ(chooser.printman, &manager_);
        EXPECT_TRUE(chooser.server_printers);
        EXPECT_EQ(entries(chooser.cbPrinterID), QStringList({text("SERVER1"), text("SERVER2")}));
        pick(1, &SelPrinterDlg::btnOK)(shown);
    }};
    click(dialog.btnPIDBrw);
    EXPECT_EQ(dialog.txtPrintID->text(), text("SERVER2"));
    EXPECT_EQ(dialog.server_printer_id, text("SERVER2"));
    EXPECT_EQ(dialog.local_printer_id, text("LOCAL1"));
    click(dialog.btnOK);
    EXPECT_STREQ(dialog.dest.prt_id, "SERVER2");
}

TEST_F(PrintDestPrinter, aServersPrinterIsPickedFromTheUnixListWhereThereIsOne) {
    add_unix_printer();
    PrintDestDlg dialog;
    open_for_printers(dialog, true);
    const DialogAnswers answers{[this](QDialog& shown) {
        auto& chooser = dynamic_cast<SelUnixPrinterDlg&>(shown);
        EXPECT_EQ(chooser.printman, &manager_);
        EXPECT_EQ(entries(chooser.cbPrinterID), QStringList(text("lp7")));
        pick(0, &SelUnixPrinterDlg::btnOK)(shown);
    }};
    click(dialog.btnPIDBrw);
    EXPECT_EQ(dialog.txtPrintID->text(), text("lp7"));
    EXPECT_EQ(dialog.server_printer_id, text("lp7"));
}

TEST_F(PrintDestPrinter, aLocalPrinterIsPickedFromTheSetupFile) {
    add_unix_printer();
    PrintDestDlg dialog;
    open_for_printers(dialog, false);
    const DialogAnswers answers{[](QDialog& shown) {
        auto& chooser = dynamic_cast<SelPrinterDlg&>(shown);
        EXPECT_EQ(chooser.printman, nullptr);
        EXPECT_FALSE(chooser.server_printers);
        EXPECT_EQ(entries(chooser.cbPrinterID), QStringList({text("LOCAL1"), text("LOCAL2")}));
        pick(1, &SelPrinterDlg::btnOK)(shown);
    }};
    click(dialog.btnPIDBrw);
    EXPECT_EQ(dialog.txtPrintID->text(), text("LOCAL2"));
    EXPECT_EQ(dialog.local_printer_id, text("LOCAL2"));
    EXPECT_EQ(dialog.server_printer_id, text("LOCAL2"));
    click(dialog.opLocalPrint);
    EXPECT_FALSE(dialog.chkPageLength->isChecked());
}

TEST_F(PrintDestPrinter, eachKindKeepsThePrinterPickedForIt) {
    PrintDestDlg dialog;
    open_for_printers(dialog, true);
    const DialogAnswers answers{pick(1, &SelPrinterDlg::btnOK), pick(1, &SelPrinterDlg::btnOK)};
    click(dialog.btnPIDBrw);
    click(dialog.opLocalPrint);
    EXPECT_EQ(dialog.txtPrintID->text(), text("LOCAL1"));
    click(dialog.btnPIDBrw);
    EXPECT_EQ(dialog.txtPrintID->text(), text("LOCAL2"));
    click(dialog.opServerPrint);
    EXPECT_EQ(dialog.txtPrintID->text(), text("SERVER2"));
    click(dialog.opLocalPrint);
    EXPECT_EQ(dialog.txtPrintID->text(), text("LOCAL2"));
}

TEST_F(PrintDestPrinter, aCanceledPickChangesNothing) {
    add_unix_printer();
    for (const bool on_server : {true, false}) {
        PrintDestDlg dialog;
        open_for_printers(dialog, on_server);
        const DialogAnswers answers{on_server ? pick(0, &SelUnixPrinterDlg::btnCancel)
                                              : pick(1, &SelPrinterDlg::btnCancel)};
        click(dialog.btnPIDBrw);
        EXPECT_EQ(dialog.txtPrintID->text(), text(on_server ? "SERVER1" : "LOCAL1"));
        EXPECT_EQ(dialog.server_printer_id, text(on_server ? "SERVER1" : "LOCAL2"));
        EXPECT_EQ(dialog.local_printer_id, text("LOCAL1"));
    }
}

TEST_F(PrintDestPrinter, okWithoutAPickEmptiesTheId) {
    PrintDestDlg dialog;
    open_for_printers(dialog, true);
    const DialogAnswers answers{pick(-1, &SelPrinterDlg::btnOK)};
    click(dialog.btnPIDBrw);
    EXPECT_EQ(dialog.txtPrintID->text(), QString());
    click(dialog.btnOK);
    EXPECT_STREQ(dialog.dest.prt_id, "");
}

TEST_F(PrintDestPrinter, withoutAManagerTheServersListIsEmpty) {
    PrintDestDlg dialog;
    open_for_printers(dialog, true);
    dialog.printman = nullptr;
    const DialogAnswers answers{[](QDialog& shown) {
        EXPECT_EQ(entries(dynamic_cast<SelPrinterDlg&>(shown).cbPrinterID), QStringList());
        shown.reject();
    }};
    click(dialog.btnPIDBrw);
    EXPECT_EQ(dialog.txtPrintID->text(), text("SERVER1"));
}
