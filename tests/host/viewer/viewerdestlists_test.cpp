#include "tests/host/viewer/viewerdestfixture.h"

#include <printman/dialogs/selprinterdlg.h>
#include <printman/dialogs/selunixprinterdlg.h>

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace {

class ViewerPrinterLists : public DestinationTest {
protected:
    /// The ids that are offered with "Server Print" or "Local Print"; the dialogs are cancelled.
    QStringList offered(bool on_server) {
        QStringList ids;
        choose(
            [on_server](PrintDestDlg& dialog) {
                click(dialog.opToPrinter);
                click(on_server ? dialog.opServerPrint : dialog.opLocalPrint);
                click(dialog.btnPIDBrw);
                dialog.reject();
            },
            {[&ids](QDialog& dialog) {
                const auto* const box = dialog.findChild<QComboBox*>();
                for (int i = 0; i < box->count(); ++i)
                    ids << box->itemText(i);
                dialog.reject();
            }});
        return ids;
    }
};

QStringList ids(std::initializer_list<const char*> names) {
    QStringList list;
    for (const char* name : names)
        list << QString::fromLatin1(name);
    return list;
}

} // namespace

TEST_F(ViewerPrinterLists, serverPrintOffersTheDefinedPrintersWithTheirSheet) {
    write_settings("dlwserver.ini",
                   "[A]\nname=queue a\n[B]\nname=queue b\nsize=7\npaper=Letter\nmargins=1,2,3,4\n");
    open();
    const auto pick_b = [](QDialog& dialog) {
        auto& printers = dynamic_cast<SelPrinterDlg&>(dialog);
        pick(printers.cbPrinterID, "B");
        EXPECT_EQ(printers.txtPrinterName->text(), QStringLiteral("queue b"));
        EXPECT_EQ(printers.txtPaperSize->text(), QStringLiteral("8.5 x 11 inches, 216 x 279 mm"));
        EXPECT_EQ(printers.txtSize->text(), QStringLiteral("7"));
        EXPECT_EQ(printers.txtRight->text(), QStringLiteral("4.00"));
        click(printers.btnOK);
    };
    choose(
        [](PrintDestDlg& dialog) {
            click(dialog.opToPrinter);
            click(dialog.opServerPrint);
            click(dialog.btnPIDBrw);
            EXPECT_EQ(dialog.txtPrintID->text(), QStringLiteral("B"));
            dialog.reject();
        },
        {pick_b});
    EXPECT_EQ(offered(true), ids({"A", "B"}));
}

TEST_F(ViewerPrinterLists, serverPrintOffersTheQueuesOfTheSystemWhereThereAreSome) {
    write_settings("dlwserver.ini", "[A]\nname=queue a\n");
    write_settings("dlwunix.ini", "[Front]\nport=front_desk\ndescription=By the door\n"
                                  "page_length=66\n[Back]\n");
    open();
    const auto pick_front = [](QDialog& dialog) {
        auto& printers = dynamic_cast<SelUnixPrinterDlg&>(dialog);
        pick(printers.cbPrinterID, "Front");
        EXPECT_EQ(printers.txtPort->text(), QStringLiteral("front_desk"));
        EXPECT_EQ(printers.txtDescription->text(), QStringLiteral("By the door"));
        EXPECT_EQ(printers.txtPageLength->text(), QStringLiteral("66"));
        click(printers.btnOK);
    };
    choose(
        [](PrintDestDlg& dialog) {
            click(dialog.opToPrinter);
            click(dialog.opServerPrint);
            click(dialog.btnPIDBrw);
            EXPECT_EQ(dialog.txtPrintID->text(), QStringLiteral("Front"));
            dialog.reject();
        },
        {pick_front});
    EXPECT_EQ(offered(true), ids({"Front", "Back"}));
}

TEST_F(ViewerPrinterLists, localPrintOffersThoseOfTheSetupFile) {
    write_setup_file("[LOCAL]\nname=local\n");
    write_settings("dlwserver.ini", "[A]\nname=queue a\n");
    open();
    EXPECT_EQ(offered(false), ids({"LOCAL"}));
    EXPECT_EQ(offered(true), ids({"A"}));
}

TEST_F(ViewerPrinterLists, withoutListsNothingIsOfferedAndNothingTold) {
    open();
    EXPECT_EQ(offered(true), QStringList());
    EXPECT_EQ(offered(false), QStringList());
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerPrinterLists, changedListsAreOfferedNextTimeAndThePageStays) {
    open();
    EXPECT_EQ(offered(true), QStringList());
    write_settings("dlwserver.ini", "[A]\nname=a\n");
    EXPECT_EQ(offered(true), ids({"A"}));
    action("last").trigger();
    action("zoom_in").trigger();
    write_settings("dlwserver.ini", "[B]\nname=b\n[C]\nname=c\n");
    EXPECT_EQ(offered(true), ids({"B", "C"}));
    EXPECT_EQ(page_box(), QStringLiteral("3 of 3"));
    EXPECT_EQ(window_->view()->zoom(), QStringLiteral("150%"));
    write_settings("dlwunix.ini", "[U]\n");
    EXPECT_EQ(offered(true), ids({"U"}));
    ASSERT_TRUE(QFile::remove(QFile::decodeName(path("settings/dlwunix.ini"))));
    EXPECT_EQ(offered(true), ids({"B", "C"}));
}

TEST_F(ViewerPrinterLists, aFaultInAListIsToldOnceUntilItIsAnother) {
    write_settings("dlwserver.ini", "[A]\nname=a\n");
    write_settings("dlwunix.ini", "[U]\nwrong\n");
    open();
    EXPECT_EQ(offered(true), ids({"A"}));
    ASSERT_EQ(boxes_.texts.size(), 1);
    EXPECT_EQ(boxes_.texts.first(),
              QStringLiteral("The server's printers cannot be offered.\n\n%1:2: neither a section "
                             "nor a line KEY=value")
                  .arg(QFile::decodeName(path("settings/dlwunix.ini"))));
    EXPECT_EQ(offered(true), ids({"A"}));
    EXPECT_EQ(boxes_.texts.size(), 1);
    write_settings("dlwunix.ini", "[U]\nport=u\n");
    EXPECT_EQ(offered(true), ids({"U"}));
    write_settings("dlwunix.ini", "[U]\nwrong\n");
    EXPECT_EQ(offered(true), ids({"A"}));
    EXPECT_EQ(boxes_.texts.size(), 2);
}

TEST_F(ViewerPrinterLists, aReportThatIsGoneWhenTheListsHaveChangedIsTold) {
    write_settings("dlwserver.ini", "[A]\nname=a\n");
    open();
    EXPECT_EQ(offered(true), ids({"A"}));
    write_settings("dlwserver.ini", "[B]\nname=b\n");
    ASSERT_TRUE(QFile::remove(QFile::decodeName(report_)));
    action("destination").trigger();
    ASSERT_EQ(boxes_.texts.size(), 1);
    EXPECT_TRUE(boxes_.texts.first().endsWith(QStringLiteral(": No such file or directory")));
    EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
}
