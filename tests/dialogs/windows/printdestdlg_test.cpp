#include "tests/dialogs/destfixture.h"
#include "tests/support/desktop.h"
#include "tests/support/dialogs.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>

using testsupport::DialogAnswers;
using testsupport::text;
namespace input = testsupport::input;

namespace {

class PrintDestOnScreen : public PrintDestFixture {
protected:
    /// The names of the widgets that have the keyboard, one Tab after the other, once around.
    static QString tab_walk(const PrintDestDlg& dialog) {
        QStringList names;
        do {
            names << dialog.focusWidget()->objectName();
            input::key(text("Tab"));
        } while (names.size() < 30 && dialog.focusWidget()->objectName() != names.first());
        return names.join(u' ');
    }
};

} // namespace

TEST_F(PrintDestOnScreen, opensAtItsSmallestSizeAndCannotGrow) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    ASSERT_TRUE(input::activate(dialog));
    const QSize smallest = dialog.layout()->totalMinimumSize();
    EXPECT_EQ(dialog.size(), smallest);
    dialog.resize(1000, 900);
    input::settle();
    EXPECT_EQ(dialog.size(), smallest);
    dialog.hide();
    dialog.show();
    ASSERT_TRUE(input::activate(dialog));
    EXPECT_EQ(dialog.size(), smallest);
}

TEST_F(PrintDestOnScreen, showsTheLogoAsItIs) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    ASSERT_TRUE(input::activate(dialog));
    const QImage logo = dialog.PixmapLabel1->pixmap(Qt::ReturnByValue).toImage();
    ASSERT_EQ(dialog.PixmapLabel1->size(), logo.size());
    const QPoint at = dialog.PixmapLabel1->mapToGlobal(QPoint());
    const QImage screen = QGuiApplication::primaryScreen()
                              ->grabWindow(0, at.x(), at.y(), logo.width(), logo.height())
                              .toImage();
    EXPECT_EQ(screen.convertToFormat(QImage::Format_RGB32),
              logo.convertToFormat(QImage::Format_RGB32));
}

TEST_F(PrintDestOnScreen, tabGoesThroughTheDestinationAndItsGroup) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    ASSERT_TRUE(input::activate(dialog));
    EXPECT_EQ(dialog.focusWidget(), dialog.opToScreen);
    EXPECT_EQ(tab_walk(dialog), text("opToScreen txtFont btnFontBrw btnOK btnCancel"));
    input::key(text("Down"));
    EXPECT_TRUE(dialog.opToPrinter->isChecked());
    EXPECT_EQ(tab_walk(dialog),
              text("opToPrinter opLocalPrint txtPrintID btnPIDBrw spNCopies chkCollate "
                   "chkPageLength chkNoPageFmt btnOK btnCancel"));
    input::key(text("Down"));
    EXPECT_EQ(tab_walk(dialog), text("opToFile txtPathName btnFileBrw btnOK btnCancel"));
}

TEST_F(PrintDestOnScreen, isLedFromTheKeyboard) {
    manager_.set_print_dest(record(1, true));
    const DialogAnswers answers{[](QDialog& shown) {
        ASSERT_TRUE(input::activate(shown));
        input::key(text("Down"));
        input::key(text("Tab"));
        input::key(text("space"));
        input::key(text("Tab"));
        input::key(text("ctrl+a"));
        input::type(text("LOCAL2"));
        input::key(text("Return"));
    }};
    EXPECT_EQ(manager_.show_print_dest(), 1);
    EXPECT_EQ(manager_.get_print_dest()->dest, 2);
    EXPECT_EQ(manager_.get_print_dest()->server_print, 0);
    EXPECT_STREQ(manager_.get_print_dest()->prt_id, "LOCAL2");
}

TEST_F(PrintDestOnScreen, isLedWithTheMouse) {
    manager_.set_print_dest(record(1, true));
    DialogAnswers answers;
    answers.then([&answers, this](QDialog& shown) {
        auto& dialog = dynamic_cast<PrintDestDlg&>(shown);
        ASSERT_TRUE(input::activate(dialog));
        input::move(*dialog.opToFile, QPoint(8, dialog.opToFile->height() / 2));
        input::press();
        input::release();
        answers.then([this](QDialog& chooser) {
            ASSERT_TRUE(input::activate(chooser));
            input::type(scratch_.filePath(text("chosen.old.pdf")));
            input::key(text("Return"));
        });
        // It returns when the file is chosen.
        input::click(*dialog.btnFileBrw);
        ASSERT_TRUE(input::activate(dialog));
        input::click(*dialog.btnOK);
    });
    EXPECT_EQ(manager_.show_print_dest(), 1);
    EXPECT_EQ(manager_.get_print_dest()->dest, 3);
    EXPECT_EQ(std::string(manager_.get_print_dest()->path),
              scratch_.filePath(text("chosen.txt")).toStdString());
}
