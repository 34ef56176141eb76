#include "tests/host/viewer/viewerfixture.h"
#include "tests/support/desktop.h"
#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <printman/dialogs/printdestdlg.h>
#include <printman/printman.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QRadioButton>

#include <functional>

// Mouse and keyboard as a user has them: events come through an X server.

namespace {

using testsupport::wait_for;
using testsupport::input::key;
using testsupport::input::move;
using testsupport::input::press;
using testsupport::input::release;
using testsupport::input::type;

class ViewerInput : public ViewerTest {
protected:
    void SetUp() override {
        open();
        ASSERT_TRUE(testsupport::input::activate(*window_));
        ASSERT_TRUE(wait_for([this] { return screen().hasFocus(); }));
    }

    /// Drags over the cells from column @p from to column @p to of a line, all from 0.
    void drag(int line, int from, int to) const {
        const QFontMetrics metrics(screen().font());
        const auto at = [&](int column) {
            return QPoint(20 + column * metrics.maxWidth() + metrics.maxWidth() / 2,
                          20 + line * metrics.height() + metrics.height() / 2);
        };
        move(screen(), at(from));
        press();
        move(screen(), at((from + to) / 2));
        move(screen(), at(to));
        release();
    }

    QString zoom_box() const { return window_->findChild<QComboBox*>()->currentText(); }

    /// Does @p what with the keyboard in the next modal dialog, which is of that kind.
    template <typename Dialog>
    void in_dialog(const std::function<void(Dialog&)>& what) {
        answers_.then_in<Dialog>([what](Dialog& dialog) {
            ASSERT_TRUE(testsupport::input::activate(dialog));
            what(dialog);
        });
    }
};

} // namespace

TEST_F(ViewerInput, pagesAreTurnedByKeys) {
    key(QStringLiteral("Page_Down"));
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    key(QStringLiteral("ctrl+End"));
    EXPECT_EQ(page_box(), QStringLiteral("3 of 3"));
    key(QStringLiteral("Page_Up"));
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    key(QStringLiteral("ctrl+Home"));
    EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
}

TEST_F(ViewerInput, aPageNumberIsTyped) {
    key(QStringLiteral("ctrl+g"));
    type(QStringLiteral("3"));
    key(QStringLiteral("Return"));
    EXPECT_EQ(page_box(), QStringLiteral("3 of 3"));
    EXPECT_TRUE(screen().hasFocus());
    QWidget& box = *window_->findChild<QLineEdit*>();
    testsupport::input::click(box);
    type(QStringLiteral("2"));
    key(QStringLiteral("KP_Enter"));
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
}

TEST_F(ViewerInput, theWheelScrollsAndWithCtrlZooms) {
    move(screen(), {100, 100});
    testsupport::input::wheel(-1, QStringLiteral("ctrl"));
    EXPECT_EQ(zoom_box(), QStringLiteral("150%"));
    vertical().setValue(0);
    testsupport::input::wheel(1);
    EXPECT_GT(vertical().value(), 0);
    EXPECT_EQ(zoom_box(), QStringLiteral("150%"));
    testsupport::input::wheel(2, QStringLiteral("ctrl"));
    EXPECT_EQ(zoom_box(), QStringLiteral("50%"));
}

TEST_F(ViewerInput, theKeypadZoomsToo) {
    key(QStringLiteral("ctrl+KP_Add"));
    EXPECT_EQ(zoom_box(), QStringLiteral("150%"));
    key(QStringLiteral("ctrl+KP_Subtract"));
    key(QStringLiteral("ctrl+minus"));
    EXPECT_EQ(zoom_box(), QStringLiteral("50%"));
    key(QStringLiteral("ctrl+equal"));
    key(QStringLiteral("ctrl+plus"));
    EXPECT_EQ(zoom_box(), QStringLiteral("150%"));
    key(QStringLiteral("ctrl+0"));
    EXPECT_EQ(zoom_box(), QStringLiteral("100%"));
}

TEST_F(ViewerInput, aSelectionIsCopied) {
    drag(0, 1, 3);
    const std::list<StringItem>& pieces = window_->view()->manager().hilights();
    ASSERT_EQ(pieces.size(), 1U);
    const QString text = pieces.front().text;
    EXPECT_TRUE(QStringLiteral("page 1").contains(text) && text.size() >= 3);
    EXPECT_TRUE(status().contains(QStringLiteral("1 piece, %1 characters").arg(text.size())));
    key(QStringLiteral("ctrl+c"));
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("<html><head><title></title></head><body><table><tr><td>%1</td></tr>"
                             "</table></body></html>")
                  .arg(text));
}

