#include "tests/output/printing/printing.h"
#include "tests/support/dialogs.h"

#include <printman/output/pageprint.h>

#include <QFontDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>

using testsupport::DialogAnswers;
using testsupport::pdf_words;
using testsupport::text;
using testsupport::write_file;

namespace {

/// Jobs that ask the user; Ghostscript is the real one.
class AskedJobs : public Printing {
protected:
    /// Accepts the print dialog with a file and a number of copies.
    void choose_file(const QString& name, int copies = 1) {
        answers_.then([this, name, copies](QDialog& dialog) {
            auto* file = dialog.findChild<QLineEdit*>(text("filename"));
            ASSERT_NE(file, nullptr);
            proposed_ = file->text();
            file->setText(name);
            dialog.findChild<QSpinBox*>(text("copies"))->setValue(copies);
            DialogAnswers::ok(dialog);
        });
    }

    /// Agrees that the file is replaced.
    void replace_file() {
        answers_.then([](QDialog& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(box, nullptr);
            box->button(QMessageBox::Yes)->click();
        });
    }

    void choose_font() {
        answers_.then([](QDialog& dialog) {
            auto* fonts = qobject_cast<QFontDialog*>(&dialog);
            ASSERT_NE(fonts, nullptr);
            EXPECT_EQ(fonts->currentFont().pointSize(), 12);
            EXPECT_FALSE(fonts->currentFont().italic());
            EXPECT_EQ(fonts->currentFont().family(),
                      printman::first_dialog_font(text("Courier New")).family());
            EXPECT_EQ(QFontInfo(fonts->currentFont()).family(),
                      QFontInfo(QFont(text("Courier New"))).family());
            fonts->setCurrentFont(QFont(text("Liberation Mono"), 10));
            DialogAnswers::ok(dialog);
        });
    }

    /// Accepts a message box and checks what it says.
    void read_box(const QString& title, const QString& message) {
        answers_.then([title, message](QDialog& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->windowTitle(), title);
            EXPECT_EQ(box->text(), message);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            box->accept();
        });
    }

    int print(const char* id, int mode) {
        return manager_.print_rpt_page(&window_, id, 1, 1, mode, 0);
    }

    static QStringList page_words(const QString& pdf) {
        return pdf_words(pdf).filter(text("page"));
    }

    const testsupport::EnvironmentGuard no_server_{"CUPS_SERVER", "/nowhere/cups.sock"};
    QWidget window_;
    QString proposed_;
    DialogAnswers answers_;
};

} // namespace

TEST_F(AskedJobs, withoutAPrinterIdTheUserChoosesPrinterCopiesAndFont) {
    report(2);
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        manager_.pdf_mode = true;
        choose_file(path(text("a.ps")), 2);
        if (!none)
            replace_file();
        choose_font();
        ASSERT_EQ(print(none, 0), 1) << error().toStdString();
        EXPECT_FALSE(manager_.pdf_mode);
        EXPECT_FALSE(read(text("a.ps")).contains("NumCopies"));
        EXPECT_EQ(page_words(testsupport::make_pdf(path(text("a.ps")))),
                  (QStringList{text("page1"), text("page2"), text("page1"), text("page2")}));
    }
}

TEST_F(AskedJobs, inAnotherModeTheUserIsAskedToo) {
    report(1);
    choose_file(path(text("a.ps")));
    choose_font();
    EXPECT_EQ(print("laser", 3), 1) << error().toStdString();
    EXPECT_TRUE(QFile::exists(path(text("a.ps"))));
}

TEST_F(AskedJobs, cancellingEitherDialogPrintsNothingAndIsNoError) {
    report(1);
    answers_.then(DialogAnswers::cancel);
    EXPECT_EQ(print(nullptr, 0), 0);
    choose_file(path(text("a.ps")));
    answers_.then(DialogAnswers::cancel);
    EXPECT_EQ(print(nullptr, 0), 0);
    EXPECT_TRUE(manager_.last_job_ok());
    EXPECT_EQ(files(), QStringList());
}

TEST_F(AskedJobs, aFileThatIsToBecomeAPdfDoesAndAStoppedJobLeavesTheEarlierOne) {
    report(2);
    choose_file(path(text("a.pdf")), 2);
    choose_font();
    ASSERT_EQ(print(nullptr, 0), 1) << error().toStdString();
    EXPECT_EQ(page_words(path(text("a.pdf"))).size(), 4);
    const QByteArray whole = read(text("a.pdf"));
    manager_.set_progress([](int done, int) { return done < 2; });
    choose_file(path(text("a.pdf")));
    replace_file();
    choose_font();
    EXPECT_EQ(print(nullptr, 0), 0);
    EXPECT_EQ(error(), text("canceled"));
    EXPECT_EQ(read(text("a.pdf")), whole);
    EXPECT_EQ(files(), QStringList{text("a.pdf")});
}

TEST_F(AskedJobs, theDialogDoesNotProposeTheFileOfAServerJob) {
    report(1);
    write_file(path(text("job.bin")),
               QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
    ASSERT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, path(text("server.ps")),
                                            path(text("job.bin")), {}, {}),
              1);
    choose_file(path(text("a.ps")));
    choose_font();
    EXPECT_EQ(print(nullptr, 0), 1) << error().toStdString();
    EXPECT_FALSE(proposed_.contains(text("server"))) << proposed_.toStdString();
}

