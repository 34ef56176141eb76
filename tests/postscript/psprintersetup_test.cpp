#include "tests/support/dialogs.h"
#include "tests/support/tools.h"

#include <printman/toolkit/psprinter.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

using testsupport::DialogAnswers;

namespace {

/// The printer's dialog on a machine without any printer: files alone can be chosen.
class PsPrinterSetup : public testing::Test {
protected:
    QString path(const char* name) const { return scratch_.filePath(QString::fromLatin1(name)); }

    template <class Widget>
    static Widget& part(QDialog& dialog, const char* name) {
        auto* found = dialog.findChild<Widget*>(QString::fromLatin1(name));
        if (!found)
            throw std::runtime_error(std::string("the dialog has no ") + name);
        return *found;
    }

    static void name_file(QDialog& dialog, const QString& name) {
        part<QLineEdit>(dialog, "filename").setText(name);
    }

    /// Chooses a file in the dialog and clicks OK.
    bool choose(const QString& name) {
        answers_.then([name](QDialog& dialog) {
            name_file(dialog, name);
            DialogAnswers::ok(dialog);
        });
        return printer_.setup(&parent_);
    }

    const testsupport::EnvironmentGuard no_server_{"CUPS_SERVER", "/nowhere/cups.sock"};
    QTemporaryDir scratch_;
    QWidget parent_;
    PsPrinter printer_;
    DialogAnswers answers_;
};

} // namespace

TEST_F(PsPrinterSetup, cancelChangesNothing) {
    printer_.setPrinterName(QStringLiteral("queue"));
    printer_.setOutputFileName(path("a.ps"));
    printer_.setCopyCount(3);
    const QPageLayout layout = printer_.pageLayout();
    answers_.then([this](QDialog& dialog) {
        name_file(dialog, path("b.pdf"));
        part<QSpinBox>(dialog, "copies").setValue(7);
        DialogAnswers::cancel(dialog);
    });
    EXPECT_FALSE(printer_.setup(&parent_));
    EXPECT_EQ(printer_.printerName(), QStringLiteral("queue"));
    EXPECT_EQ(printer_.outputFileName(), path("a.ps"));
    EXPECT_EQ(printer_.copyCount(), 3);
    EXPECT_EQ(printer_.pageLayout(), layout);
    EXPECT_FALSE(printer_.isPdfChosen());
}

TEST_F(PsPrinterSetup, startsWithThePrintersSettings) {
    printer_.setOutputFileName(path("a.ps"));
    printer_.setCopyCount(3);
    printer_.setCollateCopies(false);
    printer_.setColorMode(QPrinter::GrayScale);
    printer_.setPrintRange(QPrinter::PageRange);
    printer_.setFromTo(2, 5);
    answers_.then([this](QDialog& dialog) {
        EXPECT_EQ(part<QLineEdit>(dialog, "filename").text(), path("a.ps"));
        EXPECT_EQ(part<QSpinBox>(dialog, "copies").value(), 3);
        EXPECT_FALSE(part<QCheckBox>(dialog, "collate").isChecked());
        EXPECT_TRUE(part<QRadioButton>(dialog, "grayscale").isChecked());
        EXPECT_TRUE(part<QRadioButton>(dialog, "printRange").isChecked());
        EXPECT_EQ(part<QSpinBox>(dialog, "from").value(), 2);
        EXPECT_EQ(part<QSpinBox>(dialog, "to").value(), 5);
        DialogAnswers::ok(dialog);
    });
    EXPECT_TRUE(printer_.setup(&parent_));
    EXPECT_EQ(printer_.outputFileName(), path("a.ps"));
    EXPECT_EQ(printer_.copyCount(), 3);
    EXPECT_FALSE(printer_.collateCopies());
    EXPECT_EQ(printer_.colorMode(), QPrinter::GrayScale);
    EXPECT_EQ(printer_.printRange(), QPrinter::PageRange);
    EXPECT_EQ(printer_.fromPage(), 2);
    EXPECT_EQ(printer_.toPage(), 5);
}

TEST_F(PsPrinterSetup, whatIsChosenIsCopiedBack) {
    printer_.setPrinterName(QStringLiteral("queue"));
    answers_.then([this](QDialog& dialog) {
        name_file(dialog, path("b.pdf"));
        part<QSpinBox>(dialog, "copies").setValue(7);
        part<QCheckBox>(dialog, "collate").setChecked(false);
        part<QRadioButton>(dialog, "grayscale").setChecked(true);
        part<QRadioButton>(dialog, "printRange").setChecked(true);
        part<QSpinBox>(dialog, "from").setValue(4);
        part<QSpinBox>(dialog, "to").setValue(6);
        DialogAnswers::ok(dialog);
    });
    EXPECT_TRUE(printer_.setup(&parent_));
    EXPECT_EQ(printer_.outputFileName(), path("b.pdf"));
    EXPECT_EQ(printer_.copyCount(), 7);
    EXPECT_FALSE(printer_.collateCopies());
    EXPECT_EQ(printer_.colorMode(), QPrinter::GrayScale);
    EXPECT_EQ(printer_.printRange(), QPrinter::PageRange);
    EXPECT_EQ(printer_.fromPage(), 4);
    EXPECT_EQ(printer_.toPage(), 6);
    // A file needs no printer: the one that was named stays for the next job.
    EXPECT_EQ(printer_.printerName(), QStringLiteral("queue"));
}

