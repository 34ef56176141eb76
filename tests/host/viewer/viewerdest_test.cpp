#include "host/settings/settings.h"
#include "tests/host/viewer/viewerdestfixture.h"

#include <printman/dialogs/kscolordlg.h>
#include <printman/printman.h>
#include <printman/toolkit/legacyweight.h>

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QDir>
#include <QFontDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QSpinBox>
#include <QStatusBar>
#include <QTest>

namespace {

class ViewerDestination : public DestinationTest {
protected:
    QImage shown() const { return screen().grab().toImage(); }

    /// Chooses that font for the screen.
    void choose_font(const QFont& font) {
        choose(
            [](PrintDestDlg& dialog) {
                click(dialog.opToScreen);
                click(dialog.btnFontBrw);
                click(dialog.btnOK);
            },
            {[font](QDialog& dialog) {
                auto& fonts = dynamic_cast<QFontDialog&>(dialog);
                fonts.setCurrentFont(font);
                fonts.accept();
            }});
    }

    void choose_file(const QByteArray& name) {
        choose([name](PrintDestDlg& dialog) {
            click(dialog.opToFile);
            type(dialog.txtPathName, name);
            click(dialog.btnOK);
        });
    }
};

QFont mono(int points, int weight = 50, bool italic = false) {
    QFont font(QStringLiteral("DejaVu Sans Mono"), points);
    printman::set_legacy_weight(font, weight);
    font.setItalic(italic);
    return font;
}

} // namespace

TEST_F(ViewerDestination, nothingHappensWhenTheDialogIsCancelled) {
    open();
    action("next").trigger();
    const QImage before = shown();
    choose([](PrintDestDlg& dialog) {
        click(dialog.opToFile);
        click(dialog.btnCancel);
    });
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    EXPECT_EQ(menu_settings(), "");
    EXPECT_EQ(message(), QString());
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, theFirstDialogOffersTheScreenInTheFontThatIsShown) {
    write_settings("dlwprt.ini", "[printer]\nhere = LASER\n");
    open();
    choose([](PrintDestDlg& dialog) {
        EXPECT_TRUE(dialog.opToScreen->isChecked());
        EXPECT_TRUE(dialog.opLocalPrint->isChecked());
        EXPECT_EQ(dialog.txtPrintID->text(), QStringLiteral("LASER"));
        EXPECT_EQ(dialog.spNCopies->value(), 1);
        EXPECT_EQ(dialog.txtFont->text(), QStringLiteral("Courier New, Normal regular, size 10"));
        EXPECT_EQ(dialog.txtPathName->text(), QString());
        dialog.reject();
    });
}

TEST_F(ViewerDestination, theScreenWithTheSameFontChangesNothing) {
    open();
    action("next").trigger();
    action("zoom_in").trigger();
    const QImage before = shown();
    choose([](PrintDestDlg& dialog) { click(dialog.btnOK); });
    EXPECT_EQ(shown(), before);
    EXPECT_FALSE(menu_settings().contains("SCR_"));
    EXPECT_TRUE(menu_settings().contains("\nDEST=screen\n"));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, anotherScreenFontIsShownAtOnceAndStored) {
    open();
    action("next").trigger();
    const QImage before = shown();
    const QSize size = screen().size();
    choose_font(mono(14, 75, true));
    EXPECT_NE(shown(), before);
    EXPECT_GT(screen().width(), size.width());
    EXPECT_EQ(screen().font().family(), QStringLiteral("DejaVu Sans Mono"));
    EXPECT_EQ(screen().font().pointSize(), 14);
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    for (const char* line : {"[screenfont]\n", "SCR_FACENAME=DejaVu Sans Mono\n",
                             "SCR_POINTSIZE=14\n", "SCR_WEIGHT=75\n", "SCR_ITALIC=yes\n"})
        EXPECT_TRUE(menu_settings().contains(line)) << line;
    const QImage in_font = shown();
    window_.reset();
    open();
    action("next").trigger();
    EXPECT_EQ(shown(), in_font);
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, anotherScreenFontLeavesZoomAndSelection) {
    open();
    action("zoom_in").trigger();
    choose_font(mono(8));
    EXPECT_EQ(screen().font().pointSize(), 12);
    EXPECT_TRUE(menu_settings().contains("SCR_POINTSIZE=8\n"));
    action("fit").trigger();
    choose_font(mono(9));
    EXPECT_TRUE(action("fit").isChecked());
    EXPECT_TRUE(menu_settings().contains("SCR_POINTSIZE=9\n"));
    action("fit").trigger();
    EXPECT_EQ(screen().font().pointSize(), 13);
}

