#include "tests/support/dialogs.h"
#include "tests/support/language.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"
#include "tests/support/waiting.h"

#include <printman/dialogs/kscolordlg.h>
#include <printman/printman.h>

#include <QAccessible>
#include <QColorDialog>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QMetaMethod>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testsupport::DialogAnswers;
using testsupport::LongLanguage;

using testsupport::text;

namespace {

/// The color of every pixel of a swatch; invalid when they differ.
QColor swatch_color(const QLabel* swatch) {
    const QImage image = swatch->pixmap(Qt::ReturnByValue).toImage();
    if (image.isNull())
        return {};
    const QColor first = image.pixelColor(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != first)
                return {};
        }
    }
    return first;
}

std::vector<std::string> saved() {
    std::vector<std::string> entries;
    for (const QString& call : testhost::calls()) {
        if (call.startsWith(u"SetEnv"))
            entries.push_back(call.toStdString());
    }
    return entries;
}

/// A user who picks @p color in the picker.
DialogAnswers::Answer pick(const QColor& color, const QColor& initial) {
    return [color, initial](QDialog& shown) {
        auto& picker = dynamic_cast<QColorDialog&>(shown);
        EXPECT_EQ(picker.currentColor(), initial);
        EXPECT_NE(dynamic_cast<KSColorDlg*>(picker.parentWidget()), nullptr);
        picker.setCurrentColor(color);
        QTest::keyClick(&picker, Qt::Key_Return);
    };
}

void cancel(QDialog& shown) {
    QTest::keyClick(&shown, Qt::Key_Escape);
}

class ColorDialog : public testing::Test {
protected:
    ColorDialog() {
        testhost::reset();
        testhost::set("KRV_COLOR_DBG", "1,2,3");
        testhost::set("KRV_COLOR_SBG", "250,240,200");
    }
    ~ColorDialog() override { testhost::reset(); }

    static void click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    const QColor text_{1, 2, 3};
    const QColor background_{250, 240, 200};
    const QColor green_{0, 255, 0};
};

} // namespace

TEST_F(ColorDialog, hasItsTextsAndNames) {
    const kscolorDlgBase dialog;
    EXPECT_EQ(dialog.objectName(), text("kscolorDlgBase"));
    EXPECT_EQ(kscolorDlgBase(nullptr, "mine").objectName(), text("mine"));
    EXPECT_TRUE(kscolorDlgBase(nullptr, "mine", true).isModal());
    EXPECT_EQ(dialog.windowTitle(), text("Korvo Screen Color"));
    EXPECT_EQ(dialog.lbTextColor->text(), text("Text Color"));
    EXPECT_EQ(dialog.lbBGColor->text(), text("Background Color"));
    EXPECT_EQ(dialog.btnTextColorBrw->text(), text("..."));
    EXPECT_EQ(dialog.btnBGColorBrw->text(), text("..."));
    EXPECT_EQ(dialog.btnOK->text(), text("OK"));
    EXPECT_EQ(dialog.btnCancel->text(), text("Cancel"));
    for (const char* name :
         {"lbTextColor", "Frame7", "imgTextColor", "btnTextColorBrw", "lbBGColor", "Frame8",
          "imgBGColor", "btnBGColorBrw", "btnOK", "btnCancel"})
        EXPECT_NE(dialog.findChild<QWidget*>(text(name)), nullptr) << name;
}

TEST_F(ColorDialog, aScreenReaderTellsItsTwoPickersApart) {
    kscolorDlgBase dialog;
    const auto name = [](QWidget* button) {
        return QAccessible::queryAccessibleInterface(button)->text(QAccessible::Name);
    };
    EXPECT_EQ(name(dialog.btnTextColorBrw), text("Text Color"));
    EXPECT_EQ(name(dialog.btnBGColorBrw), text("Background Color"));
    const LongLanguage language;
    dialog.languageChange();
    EXPECT_EQ(name(dialog.btnTextColorBrw), dialog.lbTextColor->text());
    EXPECT_EQ(name(dialog.btnBGColorBrw), dialog.lbBGColor->text());
}