TEST_F(PsPrinterSetup, thePageStaysWhenNobodyChangesIt) {
    printer_.setPageSize(QPageSize(QPageSize::Letter));
    printer_.setPageOrientation(QPageLayout::Landscape);
    const int width = printer_.width();
    const int height = printer_.height();
    EXPECT_TRUE(choose(path("a.pdf")));
    EXPECT_EQ(printer_.pageLayout().pageSize().id(), QPageSize::Letter);
    EXPECT_EQ(printer_.pageLayout().orientation(), QPageLayout::Landscape);
    EXPECT_EQ(printer_.width(), width);
    EXPECT_EQ(printer_.height(), height);
    // The usual margins were not made the user's: they still turn with the sheet.
    printer_.setPageOrientation(QPageLayout::Portrait);
    EXPECT_EQ(printer_.width(), 5100 - 2 * 300);
}

TEST_F(PsPrinterSetup, pageSizeAndMarginsAreChosenInTheProperties) {
    answers_
        .then([this](QDialog& dialog) {
            name_file(dialog, path("a.pdf"));
            part<QPushButton>(dialog, "properties").click();
            DialogAnswers::ok(dialog);
        })
        .then([](QDialog& properties) {
            auto& sizes = part<QComboBox>(properties, "pageSizeCombo");
            sizes.setCurrentIndex(sizes.findText(QStringLiteral("A5"), Qt::MatchStartsWith));
            part<QRadioButton>(properties, "landscape").click();
            part<QDoubleSpinBox>(properties, "leftMargin").setValue(40);
            DialogAnswers::ok(properties);
        });
    EXPECT_TRUE(printer_.setup(&parent_));
    EXPECT_EQ(printer_.pageLayout().pageSize().id(), QPageSize::A5);
    EXPECT_EQ(printer_.pageLayout().orientation(), QPageLayout::Landscape);
    EXPECT_GT(printer_.pageLayout().margins(QPageLayout::Point).left(), 39);
}

TEST_F(PsPrinterSetup, aFileIsAPdfAsTheDialogSaysUnlessItsNameSaysPostScript) {
    for (const char* name : {"a.pdf", "a.PDF", "a", "a.ps.old", "a.out"}) {
        EXPECT_TRUE(choose(path(name)));
        EXPECT_TRUE(printer_.isPdfChosen()) << name;
    }
    for (const char* name : {"a.ps", "a.PS"}) {
        EXPECT_TRUE(choose(path(name)));
        EXPECT_FALSE(printer_.isPdfChosen()) << name;
    }
}

TEST_F(PsPrinterSetup, anotherFileNameEndsThePdf) {
    EXPECT_TRUE(choose(path("a.pdf")));
    printer_.setOutputFileName(path("a.pdf"));
    EXPECT_FALSE(printer_.isPdfChosen());
}

TEST_F(PsPrinterSetup, proposesAFileOfTheDocumentsName) {
    printer_.setDocName(QStringLiteral("/home/me/Sales v1.2"));
    answers_.then([](QDialog& dialog) {
        EXPECT_TRUE(part<QLineEdit>(dialog, "filename").text().endsWith(u"/Sales v1.2.pdf"))
            << part<QLineEdit>(dialog, "filename").text().toStdString();
        DialogAnswers::cancel(dialog);
    });
    EXPECT_FALSE(printer_.setup(&parent_));
    EXPECT_EQ(printer_.docName(), QStringLiteral("/home/me/Sales v1.2"));
}

TEST_F(PsPrinterSetup, anExistingFileIsAskedFor) {
    testsupport::write_file(path("a.pdf"), "earlier");
    const auto press = [](QMessageBox::StandardButton button) {
        return
            [button](QDialog& box) { qobject_cast<QMessageBox*>(&box)->button(button)->click(); };
    };
    const auto ok = [this](QDialog& dialog) {
        name_file(dialog, path("a.pdf"));
        DialogAnswers::ok(dialog);
        if (dialog.isVisible())
            DialogAnswers::cancel(dialog);
    };
    answers_.then(ok).then(press(QMessageBox::No));
    EXPECT_FALSE(printer_.setup(&parent_));
    answers_.then(ok).then(press(QMessageBox::Yes));
    EXPECT_TRUE(printer_.setup(&parent_));
    EXPECT_EQ(testsupport::read_file(path("a.pdf")), "earlier");
}

TEST_F(PsPrinterSetup, endsWithTheWindowThatIsClosedMeanwhile) {
    auto window = std::make_unique<QWidget>();
    window->show();
    printer_.setOutputFileName(path("a.ps"));
    answers_.then([&window](QDialog& /*dialog*/) { window.reset(); });
    EXPECT_FALSE(printer_.setup(window.get()));
    EXPECT_EQ(printer_.outputFileName(), path("a.ps"));
}

TEST_F(PsPrinterSetup, thePrinterMayGoMeanwhile) {
    auto printer = std::make_unique<PsPrinter>();
    answers_.then([&](QDialog& dialog) {
        printer.reset();
        name_file(dialog, path("a.pdf"));
        DialogAnswers::ok(dialog);
    });
    PsPrinter& gone = *printer;
    EXPECT_FALSE(gone.setup(&parent_));
}

TEST_F(PsPrinterSetup, worksWithoutAParent) {
    answers_.then(DialogAnswers::cancel);
    EXPECT_FALSE(printer_.setup(nullptr));
}
