#include "tests/support/desktop.h"
#include "tests/support/dialogs.h"
#include "tests/support/testhost.h"

#include <printman/dialogs/kscolordlg.h>

#include <QColorDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLayout>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

using testsupport::DialogAnswers;
namespace input = testsupport::input;

TEST(ColorDialogOnScreen, opensAtItsSmallestSizeAndCannotGrow) {
    testhost::reset();
    testhost::set("KRV_COLOR_DBG", "200,0,0");
    KSColorDlg dialog;
    dialog.show();
    ASSERT_TRUE(input::activate(dialog));
    const QSize smallest = dialog.layout()->totalMinimumSize();
    EXPECT_EQ(dialog.size(), smallest);
    const QRect swatch(dialog.imgTextColor->mapToGlobal(QPoint()), dialog.imgTextColor->size());
    const QImage screen =
        QGuiApplication::primaryScreen()
            ->grabWindow(0, swatch.x(), swatch.y(), swatch.width(), swatch.height())
            .toImage();
    for (const QPoint at : {QPoint(0, 0), QPoint(screen.width() - 1, screen.height() - 1)})
        EXPECT_EQ(screen.pixelColor(at), QColor(200, 0, 0));
    dialog.resize(1000, 800);
    input::settle();
    EXPECT_EQ(dialog.size(), smallest);
}

TEST(ColorDialogOnScreen, isLedWithTheMouseAndTheKeyboard) {
    testhost::reset();
    KSColorDlg dialog;
    const DialogAnswers answers{[&dialog](QDialog& shown) {
                                    ASSERT_TRUE(input::activate(shown));
                                    // It returns when the picker is done.
                                    input::click(*dialog.btnTextColorBrw);
                                    ASSERT_TRUE(input::activate(shown));
                                    input::key(QStringLiteral("Return"));
                                },
                                [](QDialog& picker) {
                                    dynamic_cast<QColorDialog&>(picker).setCurrentColor(
                                        QColor(10, 20, 30));
                                    ASSERT_TRUE(input::activate(picker));
                                    input::key(QStringLiteral("Return"));
                                }};
    EXPECT_EQ(dialog.exec(), QDialog::Accepted);
    EXPECT_TRUE(testhost::calls().contains(
        QStringLiteral("SetEnv(KRV_COLOR_DBG=10,20,30, dlwmenu.ini, color, 1)")));
}