TEST_F(AskedJobs, theDialogForAPageProposesNoFileOfAJobEither) {
    report(1);
    ASSERT_EQ(manager_.get_rpt_page(1), 1);
    write_file(path(text("job.bin")),
               QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
    ASSERT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, path(text("server.ps")),
                                            path(text("job.bin")), {}, {}),
              1);
    const auto look = [this](QDialog& dialog) {
        proposed_ = dialog.findChild<QLineEdit*>(text("filename"))->text();
        DialogAnswers::cancel(dialog);
    };
    answers_.then(look);
    manager_.print_cur_page(&window_);
    EXPECT_FALSE(proposed_.contains(text("server"))) << proposed_.toStdString();
    ASSERT_EQ(manager_.generate_watermark(), 1) << error().toStdString();
    answers_.then(look);
    manager_.print_cur_page(&window_);
    EXPECT_FALSE(proposed_.contains(text("watermark"))) << proposed_.toStdString();
}

TEST_F(AskedJobs, aFileGetsPagesAfterAPrinterOfPlainText) {
    report(2);
    manager_.text_once = true;
    write_file(path(text("job.bin")),
               QByteArray::fromStdString(setup_bytes({record("plain", "Generic")})));
    ASSERT_EQ(manager_.print_serverrpt_page("plain", 1, 1, 0, path(text("server.ps")),
                                            path(text("job.bin")), {}, {}),
              1);
    choose_file(path(text("a.ps")));
    choose_font();
    EXPECT_EQ(print(nullptr, 0), 1) << error().toStdString();
    EXPECT_TRUE(read(text("a.ps")).contains("%%Pages: 2\n"));
}

TEST_F(AskedJobs, aPdfIsSavedInTheChosenFontUnderItsNameInTmpdir) {
    report(2);
    write_file(path(text("korvopdf.pdf")), "earlier");
    choose_font();
    ASSERT_EQ(manager_.save_rpt_pdffile(&window_), 1) << error().toStdString();
    EXPECT_EQ(page_words(path(text("korvopdf.pdf"))), (QStringList{text("page1"), text("page2")}));
    EXPECT_EQ(files(), QStringList{text("korvopdf.pdf")});
    EXPECT_EQ(shared_scratch(), QStringList{text("korvo.ps")});
    // Automatic page formatting is off: ten points are ten points, not what fills the page.
    const QString boxes = QString::fromUtf8(
        testsupport::run(text("pdftotext"), {text("-bbox"), path(text("korvopdf.pdf")), text("-")})
            .out);
    const auto box =
        QRegularExpression(text("yMin=\"([\\d.]+)\" xMax=\"[\\d.]+\" yMax=\"([\\d.]+)\">page1"))
            .match(boxes);
    EXPECT_NEAR(box.captured(2).toDouble() - box.captured(1).toDouble(), 11, 2)
        << boxes.toStdString();
}

TEST_F(AskedJobs, aPdfThatCannotBeSavedLeavesTheEarlierOne) {
    report(1);
    write_file(path(text("korvopdf.pdf")), "earlier");
    stub_tools(Stubs::only_record);
    for (const char* end : {"exit 1\n", "kill -9 $$\n", "", "echo half >\"$2\"; exit 1\n"}) {
        stub("ps2pdf", end);
        choose_font();
        EXPECT_EQ(manager_.save_rpt_pdffile(&window_), 0);
        EXPECT_TRUE(error().startsWith(text("'ps2pdf /tmp/korvo.ps"))) << error().toStdString();
        EXPECT_EQ(read(text("korvopdf.pdf")), "earlier");
        EXPECT_EQ(files(), QStringList{text("korvopdf.pdf")});
    }
}

TEST_F(AskedJobs, cancellingTheFontMakesNoPdf) {
    report(1);
    answers_.then(DialogAnswers::cancel).then(DialogAnswers::cancel);
    EXPECT_EQ(manager_.save_rpt_pdffile(&window_), 0);
    EXPECT_EQ(manager_.print_rpt_pdffile(&window_), 0);
    EXPECT_TRUE(manager_.last_job_ok());
    EXPECT_EQ(files() + shared_scratch(), QStringList());
}

TEST_F(AskedJobs, withoutAReportPrinterThePdfIsInTheChosenFont) {
    report(2);
    manager_.report_printer_id = text("laser");
    choose_font();
    ASSERT_EQ(manager_.print_rpt_pdffile(&window_), 1) << error().toStdString();
    EXPECT_EQ(page_words(manager_.result_pdf_file).size(), 2);
}

TEST_F(AskedJobs, aReportPrinterThatIsNotFoundIsToldAndTheSetupFileConsumed) {
    report(1);
    manager_.report_printer_id = text("nobody");
    const QString standard = reports_.filePath(text("PRTSETUP.BIN"));
    const QString link = path(text("same.bin"));
    ASSERT_TRUE(QFile::link(standard, link));
    write_file(path(text("job.bin")), "");
    for (const QString& setup : {path(text("job.bin")), standard, link}) {
        manager_.report_setup_file = setup;
        read_box(text("Talvine Thinclient Message"), text("Can not find report printer 'nobody'"));
        choose_font();
        EXPECT_EQ(manager_.print_rpt_pdffile(&window_), 1) << error().toStdString();
        EXPECT_EQ(QFile::exists(setup), setup != path(text("job.bin")));
    }
}

TEST_F(AskedJobs, theNameOfASetupFileRemovesNoOtherFile) {
    report(1);
    write_file(path(text("victim")), "precious");
    const QString setup = path(text("victim")) + QChar(u'\0') + text("bin");
    EXPECT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, path(text("o.ps")), setup, {}, {}),
              0);
    manager_.report_printer_id = text("nobody");
    manager_.report_setup_file = setup;
    read_box(text("Talvine Thinclient Message"), text("Can not find report printer 'nobody'"));
    answers_.then(DialogAnswers::cancel);
    EXPECT_EQ(manager_.print_rpt_pdffile(&window_), 0);
    EXPECT_EQ(read(text("victim")), "precious");
}
