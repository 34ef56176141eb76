#include "tests/support/language.h"
#include "tests/support/testhost.h"
#include "tests/support/tools.h"

#include <printman/dialogs/printdestdlg.h>
#include <printman/toolkit/qmimesourcefactory.h>

#include <QAccessible>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <gtest/gtest.h>

using testsupport::LongLanguage;

using testsupport::text;

namespace {

/// "kind name: text" of every widget of the table, in its order.
std::string table(const printdestDlgBase& dialog) {
    const QWidget* const widgets[] = {
        dialog.bgbExecDest,  dialog.opToScreen, dialog.opToPrinter,   dialog.opToFile,
        dialog.PixmapLabel1, dialog.bgbPrint,   dialog.opLocalPrint,  dialog.opServerPrint,
        dialog.lbPrintID,    dialog.txtPrintID, dialog.btnPIDBrw,     dialog.lbNCopies,
        dialog.spNCopies,    dialog.chkCollate, dialog.chkPageLength, dialog.chkSelPrtFnt,
        dialog.chkNoPageFmt, dialog.gbFile,     dialog.lbSaveAs,      dialog.txtPathName,
        dialog.btnFileBrw,   dialog.gbScreen,   dialog.lbFont,        dialog.txtFont,
        dialog.btnFontBrw,   dialog.btnOK,      dialog.btnCancel};
    QStringList lines;
    for (const QWidget* widget : widgets) {
        const QString title = widget->property("title").toString();
        const bool is_field = widget == dialog.spNCopies;
        lines << QStringLiteral("%1 %2: %3")
                     .arg(QString::fromLatin1(widget->metaObject()->className()),
                          widget->objectName(),
                          is_field ? QString() : title + widget->property("text").toString());
    }
    return lines.join(u'\n').toStdString();
}

QRect place(const QWidget* widget) {
    return {widget->mapTo(widget->window(), QPoint()), widget->size()};
}

bool is_left_of(const QWidget* left, const QWidget* right) {
    return place(left).right() < place(right).left() &&
           std::abs(place(left).center().y() - place(right).center().y()) <= 4;
}

bool is_above(const QWidget* upper, const QWidget* lower) {
    return place(upper).bottom() < place(lower).top();
}

} // namespace

TEST(PrintDestLayout, hasItsWidgetsAndTexts) {
    const printdestDlgBase dialog;
    EXPECT_EQ(dialog.objectName(), text("printdestDlgBase"));
    EXPECT_EQ(printdestDlgBase(nullptr, "mine").objectName(), text("mine"));
    EXPECT_TRUE(printdestDlgBase(nullptr, "mine", true).isModal());
    EXPECT_FALSE(dialog.isModal());
    EXPECT_EQ(dialog.windowTitle(), text("Korvo Execution Destination"));
    EXPECT_EQ(table(dialog), "QGroupBox bgbExecDest: Execution Destination\n"
                             "QRadioButton opToScreen: To Screen\n"
                             "QRadioButton opToPrinter: To Printer\n"
                             "QRadioButton opToFile: To File\n"
                             "QLabel PixmapLabel1: \n"
                             "QGroupBox bgbPrint: Print\n"
                             "QRadioButton opLocalPrint: Local Print\n"
                             "QRadioButton opServerPrint: Server Print\n"
                             "QLabel lbPrintID: Print ID\n"
                             "QLineEdit txtPrintID: \n"
                             "QPushButton btnPIDBrw: ...\n"
                             "QLabel lbNCopies: Number of Copies\n"
                             "QSpinBox spNCopies: \n"
                             "QCheckBox chkCollate: Collate\n"
                             "QCheckBox chkPageLength: Use printer assigned page length\n"
                             "QCheckBox chkSelPrtFnt: Always select printer and font\n"
                             "QCheckBox chkNoPageFmt: Turn off automatic page formating\n"
                             "QGroupBox gbFile: File\n"
                             "QLabel lbSaveAs: Save As\n"
                             "QLineEdit txtPathName: \n"
                             "QPushButton btnFileBrw: ...\n"
                             "QGroupBox gbScreen: Screen\n"
                             "QLabel lbFont: Font\n"
                             "QLineEdit txtFont: \n"
                             "QPushButton btnFontBrw: ...\n"
                             "QPushButton btnOK: OK\n"
                             "QPushButton btnCancel: Cancel");
}

