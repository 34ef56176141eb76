#include "tests/dialogs/dialogwidgets.h"
#include "tests/dialogs/printerrecords.h"
#include "tests/support/desktop.h"
#include "tests/support/dialogs.h"
#include "tests/support/testhost.h"
#include "tests/support/waiting.h"

#include <printman/dialogs/selprinterdlg.h>
#include <printman/dialogs/selunixprinterdlg.h>

#include <QLayout>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QWindow>
#include <gtest/gtest.h>

using testsupport::DialogAnswers;
namespace input = testsupport::input;

namespace {

/// Opens the list with a click on the arrow and clicks an entry.
void pick_with_the_mouse(QComboBox* box, int index) {
    QStyleOptionComboBox option;
    option.initFrom(box);
    const QRect arrow =
        box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, box);
    input::move(*box, arrow.center());
    input::press();
    input::release();
    QAbstractItemView* const list = box->view();
    ASSERT_TRUE(testsupport::wait_for(
        [list] { return list->isVisible() && list->window()->windowHandle()->isExposed(); }));
    // What follows sooner counts as part of the click that opened the list.
    testsupport::let_timers_fire(std::chrono::milliseconds(QApplication::doubleClickInterval()));
    const QRect entry = list->visualRect(list->model()->index(index, 0));
    input::move(*list->viewport(), entry.center());
    input::press();
    input::release();
    ASSERT_TRUE(testsupport::wait_for([list] { return !list->isVisible(); }));
}

void expect_smallest_and_fixed(QDialog& dialog) {
    const QSize smallest = dialog.layout()->totalMinimumSize();
    EXPECT_EQ(dialog.size(), smallest);
    dialog.resize(1000, 800);
    input::settle();
    EXPECT_EQ(dialog.size(), smallest);
}

} // namespace

TEST(SelectPrinterOnScreen, opensAtItsSmallestSizeAndCannotGrow) {
    testhost::reset();
    CPrintMan manager;
    set_host_printers(manager, {host_printer(std::string(127, 'W'))});
    SelPrinterDlg dialog;
    dialog.printman = &manager;
    dialog.server_printers = true;
    dialog.show();
    ASSERT_TRUE(input::activate(dialog));
    expect_smallest_and_fixed(dialog);
    dialog.hide();
    dialog.show();
    ASSERT_TRUE(input::activate(dialog));
    expect_smallest_and_fixed(dialog);
}

TEST(SelectPrinterOnScreen, isLedWithTheMouse) {
    testhost::reset();
    CPrintMan manager;
    set_host_printers(manager, {host_printer("first"), host_printer("second")});
    SelPrinterDlg dialog;
    dialog.printman = &manager;
    dialog.server_printers = true;
    const DialogAnswers answers{[&dialog](QDialog& shown) {
        ASSERT_TRUE(input::activate(shown));
        pick_with_the_mouse(dialog.cbPrinterID, 0);
        EXPECT_EQ(dialog.txtPrinterName->text(), QStringLiteral("Host first"));
        pick_with_the_mouse(dialog.cbPrinterID, 1);
        input::click(*dialog.btnOK);
    }};
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    EXPECT_EQ(dialog.printer_id, QStringLiteral("second"));
    EXPECT_EQ(dialog.txtTop->text(), QStringLiteral("0.50"));
}

TEST(SelectUnixPrinterOnScreen, opensAtItsSmallestSizeAndCannotGrow) {
    testhost::reset();
    CPrintMan manager;
    set_unix_printers(manager, {unix_printer(std::string(55, 'W'))});
    SelUnixPrinterDlg dialog;
    dialog.printman = &manager;
    dialog.show();
    ASSERT_TRUE(input::activate(dialog));
    expect_smallest_and_fixed(dialog);
}

TEST(SelectUnixPrinterOnScreen, isLedWithTheMouseAndTheKeyboard) {
    testhost::reset();
    CPrintMan manager;
    set_unix_printers(manager, {unix_printer("hall"), unix_printer("attic")});
    SelUnixPrinterDlg dialog;
    dialog.printman = &manager;
    const DialogAnswers answers{[&dialog](QDialog& shown) {
        ASSERT_TRUE(input::activate(shown));
        pick_with_the_mouse(dialog.cbPrinterID, 0);
        EXPECT_EQ(dialog.txtPort->text(), QStringLiteral("lp -d hall"));
        input::key(QStringLiteral("Down"));
        input::type(QStringLiteral("typed"));
        EXPECT_EQ(dialog.cbPrinterID->currentText(), QStringLiteral("attic"));
        input::key(QStringLiteral("Return"));
    }};
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    EXPECT_EQ(dialog.printer_id, QStringLiteral("attic"));
}
