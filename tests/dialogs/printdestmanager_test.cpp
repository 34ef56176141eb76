#include "tests/dialogs/destfixture.h"
#include "tests/support/dialogs.h"

#include <printman/render/screen.h>

#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryFile>

using testsupport::DialogAnswers;
using testsupport::text;

namespace {

class PrintDestManager : public PrintDestFixture {
protected:
    /// A user who looks at the dialog and does @p what in it.
    static DialogAnswers::Answer in_dialog(std::function<void(PrintDestDlg&)> what) {
        return
            [what = std::move(what)](QDialog& shown) { what(dynamic_cast<PrintDestDlg&>(shown)); };
    }

    static void ok(PrintDestDlg& dialog) { click(dialog.btnOK); }

    std::string kept() { return bytes_of(*manager_.get_print_dest()); }

    /// The font that the manager shows pages in.
    QFont font_on_screen() {
        const QString report = scratch_.filePath(text("r.rpt"));
        testsupport::write_file(report, "#!?PAGETOP 60,20\nx\n#!?PAGEEND\n");
        QWidget window;
        const QSize size(400, 300);
        EXPECT_EQ(manager_.init_printman(report.toLocal8Bit().constData()), 0);
        EXPECT_EQ(manager_.init_rpt_view(&window, &size, nullptr), 1);
        return window.findChild<CScreen*>()->font();
    }
};

} // namespace

TEST_F(PrintDestManager, okWritesTheManagersRecord) {
    const PrintDest before = record(1, true);
    manager_.set_print_dest(before);
    const DialogAnswers answers{in_dialog([&before](PrintDestDlg& dialog) {
        EXPECT_EQ(dialog.parentWidget(), nullptr);
        EXPECT_TRUE(dialog.isModal());
        EXPECT_EQ(bytes_of(dialog.dest), bytes_of(before));
        click(dialog.opToFile);
        enter(dialog.txtPathName, text("/tmp/after.pdf"));
        click(dialog.btnOK);
    })};
    EXPECT_EQ(manager_.show_print_dest(), 1);
    PrintDest expected = before;
    expected.dest = 3;
    set_text(expected.path, "/tmp/after.pdf");
    EXPECT_EQ(kept(), bytes_of(expected));
}

TEST_F(PrintDestManager, cancelAndClosingLeaveTheManagersRecord) {
    manager_.set_print_dest(record(1, true));
    const DialogAnswers answers{in_dialog([](PrintDestDlg& dialog) {
                                    click(dialog.opToPrinter);
                                    click(dialog.opLocalPrint);
                                    click(dialog.btnCancel);
                                }),
                                in_dialog([](PrintDestDlg& dialog) {
                                    click(dialog.opToPrinter);
                                    click(dialog.opLocalPrint);
                                    dialog.close();
                                })};
    EXPECT_EQ(manager_.show_print_dest(), 0);
    EXPECT_EQ(manager_.show_print_dest(), 0);
    EXPECT_EQ(kept(), bytes_of(record(1, true)));
}

TEST_F(PrintDestManager, offersTheStationsPrinter) {
    const DialogAnswers answers{in_dialog([](PrintDestDlg& dialog) {
        EXPECT_EQ(dialog.local_printer_id, text("LOCAL1"));
        EXPECT_EQ(dialog.txtPrintID->text(), text("LOCAL1"));
        click(dialog.opToPrinter);
        click(dialog.btnOK);
    })};
    EXPECT_EQ(manager_.show_print_dest(), 1);
    EXPECT_STREQ(manager_.get_print_dest()->prt_id, "LOCAL1");
    EXPECT_EQ(manager_.get_print_dest()->page_length, 1);
}

TEST_F(PrintDestManager, aStationWithoutAPrinterHasNone) {
    set_text(manager_.prt_key, "UNKNOWN");
    const DialogAnswers answers{in_dialog([](PrintDestDlg& dialog) {
        EXPECT_TRUE(dialog.local_printer_id.isEmpty());
        click(dialog.opToPrinter);
        click(dialog.btnOK);
    })};
    EXPECT_EQ(manager_.show_print_dest(), 1);
    EXPECT_STREQ(manager_.get_print_dest()->prt_id, "");
}

TEST_F(PrintDestManager, theOtherOneOnlyAnswersZero) {
    manager_.set_print_dest(record(1, true));
    EXPECT_EQ(manager_.show_print_dest(record(2, false)), 0);
    EXPECT_EQ(kept(), bytes_of(record(1, true)));
}