TEST_F(ViewerInput, theWholeReportIsCopied) {
    key(QStringLiteral("Page_Down"));
    key(QStringLiteral("ctrl+shift+c"));
    const QString text = QApplication::clipboard()->text();
    EXPECT_EQ(text.count(QStringLiteral("<table width=100%>")), 3);
    EXPECT_TRUE(text.contains(QStringLiteral("<td>page 3</td>")));
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    EXPECT_EQ(window_->view()->manager().page_row(0).first().text, QStringLiteral("page 2"));
}

TEST_F(ViewerInput, aTextIsSearchedFor) {
    in_dialog<QDialog>([](QDialog& /*find*/) {
        type(QStringLiteral("page"));
        key(QStringLiteral("Return"));
    });
    key(QStringLiteral("ctrl+f"));
    ASSERT_TRUE(wait_for([this] { return status().contains(QStringLiteral("1 piece, 4 ")); }));
    EXPECT_TRUE(action("copy").isEnabled());
    EXPECT_EQ(window_->view()->manager().hilights().front().text, QStringLiteral("page"));
}

TEST_F(ViewerInput, aFileIsOpenedAndSavedByItsNameInADialog) {
    write("two.rpt", report(2));
    in_dialog<QFileDialog>([this](QFileDialog&) {
        type(QFile::decodeName(path("two.rpt")));
        key(QStringLiteral("Return"));
    });
    key(QStringLiteral("ctrl+o"));
    ASSERT_TRUE(wait_for([this] { return page_box() == QStringLiteral("1 of 2"); }));
    ASSERT_TRUE(testsupport::input::activate(*window_));
    QString suggested;
    in_dialog<QFileDialog>([&suggested](QFileDialog& dialog) {
        suggested = dialog.selectedFiles().value(0);
        key(QStringLiteral("Return"));
    });
    key(QStringLiteral("ctrl+s"));
    ASSERT_TRUE(wait_for([this] { return files().contains(QStringLiteral("two.txt")); }));
    EXPECT_EQ(suggested, QFile::decodeName(path("two.txt")));
    EXPECT_EQ(read("two.txt").count('\n'), 60);
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerInput, anErrorIsShownOnceAndTheKeysGoOn) {
    ASSERT_TRUE(QFile::remove(QFile::decodeName(report_)));
    key(QStringLiteral("Page_Down"));
    ASSERT_TRUE(wait_for([this] { return !boxes_.texts.isEmpty(); }));
    EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
    ASSERT_TRUE(testsupport::input::activate(*window_));
    key(QStringLiteral("ctrl+plus"));
    EXPECT_EQ(zoom_box(), QStringLiteral("150%"));
    EXPECT_EQ(boxes_.texts.size(), 1);
}

TEST_F(ViewerInput, theDestinationIsChosenWithTheKeyboard) {
    in_dialog<PrintDestDlg>([this](PrintDestDlg& dialog) {
        dialog.opToScreen->setFocus();
        key(QStringLiteral("Down"));
        key(QStringLiteral("Down"));
        EXPECT_TRUE(dialog.opToFile->isChecked());
        key(QStringLiteral("space"));
        EXPECT_TRUE(dialog.txtPathName->isEnabled());
        dialog.txtPathName->setFocus();
        type(QFile::decodeName(path("out.txt")));
        key(QStringLiteral("Return"));
    });
    key(QStringLiteral("ctrl+d"));
    EXPECT_TRUE(read("out.txt").startsWith("page 1\n"));
    EXPECT_TRUE(read("settings/dlwmenu.ini").contains("\nDEST=file\n"));
}

TEST_F(ViewerInput, theDestinationIsLeftWithEscape) {
    in_dialog<PrintDestDlg>([](PrintDestDlg&) { key(QStringLiteral("Escape")); });
    key(QStringLiteral("ctrl+d"));
    EXPECT_EQ(read("settings/dlwmenu.ini"), "");
    ASSERT_TRUE(testsupport::input::activate(*window_));
    key(QStringLiteral("Page_Down"));
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
}