TEST(PrintDestLayout, hasItsMarginsAndSizes) {
    const printdestDlgBase dialog;
    EXPECT_EQ(dialog.size(), QSize(492, 449));
    EXPECT_EQ(dialog.layout()->objectName(), text("printdestDlgBaseLayout"));
    EXPECT_NE(qobject_cast<QGridLayout*>(dialog.layout()), nullptr);
    EXPECT_EQ(dialog.layout()->contentsMargins(), QMargins(11, 11, 11, 11));
    EXPECT_EQ(dialog.layout()->spacing(), 6);
    for (const QPushButton* button : {dialog.btnPIDBrw, dialog.btnFileBrw, dialog.btnFontBrw}) {
        EXPECT_EQ(button->minimumSize(), QSize(26, 26));
        EXPECT_EQ(button->maximumSize(), QSize(26, 26));
    }
    EXPECT_EQ(dialog.lbPrintID->minimumWidth(), 60);
    for (const QLabel* label : {dialog.lbSaveAs, dialog.lbFont}) {
        EXPECT_EQ(label->minimumWidth(), 60);
        EXPECT_EQ(label->maximumWidth(), 60);
    }
    EXPECT_EQ(dialog.spNCopies->minimum(), 0);
    EXPECT_EQ(dialog.spNCopies->maximum(), 99);
}

TEST(PrintDestLayout, itsLabelsBelongToTheirFields) {
    const printdestDlgBase dialog;
    EXPECT_EQ(dialog.lbPrintID->buddy(), dialog.txtPrintID);
    EXPECT_EQ(dialog.lbNCopies->buddy(), dialog.spNCopies);
    EXPECT_EQ(dialog.lbSaveAs->buddy(), dialog.txtPathName);
    EXPECT_EQ(dialog.lbFont->buddy(), dialog.txtFont);
}

TEST(PrintDestLayout, itsBoxesStandInAColumnBesideTheButtons) {
    printdestDlgBase dialog;
    dialog.show();
    const QWidget* const boxes[] = {dialog.bgbExecDest, dialog.bgbPrint, dialog.gbFile,
                                    dialog.gbScreen};
    for (size_t i = 1; i < std::size(boxes); ++i) {
        EXPECT_EQ(place(boxes[i]).left(), place(boxes[0]).left());
        EXPECT_EQ(place(boxes[i]).width(), place(boxes[0]).width());
        EXPECT_EQ(place(boxes[i]).top() - place(boxes[i - 1]).bottom(), 7);
    }
    EXPECT_EQ(place(boxes[0]).topLeft(), QPoint(11, 11));
    EXPECT_EQ(place(dialog.btnOK).left(), place(boxes[0]).right() + 1 + 6 + 4);
    EXPECT_EQ(place(dialog.btnOK).top(), 11 + 4);
    EXPECT_EQ(place(dialog.btnCancel).top(), place(dialog.btnOK).bottom() + 1 + 2);
    EXPECT_EQ(place(dialog.btnCancel).left(), place(dialog.btnOK).left());
}

