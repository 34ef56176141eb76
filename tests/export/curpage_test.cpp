#include "tests/support/dialogs.h"
#include "tests/support/reportonscreen.h"

#include <QDir>
#include <QFontDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPushButton>

using testsupport::DialogAnswers;
using testsupport::read_file;

namespace {

const QByteArray report = "#!?PAGETOP 40,4\n"
                          "     #!?R6,10,10;ABC            #!?C21,10,10;mid         end\n"
                          "\n"
                          "plain %1 text\n"
                          "#!?PAGEEND\n";

/// The loaded page on its way out.
class CurrentPage : public ReportOnScreen {
protected:
    QByteArray path(const char* name) const {
        return QFile::encodeName(scratch_.filePath(QString::fromLatin1(name)));
    }
    QByteArray content(const char* name) const {
        return read_file(scratch_.filePath(QString::fromLatin1(name)));
    }

    const testsupport::EnvironmentGuard no_server_{"CUPS_SERVER", "/nowhere/cups.sock"};
    DialogAnswers answers_;
};

} // namespace

TEST_F(CurrentPage, isSavedWithItsFieldsInTheirColumns) {
    show("#!?PAGETOP 40,3\n#!?PAGEEND\n");
    manager_.add_stringitem(0, 2, 0, 10, 1, "ABC", 3);
    manager_.add_stringitem(0, 20, 0, 10, 1, "ABC", 4);
    manager_.add_stringitem(0, 30, 0, 5, 1, "next", 2);
    manager_.add_stringitem(0, 31, 0, 2, 1, "longer", 2);
    manager_.add_stringitem(2, 1, 2, 4, 1, "\xe9", 2);
    manager_.save_cur_page(nullptr, path("out").constData());
    EXPECT_EQ(content("out"), "         ABC           ABC    next longer\n\n \xe9   \n");
    EXPECT_TRUE(manager_.last_job_ok());
}

TEST_F(CurrentPage, withoutANameNothingIsSaved) {
    show(report);
    manager_.save_cur_page(&window_, nullptr);
    manager_.save_cur_page(&window_, "");
    EXPECT_EQ(QDir(scratch_.path()).entryList(QDir::Files), QStringList{QStringLiteral("r.rpt")});
}

TEST_F(CurrentPage, aFileThatCannotBeOpenedIsShown) {
    show(report);
    answers_.then([this](QDialog& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), QStringLiteral("File Open Error"));
        EXPECT_EQ(box->text(),
                  QStringLiteral("Can not open file: ") + QFile::decodeName(path("no/such")));
        ASSERT_EQ(box->buttons().size(), 1);
        EXPECT_EQ(box->buttons().value(0)->text(), QStringLiteral("Ok"));
        box->buttons().value(0)->click();
    });
    manager_.save_cur_page(&window_, path("no/such").constData());
    EXPECT_FALSE(manager_.last_job_ok());
}

TEST_F(CurrentPage, aFailureIsShownWithoutAParentToo) {
    show(report);
    answers_.then([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("File Open Error"));
        EXPECT_EQ(dialog.parentWidget(), nullptr);
        dialog.reject();
    });
    manager_.save_cur_page(nullptr, path("no/such").constData());
    EXPECT_FALSE(manager_.last_job_ok());
}

TEST_F(CurrentPage, aNameIsShownAsItIs) {
    show(report);
    answers_.then([this](QDialog& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_TRUE(box->text().endsWith(u"<b>no</b>/such"));
        dialog.reject();
    });
    manager_.save_cur_page(&window_, path("<b>no</b>/such").constData());
}

TEST_F(CurrentPage, everythingMayBeClosedWhileAFailureIsShown) {
    for (const bool whole_report : {false, true}) {
        auto window = std::make_unique<QWidget>();
        window->show();
        auto manager = std::make_unique<CPrintMan>();
        testsupport::write_file(file(), report);
        ASSERT_EQ(manager->init_printman(file().toLocal8Bit().constData()), 0);
        answers_.then([&](QDialog& /*box*/) {
            manager.reset();
            window.reset();
        });
        CPrintMan& gone = *manager;
        if (whole_report)
            EXPECT_EQ(gone.save_rpt_file(window.get(), path("no/such").constData()), 0);
        else
            gone.save_cur_page(window.get(), path("no/such").constData());
        EXPECT_EQ(manager, nullptr);
    }
}

