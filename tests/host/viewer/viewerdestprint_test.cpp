#include "tests/host/viewer/viewerdestfixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>

namespace {

class ViewerDestinationPrint : public DestinationTest {
protected:
    ViewerDestinationPrint() {
        write_setup_file("[LOCAL]\nname=local queue\n");
        write_settings("dlwprt.ini", "[printer]\nhere=LOCAL\n");
        write_settings("dlwserver.ini", "[SERVER]\nname=server queue\nsize=9\npaper=Letter\n");
    }

    /// Prints locally on the printer that is offered.
    void print_locally(int copies = 1, bool collate = true,
                       const std::vector<testsupport::DialogAnswers::Answer>& in_others = {}) {
        choose(
            [=](PrintDestDlg& dialog) {
                click(dialog.opToPrinter);
                click(dialog.opLocalPrint);
                dialog.spNCopies->setValue(copies);
                dialog.chkCollate->setChecked(collate);
                click(dialog.btnOK);
            },
            in_others);
    }

    void print_on_server(const QByteArray& id, int copies = 1, bool collate = true) {
        choose([=](PrintDestDlg& dialog) {
            click(dialog.opToPrinter);
            click(dialog.opServerPrint);
            type(dialog.txtPrintID, id);
            dialog.spNCopies->setValue(copies);
            dialog.chkCollate->setChecked(collate);
            click(dialog.btnOK);
        });
    }

    /// The numbers of the pages that were printed, in their order.
    QByteArray printed_pages() const {
        const QStringList words = spooled_words();
        QByteArray numbers;
        for (qsizetype i = 0; i + 1 < words.size(); ++i) {
            if (words.at(i) == QStringLiteral("page"))
                numbers += words.at(i + 1).toLatin1();
        }
        return numbers;
    }

    QByteArray lp_arguments() const { return read("lp.arguments"); }

    /// That one box was opened, and what it said.
    QString told() const {
        EXPECT_EQ(boxes_.texts.size(), 1);
        return boxes_.texts.value(0);
    }

    const testsupport::EnvironmentGuard no_server_{"CUPS_SERVER", "/nowhere/cups.sock"};
};

} // namespace

TEST_F(ViewerDestinationPrint, localPrintPrintsOnTheStationsPrinter) {
    open();
    action("next").trigger();
    print_locally();
    EXPECT_EQ(lp_arguments(), "-d local queue\n");
    EXPECT_EQ(printed_pages(), "123");
    EXPECT_EQ(message(), QStringLiteral("The report is printed"));
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_TRUE(menu_settings().contains("\nDEST=printer\n"));
    EXPECT_TRUE(menu_settings().contains("\nPRT_ID=LOCAL\n"));
}

TEST_F(ViewerDestinationPrint, localCopiesAreCollatedOrNot) {
    open();
    print_locally(2);
    EXPECT_EQ(printed_pages(), "123123");
    print_locally(2, false);
    EXPECT_EQ(printed_pages(), "112233");
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestinationPrint, aPrinterOfTheSetupFileIsPickedFromTheList) {
    write_setup_file("[LOCAL]\nname=local queue\n[OTHER]\nname=other queue\n");
    open();
    choose(
        [](PrintDestDlg& dialog) {
            click(dialog.opToPrinter);
            click(dialog.btnPIDBrw);
            click(dialog.btnOK);
        },
        {[](QDialog& dialog) {
            pick(dialog.findChild<QComboBox*>(), "OTHER");
            click(dialog.findChild<QPushButton*>(QStringLiteral("btnOK")));
        }});
    EXPECT_EQ(lp_arguments(), "-d other queue\n");
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestinationPrint, withoutAPrinterTheUserIsAskedForOne) {
    write_settings("dlwprt.ini", "");
    open();
    print_locally(1, true, {[](QDialog& dialog) {
                      EXPECT_NE(qobject_cast<QPrintDialog*>(&dialog), nullptr);
                      dialog.reject();
                  }});
    EXPECT_EQ(message(), QString());
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(lp_arguments(), "");
}

TEST_F(ViewerDestinationPrint, aPrinterThatIsNotInTheSetupFileIsTold) {
    write_settings("dlwprt.ini", "[printer]\nhere=NONE\n");
    open();
    print_locally();
    EXPECT_TRUE(told().startsWith(QStringLiteral("The report was not printed.\n\n")));
    EXPECT_TRUE(told().contains(QStringLiteral("NONE")));
    EXPECT_EQ(lp_arguments(), "");
}

TEST_F(ViewerDestinationPrint, serverPrintGivesAFileToThePrintersQueue) {
    open();
    print_on_server("SERVER");
    const QByteArray arguments = lp_arguments();
    EXPECT_TRUE(arguments.startsWith("-d server queue /")) << arguments.constData();
    const QByteArray file = arguments.mid(arguments.indexOf('/')).trimmed();
    EXPECT_FALSE(QFile::exists(QFile::decodeName(file)));
    EXPECT_EQ(printed_pages(), "123");
    EXPECT_TRUE(read("lp.ps").contains("612 792"));
    EXPECT_EQ(message(), QStringLiteral("The report is printed"));
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_TRUE(menu_settings().contains("\nSERVER_PRINT=yes\n"));
}

TEST_F(ViewerDestinationPrint, serverCopiesAreInTheFile) {
    open();
    print_on_server("SERVER", 2);
    EXPECT_EQ(printed_pages(), "123123");
    print_on_server("SERVER", 2, false);
    EXPECT_EQ(printed_pages(), "112233");
    EXPECT_EQ(lp_arguments().count('\n'), 2);
}