TEST_F(ViewerDestination, aFontThatIsTooLargeForThePageIsFitted) {
    write("wide.rpt", report(1, 1000, 200));
    open(path("wide.rpt"));
    choose_font(mono(60));
    EXPECT_TRUE(action("fit").isChecked());
    const QPixmap* image = window_->view()->manager().page_image();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->deviceIndependentSize().toSize(), screen().size());
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, aFileIsTextOrPdfByItsName) {
    open();
    choose_file(path("out.txt"));
    EXPECT_TRUE(read("out.txt").startsWith("page 1\n\nword 1\n"));
    EXPECT_EQ(read("out.txt").count('\n'), 90);
    EXPECT_EQ(message(), QStringLiteral("Saved as out.txt"));
    choose_file(path("out.PDF"));
    EXPECT_TRUE(testsupport::pdf_words(QFile::decodeName(path("out.PDF")))
                    .contains(QStringLiteral("page")));
    EXPECT_EQ(message(), QStringLiteral("Saved as out.PDF"));
    choose_file(path("pdf"));
    EXPECT_TRUE(read("pdf").startsWith("page 1\n"));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, anEarlierFileIsReplacedOnlyWhenTheUserSaysSo) {
    open();
    write("out.txt", "earlier");
    choose_file(path("out.txt"));
    const QString question = QStringLiteral("%1 already exists.\nDo you want to replace it?")
                                 .arg(QFile::decodeName(path("out.txt")));
    EXPECT_EQ(boxes_.texts, QStringList{question});
    EXPECT_EQ(read("out.txt"), "earlier");
    EXPECT_EQ(message(), QStringLiteral("Cancelled"));
    boxes_.say_yes = true;
    choose([](PrintDestDlg& dialog) {
        click(dialog.opToFile);
        click(dialog.btnOK);
    });
    EXPECT_EQ(boxes_.texts, (QStringList{question, question}));
    EXPECT_TRUE(read("out.txt").startsWith("page 1\n"));
}

TEST_F(ViewerDestination, aFileThatCannotBeWrittenIsTold) {
    open();
    choose_file("");
    choose_file(report_);
    choose_file(path("no/out.txt"));
    ASSERT_EQ(boxes_.texts.size(), 3);
    EXPECT_EQ(boxes_.texts.at(0), QStringLiteral("Nothing was written.\n\nNo file was named to "
                                                 "save the report as"));
    EXPECT_TRUE(boxes_.texts.at(1).endsWith(QStringLiteral(" is both input and output")));
    EXPECT_TRUE(boxes_.texts.at(2).endsWith(QStringLiteral(": No such file or directory")));
    EXPECT_EQ(read("three.rpt"), report(3));
}

TEST_F(ViewerDestination, aLongSaveCanBeCanceled) {
    open();
    boxes_.cancel_jobs();
    choose_file(path("out.txt"));
    EXPECT_EQ(boxes_.progress, QStringList{QStringLiteral("1 of 3")});
    EXPECT_EQ(message(), QStringLiteral("Cancelled"));
    EXPECT_FALSE(files().contains(QStringLiteral("out.txt")));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, theRecordIsRememberedByTheNextWindow) {
    open();
    choose([](PrintDestDlg& dialog) {
        click(dialog.opToPrinter);
        click(dialog.opServerPrint);
        type(dialog.txtPrintID, "NONE");
        dialog.spNCopies->setValue(7);
        click(dialog.chkCollate);
        click(dialog.chkPageLength);
        click(dialog.btnOK);
    });
    choose_file(path("out.txt"));
    window_.reset();
    host::host_settings() = host::Settings(path("settings"));
    open();
    choose([this](PrintDestDlg& dialog) {
        EXPECT_TRUE(dialog.opToFile->isChecked());
        EXPECT_EQ(dialog.txtPathName->text(), QFile::decodeName(path("out.txt")));
        EXPECT_TRUE(dialog.opServerPrint->isChecked());
        EXPECT_EQ(dialog.txtPrintID->text(), QStringLiteral("NONE"));
        EXPECT_EQ(dialog.spNCopies->value(), 7);
        EXPECT_FALSE(dialog.chkCollate->isChecked());
        EXPECT_TRUE(dialog.chkPageLength->isChecked());
        dialog.reject();
    });
}