TEST_F(ColorDialog, isLaidOutInAColumnOfTwoRows) {
    const kscolorDlgBase dialog;
    EXPECT_EQ(dialog.size(), QSize(368, 108));
    EXPECT_EQ(dialog.layout()->objectName(), text("kscolorDlgBaseLayout"));
    EXPECT_EQ(dialog.layout()->contentsMargins(), QMargins(11, 11, 11, 11));
    EXPECT_EQ(dialog.layout()->spacing(), 6);
    EXPECT_EQ(dialog.layout()->itemAt(0)->layout()->spacing(), 20);
    EXPECT_EQ(dialog.imgTextColor->parentWidget(), dialog.Frame7);
    EXPECT_EQ(dialog.imgBGColor->parentWidget(), dialog.Frame8);
    for (const QLabel* swatch : {dialog.imgTextColor, dialog.imgBGColor}) {
        EXPECT_TRUE(swatch->hasScaledContents());
        EXPECT_EQ(swatch->maximumHeight(), 20);
        EXPECT_TRUE(swatch->pixmap(Qt::ReturnByValue).isNull());
    }
}

TEST_F(ColorDialog, itsSlotsStandInOrder) {
    const QMetaObject& meta = KSColorDlg::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names << QString::fromLatin1(meta.method(i).name());
    EXPECT_EQ(
        names.join(u' '),
        text("btnOK_clicked btnCancel_clicked btnTextColorBrw_clicked btnBGColorBrw_clicked"));
}

TEST_F(ColorDialog, readsBothColorsBackgroundFirst) {
    const KSColorDlg dialog;
    EXPECT_EQ(dialog.text_color, text_);
    EXPECT_EQ(dialog.background_color, background_);
    EXPECT_EQ(testhost::calls(),
              QStringList({text("GetRGB(KRV_COLOR_SBG)"), text("GetRGB(KRV_COLOR_DBG)")}));
    EXPECT_EQ(swatch_color(dialog.imgTextColor), text_);
    EXPECT_EQ(swatch_color(dialog.imgBGColor), background_);
}

TEST_F(ColorDialog, takesTheNearestColorOfOneOutOfRange) {
    testhost::set("KRV_COLOR_DBG", "-5,256,70000");
    KSColorDlg dialog;
    EXPECT_EQ(dialog.text_color, QColor(0, 255, 255));
    click(dialog.btnOK);
    EXPECT_THAT(saved(),
                testing::Contains("SetEnv(KRV_COLOR_DBG=0,255,255, dlwmenu.ini, color, 1)"));
}

TEST_F(ColorDialog, okWritesBothAsTheyWereRead) {
    KSColorDlg dialog;
    click(dialog.btnOK);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_THAT(saved(), ElementsAre("SetEnv(KRV_COLOR_SBG=250,240,200, dlwmenu.ini, color, 1)",
                                     "SetEnv(KRV_COLOR_DBG=1,2,3, dlwmenu.ini, color, 1)"));
}

TEST_F(ColorDialog, blackIsWrittenAsThreeZeros) {
    testhost::set("KRV_COLOR_SBG", "0,0,0");
    KSColorDlg dialog;
    click(dialog.btnOK);
    EXPECT_EQ(saved().front(), "SetEnv(KRV_COLOR_SBG=0,0,0, dlwmenu.ini, color, 1)");
}

TEST_F(ColorDialog, aPickedColorIsShownAndWritten) {
    KSColorDlg dialog;
    dialog.show();
    {
        const DialogAnswers answers{pick(green_, text_)};
        click(dialog.btnTextColorBrw);
    }
    EXPECT_EQ(swatch_color(dialog.imgTextColor), green_);
    EXPECT_EQ(swatch_color(dialog.imgBGColor), background_);
    {
        const DialogAnswers answers{pick(Qt::black, background_)};
        click(dialog.btnBGColorBrw);
    }
    EXPECT_EQ(swatch_color(dialog.imgBGColor), QColor(Qt::black));
    click(dialog.btnOK);
    EXPECT_THAT(saved(), ElementsAre("SetEnv(KRV_COLOR_SBG=0,0,0, dlwmenu.ini, color, 1)",
                                     "SetEnv(KRV_COLOR_DBG=0,255,0, dlwmenu.ini, color, 1)"));
}

TEST_F(ColorDialog, aCanceledPickerChangesNothing) {
    KSColorDlg dialog;
    dialog.show();
    const DialogAnswers answers{cancel, cancel};
    click(dialog.btnTextColorBrw);
    click(dialog.btnBGColorBrw);
    EXPECT_EQ(dialog.text_color, text_);
    EXPECT_EQ(dialog.background_color, background_);
    EXPECT_EQ(swatch_color(dialog.imgTextColor), text_);
    EXPECT_EQ(swatch_color(dialog.imgBGColor), background_);
}