TEST(PrintDestLayout, itsBoxesHoldTheirWidgetsInRows) {
    printdestDlgBase dialog;
    dialog.show();
    for (const QWidget* widget : std::initializer_list<const QWidget*>{
             dialog.opToScreen, dialog.opToPrinter, dialog.opToFile, dialog.PixmapLabel1})
        EXPECT_EQ(widget->parentWidget(), dialog.bgbExecDest);
    EXPECT_TRUE(is_above(dialog.opToScreen, dialog.opToPrinter));
    EXPECT_TRUE(is_above(dialog.opToPrinter, dialog.opToFile));
    EXPECT_TRUE(is_left_of(dialog.opToPrinter, dialog.PixmapLabel1));

    EXPECT_EQ(dialog.chkNoPageFmt->parentWidget(), dialog.bgbPrint);
    EXPECT_TRUE(is_left_of(dialog.opLocalPrint, dialog.opServerPrint));
    EXPECT_TRUE(is_above(dialog.opLocalPrint, dialog.txtPrintID));
    EXPECT_TRUE(is_left_of(dialog.lbPrintID, dialog.txtPrintID));
    EXPECT_TRUE(is_left_of(dialog.txtPrintID, dialog.btnPIDBrw));
    EXPECT_TRUE(is_above(dialog.btnPIDBrw, dialog.spNCopies));
    EXPECT_TRUE(is_left_of(dialog.lbNCopies, dialog.spNCopies));
    EXPECT_EQ(place(dialog.chkCollate).left() - place(dialog.spNCopies).right() - 1, 12);
    EXPECT_TRUE(is_above(dialog.spNCopies, dialog.chkPageLength));
    EXPECT_TRUE(is_above(dialog.chkPageLength, dialog.chkSelPrtFnt));
    EXPECT_TRUE(is_above(dialog.chkSelPrtFnt, dialog.chkNoPageFmt));

    EXPECT_EQ(dialog.txtPathName->parentWidget(), dialog.gbFile);
    EXPECT_TRUE(is_left_of(dialog.lbSaveAs, dialog.txtPathName));
    EXPECT_TRUE(is_left_of(dialog.txtPathName, dialog.btnFileBrw));
    EXPECT_EQ(dialog.txtFont->parentWidget(), dialog.gbScreen);
    EXPECT_TRUE(is_left_of(dialog.lbFont, dialog.txtFont));
    EXPECT_TRUE(is_left_of(dialog.txtFont, dialog.btnFontBrw));
}

TEST(PrintDestLayout, showsTheLogo) {
    const printdestDlgBase dialog;
    EXPECT_TRUE(dialog.PixmapLabel1->hasScaledContents());
    const QImage logo =
        QMimeSourceFactory::defaultFactory()->pixmap(text("korvologo.png")).toImage();
    EXPECT_EQ(logo.size(), QSize(200, 66));
    EXPECT_EQ(dialog.PixmapLabel1->pixmap(Qt::ReturnByValue).toImage(), logo);
}

TEST(PrintDestLayout, tabGoesThroughItsWidgetsInOrder) {
    const printdestDlgBase dialog;
    QStringList names;
    const QWidget* widget = dialog.opToScreen;
    do {
        // The field within the spin box is part of that.
        if (widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy())
            names << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != dialog.opToScreen);
    EXPECT_EQ(names.join(u' '),
              text("opToScreen opToPrinter opToFile opLocalPrint opServerPrint txtPrintID "
                   "btnPIDBrw spNCopies chkCollate chkPageLength chkSelPrtFnt chkNoPageFmt "
                   "txtPathName btnFileBrw txtFont btnFontBrw btnOK btnCancel"));
}

TEST(PrintDestLayout, aScreenReaderTellsItsThreeBrowseButtonsApart) {
    printdestDlgBase dialog;
    const auto name = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    const LongLanguage language;
    dialog.languageChange();
    EXPECT_EQ(name(dialog.btnPIDBrw), dialog.lbPrintID->text());
    EXPECT_EQ(name(dialog.btnFileBrw), dialog.lbSaveAs->text());
    EXPECT_EQ(name(dialog.btnFontBrw), dialog.lbFont->text());
    EXPECT_EQ(name(dialog.txtPathName), dialog.lbSaveAs->text());
}

TEST(PrintDestLayout, everyTextIsTranslated) {
    printdestDlgBase dialog;
    const QStringList lines = QString::fromStdString(table(dialog)).split(u'\n');
    const LongLanguage language;
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&dialog, &change);
    EXPECT_EQ(dialog.windowTitle(), text("Korvo Execution Destination").repeated(3));
    const QStringList longer = QString::fromStdString(table(dialog)).split(u'\n');
    for (int i = 0; i < lines.size(); ++i) {
        const qsizetype colon = lines[i].indexOf(text(": "));
        EXPECT_EQ(longer[i], lines[i].left(colon + 2) + lines[i].mid(colon + 2).repeated(3));
    }
}