TEST_F(CurrentPage, aFullDiskIsShownOnce) {
    show(report);
    answers_.then([](QDialog& dialog) { dialog.reject(); });
    manager_.save_cur_page(&window_, "/dev/full");
    EXPECT_FALSE(manager_.last_job_ok());
    EXPECT_EQ(manager_.last_job_error(), QStringLiteral("No space left on device"));
}

TEST_F(CurrentPage, isPrintedAndTheSelectionGoesOn) {
    show(report);
    const QImage before = image();
    const QRect drawn = manager_.page_row(2).value(0).drawn;
    answers_
        .then([this](QDialog& dialog) {
            ASSERT_NE(qobject_cast<QPrintDialog*>(&dialog), nullptr);
            dialog.findChild<QLineEdit*>(QStringLiteral("filename"))
                ->setText(QFile::decodeName(path("out.pdf")));
            DialogAnswers::ok(dialog);
        })
        .then([](QDialog& dialog) {
            ASSERT_NE(qobject_cast<QFontDialog*>(&dialog), nullptr);
            DialogAnswers::ok(dialog);
        });
    manager_.print_cur_page(&window_);
    EXPECT_TRUE(manager_.last_job_ok()) << manager_.last_job_error().toStdString();
    const QString words = testsupport::pdf_words(QFile::decodeName(path("out.pdf"))).join(u' ');
    EXPECT_EQ(words, QStringLiteral("ABC mid end plain %1 text"));
    EXPECT_EQ(image(), before);
    EXPECT_EQ(manager_.page_row(2).value(0).drawn, drawn);

    manager_.mouse_press({22, 22});
    manager_.mouse_release({600, 200});
    EXPECT_EQ(manager_.hilights().size(), 4U);
    manager_.clear_hilights();
    EXPECT_EQ(image(), before);
}

TEST_F(CurrentPage, printingNeedsAParentAPageAndAPrinter) {
    manager_.print_cur_page(&window_);
    show(report);
    manager_.print_cur_page(nullptr);
    EXPECT_TRUE(manager_.last_job_ok());
}

TEST_F(CurrentPage, cancelledPrintingIsNoFailure) {
    show(report);
    answers_.then(DialogAnswers::cancel);
    manager_.print_cur_page(&window_);
    EXPECT_TRUE(manager_.last_job_ok());
    EXPECT_FALSE(testhost::calls().contains(QStringLiteral("GetEnv(NOPAGEMAP, dlwmenu.ini, env)")));
}

TEST_F(CurrentPage, whatGoesWhileItIsPrintedEndsThePrint) {
    const auto choose_file = [this](QDialog& dialog) {
        dialog.findChild<QLineEdit*>(QStringLiteral("filename"))
            ->setText(QFile::decodeName(path("out.ps")));
        DialogAnswers::ok(dialog);
    };
    const QByteArray report_file = file().toLocal8Bit();
    testsupport::write_file(file(), report);
    for (const bool at_font : {false, true}) {
        for (const bool manager_goes : {false, true}) {
            auto manager = std::make_unique<CPrintMan>();
            ASSERT_EQ(manager->init_printman(report_file.constData()), 0);
            ASSERT_EQ(manager->get_rpt_page(1), 1);
            const auto close_it = [&](QDialog& dialog) {
                if (manager_goes)
                    manager.reset();
                else
                    manager->init_printman(report_file.constData());
                at_font ? DialogAnswers::ok(dialog) : choose_file(dialog);
            };
            if (at_font)
                answers_.then(choose_file);
            answers_.then(close_it);
            CPrintMan& printing = *manager;
            printing.print_cur_page(&window_);
            EXPECT_TRUE(content("out.ps").isEmpty());
            EXPECT_EQ(manager == nullptr, manager_goes);
            EXPECT_TRUE(!manager || manager->last_job_ok());
        }
    }
}

TEST_F(CurrentPage, aPrintThatFailsIsTold) {
    show(report);
    QDir(scratch_.path()).mkdir(QStringLiteral("gone"));
    answers_
        .then([this](QDialog& dialog) {
            dialog.findChild<QLineEdit*>(QStringLiteral("filename"))
                ->setText(QFile::decodeName(path("gone/a.ps")));
            DialogAnswers::ok(dialog);
        })
        .then([this](QDialog& dialog) {
            QDir(scratch_.path()).rmdir(QStringLiteral("gone"));
            DialogAnswers::ok(dialog);
        });
    manager_.print_cur_page(&window_);
    EXPECT_EQ(manager_.last_job_error(),
              QFile::decodeName(path("gone/a.ps")) + QStringLiteral(": No such file or directory"));
}