TEST_F(ColorDialog, mayBeClosedWithItsWindowWhileAPickerIsOpen) {
    for (const auto button : {&kscolorDlgBase::btnTextColorBrw, &kscolorDlgBase::btnBGColorBrw}) {
        auto window = std::make_unique<QWidget>();
        window->show();
        const QPointer<KSColorDlg> dialog = new KSColorDlg(window.get());
        dialog->show();
        const DialogAnswers answers{[&window](QDialog& picker) {
            EXPECT_NE(qobject_cast<QColorDialog*>(&picker), nullptr);
            window.reset();
        }};
        click(dialog->*button);
        EXPECT_EQ(dialog, nullptr);
    }
}

TEST_F(ColorDialog, cancelWritesNothing) {
    KSColorDlg dialog;
    dialog.show();
    const DialogAnswers answers{pick(green_, text_)};
    click(dialog.btnTextColorBrw);
    click(dialog.btnCancel);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_THAT(saved(), IsEmpty());
}

TEST_F(ColorDialog, theSwatchesFillTheirLabelsOnceShown) {
    KSColorDlg dialog;
    dialog.show();
    QCoreApplication::processEvents();
    for (const QLabel* swatch : {dialog.imgTextColor, dialog.imgBGColor}) {
        const QPixmap pixmap = swatch->pixmap(Qt::ReturnByValue);
        EXPECT_EQ(pixmap.size(), swatch->size() * swatch->devicePixelRatioF());
        EXPECT_EQ(pixmap.devicePixelRatio(), swatch->devicePixelRatioF());
        EXPECT_GT(swatch->width(), 40);
        EXPECT_GT(swatch->height(), 10);
    }
    EXPECT_EQ(dialog.grab().toImage().pixelColor(
                  dialog.imgTextColor->mapTo(&dialog, dialog.imgTextColor->rect().center()) *
                  dialog.devicePixelRatioF()),
              text_);
}

TEST_F(ColorDialog, isAsSmallAsItsLayoutAllowsAndStaysSo) {
    KSColorDlg dialog;
    EXPECT_EQ(dialog.maximumSize(), QSize(10, 10));
    dialog.show();
    const QSize smallest = dialog.layout()->totalMinimumSize();
    EXPECT_EQ(dialog.size(), smallest);
    dialog.resize(800, 600);
    EXPECT_EQ(dialog.size(), smallest);
}

TEST_F(ColorDialog, takesTheLanguageThatTheProgramChangesTo) {
    kscolorDlgBase dialog;
    {
        const LongLanguage language;
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(&dialog, &change);
        EXPECT_EQ(dialog.lbTextColor->text(), text("Text ColorText ColorText Color"));
    }
    dialog.languageChange();
    EXPECT_EQ(dialog.lbTextColor->text(), text("Text Color"));
}

TEST_F(ColorDialog, growsWithTheLanguageAlone) {
    KSColorDlg dialog;
    dialog.show();
    const int width = dialog.width();
    const LongLanguage language;
    EXPECT_TRUE(testsupport::wait_for([&] { return dialog.width() > width; }));
    EXPECT_EQ(dialog.windowTitle(), text("Korvo Screen Color").repeated(3));
    EXPECT_GE(dialog.lbBGColor->width(), dialog.lbBGColor->sizeHint().width());
}

TEST_F(ColorDialog, enterMeansOkAndTabGoesThroughTheButtons) {
    KSColorDlg dialog;
    QStringList names;
    const QWidget* widget = dialog.btnTextColorBrw;
    do {
        if (widget->focusPolicy() & Qt::TabFocus)
            names << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != dialog.btnTextColorBrw);
    EXPECT_EQ(names.join(u' '), text("btnTextColorBrw btnBGColorBrw btnOK btnCancel"));
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(ColorDialog, isOpenedByTheManager) {
    CPrintMan manager;
    const DialogAnswers answers{[](QDialog& shown) {
                                    EXPECT_NE(dynamic_cast<KSColorDlg*>(&shown), nullptr);
                                    EXPECT_EQ(shown.parentWidget(), nullptr);
                                    QTest::keyClick(&shown, Qt::Key_Return);
                                },
                                cancel};
    EXPECT_EQ(manager.select_screencolor(), 1);
    EXPECT_EQ(saved().size(), 2U);
    EXPECT_EQ(manager.select_screencolor(), 0);
    EXPECT_EQ(saved().size(), 2U);
}