TEST_F(PrintDestManager, toTheScreenTheDialogsFontBecomesThePages) {
    testhost::set("SCR_FACENAME", "Liberation Serif");
    testhost::set("SCR_POINTSIZE", "14");
    const DialogAnswers answers{in_dialog([](PrintDestDlg& dialog) { click(dialog.btnOK); })};
    EXPECT_EQ(manager_.show_print_dest(), 1);
    EXPECT_EQ(font_on_screen().family(), text("Liberation Serif"));
    EXPECT_EQ(font_on_screen().pointSize(), 14);
}

TEST_F(PrintDestManager, aCanceledFontDialogMakesThePagesFontTheDefaultOne) {
    testhost::set("SCR_FACENAME", "Liberation Serif");
    testhost::set("SCR_POINTSIZE", "14");
    manager_.load_screenfont();
    DialogAnswers answers;
    answers.then(in_dialog([&answers](PrintDestDlg& dialog) {
        answers.then(DialogAnswers::cancel);
        click(dialog.btnFontBrw);
        click(dialog.btnOK);
    }));
    EXPECT_EQ(manager_.show_print_dest(), 1);
    EXPECT_EQ(font_on_screen().family(), QFont().family());
    EXPECT_EQ(font_on_screen().pointSize(), QFont().pointSize());
}

TEST_F(PrintDestManager, otherDestinationsAndCancelLeaveThePagesFont) {
    testhost::set("SCR_FACENAME", "Liberation Serif");
    testhost::set("SCR_POINTSIZE", "14");
    manager_.load_screenfont();
    testhost::set("SCR_POINTSIZE", "20");
    const DialogAnswers answers{in_dialog([](PrintDestDlg& dialog) { click(dialog.btnCancel); }),
                                in_dialog([](PrintDestDlg& dialog) {
                                    click(dialog.opToFile);
                                    click(dialog.btnOK);
                                }),
                                in_dialog([](PrintDestDlg& dialog) {
                                    click(dialog.opToPrinter);
                                    click(dialog.btnOK);
                                })};
    for (const int result : {0, 1, 1})
        EXPECT_EQ(manager_.show_print_dest(), result);
    EXPECT_EQ(font_on_screen().pointSize(), 14);
}

TEST_F(PrintDestManager, asksTheHostForNothingTwice) {
    testhost::set("SCR_FACENAME", "Courier");
    const DialogAnswers answers{in_dialog([](PrintDestDlg& dialog) {
        QStringList calls = testhost::calls();
        EXPECT_EQ(calls.size(), 7);
        EXPECT_EQ(calls.removeDuplicates(), 0);
        EXPECT_EQ(calls.filter(text("PRTINI")).size(), 1);
        EXPECT_EQ(calls.filter(text("GetPrivateProfileString")).size(), 1);
        click(dialog.btnCancel);
    })};
    EXPECT_EQ(manager_.show_print_dest(), 0);
}

TEST_F(PrintDestManager, mayGoWhileTheDialogIsOpen) {
    auto manager = std::make_unique<CPrintMan>();
    const DialogAnswers answers{in_dialog([&manager](PrintDestDlg& dialog) {
        manager.reset();
        EXPECT_EQ(dialog.printman, nullptr);
        EXPECT_FALSE(dialog.isVisible());
    })};
    CPrintMan* open_one = manager.get();
    EXPECT_EQ(open_one->show_print_dest(), 0);
}

TEST_F(PrintDestManager, mayGoWhileADialogOfTheDialogsIsOpen) {
    for (const auto button : {&printdestDlgBase::btnFileBrw, &printdestDlgBase::btnFontBrw,
                              &printdestDlgBase::btnPIDBrw}) {
        auto manager = std::make_unique<CPrintMan>();
        DialogAnswers answers;
        answers.then(in_dialog([&answers, &manager, button](PrintDestDlg& dialog) {
            dialog.enable_file(true);
            dialog.enable_print(true);
            answers.then([&manager](QDialog&) { manager.reset(); });
            click(dialog.*button);
            EXPECT_FALSE(dialog.isVisible());
        }));
        CPrintMan* open_one = manager.get();
        EXPECT_EQ(open_one->show_print_dest(), 0);
    }
}