TEST_F(ViewerDestinationPrint, serverPrintUsesTheQueuesOfTheSystem) {
    write_settings("dlwunix.ini", "[Front]\nport=front_desk\n[SERVER]\nport=-odd\n");
    open();
    print_on_server("Front");
    EXPECT_TRUE(lp_arguments().startsWith("-d front_desk /"));
    EXPECT_EQ(printed_pages(), "123");
    EXPECT_FALSE(read("lp.ps").contains("612 792"));
    print_on_server("SERVER");
    EXPECT_TRUE(lp_arguments().contains("\n-d -odd /"));
    EXPECT_TRUE(read("lp.ps").contains("612 792"));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestinationPrint, aQueueOfAGenericNameGetsTheTextLineByLine) {
    write_settings("dlwunix.ini", "[Matrix]\nport=generic-matrix\n");
    open();
    print_on_server("Matrix");
    EXPECT_TRUE(lp_arguments().startsWith("-d generic-matrix /"));
    EXPECT_EQ(printed_pages(), "123");
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestinationPrint, aReportByARelativeNameIsPrintedOnTheServer) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(directory_.path()));
    open("three.rpt");
    print_on_server("SERVER");
    EXPECT_EQ(QDir::currentPath(), QDir(directory_.path()).canonicalPath());
    QDir::setCurrent(before);
    EXPECT_EQ(printed_pages(), "123");
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestinationPrint, aServerPrinterThatIsUnknownIsTold) {
    open();
    print_on_server("LOCAL");
    EXPECT_EQ(told(), QStringLiteral("The report was not printed.\n\nThere is no server printer "
                                     "'LOCAL' in %1")
                          .arg(QFile::decodeName(path("settings"))));
    boxes_.texts.clear();
    print_on_server("");
    EXPECT_EQ(told(), QStringLiteral("The report was not printed.\n\nNo printer was chosen"));
    EXPECT_EQ(lp_arguments(), "");
}

TEST_F(ViewerDestinationPrint, whatTheSpoolerSaysIsTold) {
    stub_lp("echo 'lp: The printer or class does not exist.' >&2; exit 1");
    open();
    print_on_server("SERVER");
    EXPECT_EQ(told(), QStringLiteral("The report was not printed.\n\nlp failed with status 1: lp: "
                                     "The printer or class does not exist."));
}

TEST_F(ViewerDestinationPrint, aSpoolerThatIsNotThereIsTold) {
    const testsupport::EnvironmentGuard empty("PATH", path("nothing"));
    open();
    print_on_server("SERVER");
    EXPECT_TRUE(told().endsWith(QStringLiteral("lp is not installed; the Debian package "
                                               "cups-client has it")));
}

TEST_F(ViewerDestinationPrint, withoutLpTheFileGoesToLpr) {
    ASSERT_TRUE(
        QFile::rename(QFile::decodeName(path("bin/lp")), QFile::decodeName(path("bin/lpr"))));
    ASSERT_TRUE(QFile::link(QStringLiteral("/bin/cat"), QFile::decodeName(path("bin/cat"))));
    {
        const testsupport::EnvironmentGuard alone("PATH", path("bin"));
        open();
        print_on_server("SERVER");
    }
    EXPECT_TRUE(lp_arguments().startsWith("-P server queue /"));
    EXPECT_EQ(printed_pages(), "123");
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestinationPrint, aPrintCanBeCanceledWhileTheSpoolerWorks) {
    // A job that waits for its end hangs.
    stub_lp("exec sleep 3600");
    open();
    boxes_.cancel_jobs([this] { return files().contains(QStringLiteral("lp.arguments")); });
    print_on_server("SERVER");
    EXPECT_EQ(boxes_.progress.size(), 1);
    EXPECT_EQ(message(), QStringLiteral("Cancelled"));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestinationPrint, aLongPrintCanBeCanceled) {
    open();
    boxes_.cancel_jobs();
    print_locally();
    print_on_server("SERVER");
    EXPECT_EQ(boxes_.progress, QStringList(2, QStringLiteral("1 of 3")));
    EXPECT_EQ(message(), QStringLiteral("Cancelled"));
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_FALSE(lp_arguments().contains("server queue"));
}

TEST_F(ViewerDestinationPrint, theBoxTurnsPageFormattingOffForThisJob) {
    open();
    print_on_server("SERVER");
    const QByteArray filled = read("lp.ps");
    choose([](PrintDestDlg& dialog) {
        click(dialog.opToPrinter);
        EXPECT_FALSE(dialog.chkNoPageFmt->isChecked());
        click(dialog.chkNoPageFmt);
        click(dialog.btnOK);
    });
    const QByteArray own_size = read("lp.ps");
    EXPECT_NE(own_size.mid(own_size.indexOf("%%Page: ")), filled.mid(filled.indexOf("%%Page: ")));
    EXPECT_TRUE(menu_settings().contains("NOPAGEMAP=yes\n"));
    EXPECT_TRUE(menu_settings().contains("NO_PAGE_FMT=yes\n"));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestinationPrint, whatIsPrintedDoesNotNeedSettingsThatCanBeStored) {
    // Read-only in all but name: the file is a directory.
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("settings/dlwmenu.ini")));
    open();
    print_on_server("SERVER", 2);
    EXPECT_EQ(printed_pages(), "123123");
    EXPECT_EQ(message(), QStringLiteral("The report is printed. The choice cannot be stored "
                                        "in dlwmenu.ini"));
    choose([](PrintDestDlg& dialog) {
        EXPECT_EQ(dialog.txtPrintID->text(), QStringLiteral("SERVER"));
        EXPECT_EQ(dialog.spNCopies->value(), 2);
        dialog.reject();
    });
    EXPECT_EQ(boxes_.texts, QStringList());
}