TEST_F(ViewerDestination, hostileSettingsOpenAnOrdinaryDialog) {
    write_settings("dlwmenu.ini",
                   "[destination]\nDEST=?\nCOPIES=-1\nPATH=" + QByteArray(5000, '%') +
                       "\nPRT_ID=" + QByteArray(5000, 'p') +
                       "\n[screenfont]\nSCR_FACENAME=\xff%n\nSCR_POINTSIZE=-99999999999\n"
                       "SCR_WEIGHT=1e9\nSCR_ITALIC=\n");
    write_settings("dlwprt.ini", "[printer]\nhere=" + QByteArray(5000, 'x') + '\n');
    open();
    choose([](PrintDestDlg& dialog) {
        EXPECT_TRUE(dialog.opToScreen->isChecked());
        EXPECT_EQ(dialog.spNCopies->value(), 1);
        EXPECT_LE(dialog.txtPrintID->text().size(), 130);
        click(dialog.btnOK);
    });
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, settingsThatCannotBeStoredAreToldOnceAndCountUntilTheEnd) {
    lose_settings();
    open();
    choose_file(path("out.txt"));
    EXPECT_TRUE(read("out.txt").startsWith("page 1\n"));
    const QString told = QStringLiteral("The choice cannot be stored in dlwmenu.ini");
    EXPECT_EQ(message(), QStringLiteral("Saved as out.txt. ") + told);
    choose_font(mono(13));
    EXPECT_EQ(message().count(told), 1);
    window_->statusBar()->clearMessage();
    window_->open_or_report(report_);
    EXPECT_EQ(screen().font().pointSize(), 13);
    choose([this](PrintDestDlg& dialog) {
        EXPECT_TRUE(dialog.opToScreen->isChecked());
        EXPECT_EQ(dialog.txtPathName->text(), QFile::decodeName(path("out.txt")));
        click(dialog.opToPrinter);
        click(dialog.chkNoPageFmt);
        click(dialog.btnCancel);
    });
    EXPECT_EQ(message(), QString());
    EXPECT_TRUE(host::host_settings().no_page_map());
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, coloursAreShownAtOnceAlsoWhereTheyCannotBeStored) {
    const auto choose_text_colour = [this](QColor colour) {
        answers_
            .then_in<KSColorDlg>([](KSColorDlg& colours) {
                click(colours.btnTextColorBrw);
                click(colours.btnOK);
            })
            .then_in<QColorDialog>([colour](QColorDialog& chooser) {
                chooser.setCurrentColor(colour);
                chooser.accept();
            });
        action("colours").trigger();
    };
    open();
    const QImage before = shown();
    choose_text_colour(Qt::red);
    const QImage red = shown();
    EXPECT_NE(red, before);
    EXPECT_TRUE(menu_settings().contains("KRV_COLOR_DBG=255,0,0\n"));
    EXPECT_EQ(message(), QString());
    lose_settings();
    choose_text_colour(Qt::blue);
    EXPECT_NE(shown(), red);
    EXPECT_EQ(message(), QStringLiteral("The choice cannot be stored in dlwmenu.ini"));
    window_->statusBar()->clearMessage();
    choose_text_colour(Qt::green);
    EXPECT_EQ(message(), QString());
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerDestination, itNeedsAReport) {
    window_ = std::make_unique<host::ViewerWindow>(host::ViewerState(path("state")));
    EXPECT_FALSE(action("destination").isEnabled());
    open();
    EXPECT_TRUE(action("destination").isEnabled());
    EXPECT_EQ(action("destination").shortcut(), QKeySequence(Qt::CTRL | Qt::Key_D));
}

TEST_F(ViewerDestination, everyMenuHasItsLettersAndTheWindowItsKeysOnce) {
    open();
    ASSERT_GT(window_->menuBar()->actions().size(), 2);
    for (const QAction* menu : window_->menuBar()->actions()) {
        QSet<QString> letters;
        for (const QAction* entry : menu->menu()->actions()) {
            const qsizetype mark = entry->text().indexOf(u'&');
            if (entry->isSeparator())
                continue;
            const QString letter = mark < 0 ? QString() : entry->text().mid(mark + 1, 1).toLower();
            EXPECT_FALSE(letter.isEmpty() || letters.contains(letter))
                << entry->text().toStdString();
            letters << letter;
        }
    }
    QSet<QKeySequence> keys;
    for (const QAction* entry : window_->actions()) {
        for (const QKeySequence& key : entry->shortcuts()) {
            EXPECT_FALSE(keys.contains(key)) << key.toString().toStdString();
            keys << key;
        }
    }
    EXPECT_GT(keys.size(), 10);
}

TEST_F(ViewerDestination, theWindowMayGoWhileItIsAsked) {
    open();
    choose([this](PrintDestDlg&) { window_.reset(); });
    EXPECT_EQ(menu_settings(), "");
}
