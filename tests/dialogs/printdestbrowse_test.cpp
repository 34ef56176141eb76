#include "tests/dialogs/destfixture.h"
#include "tests/support/dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFontDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>

using testsupport::DialogAnswers;
using testsupport::text;

namespace {

constexpr char text_filter[] = "Text (*.txt)";
constexpr char pdf_filter[] = "PDF (*.pdf)";

void cancel(QDialog& shown) {
    QTest::keyClick(&shown, Qt::Key_Escape);
}

/// A user who chooses a font in the font dialog.
DialogAnswers::Answer choose(const QFont& font) {
    return [font](QDialog& shown) {
        auto& chooser = dynamic_cast<QFontDialog&>(shown);
        EXPECT_EQ(chooser.currentFont().family(), QFont().family());
        EXPECT_EQ(chooser.currentFont().pointSize(), QFont().pointSize());
        EXPECT_NE(dynamic_cast<PrintDestDlg*>(chooser.parentWidget()), nullptr);
        chooser.setCurrentFont(font);
        DialogAnswers::ok(chooser);
    };
}

class PrintDestBrowse : public PrintDestFixture {
protected:
    /// A user who types a name in the file dialog under the filter that begins with @p filter.
    static DialogAnswers::Answer choose(const QString& name, const char* filter) {
        return [name, filter](QDialog& shown) {
            auto& chooser = dynamic_cast<QFileDialog&>(shown);
            chooser.selectNameFilter(text(filter));
            auto* field = chooser.findChild<QLineEdit*>(text("fileNameEdit"));
            ASSERT_NE(field, nullptr);
            field->setText(name);
            QTest::keyClick(field, Qt::Key_Return);
        };
    }

    /// What stands in the path field when @p name was chosen under @p filter.
    std::string browsed(const QString& name, const char* filter) {
        PrintDestDlg dialog;
        open(dialog, record(3, true));
        click(dialog.opToFile);
        const DialogAnswers answers{choose(name, filter)};
        click(dialog.btnFileBrw);
        return dialog.txtPathName->text().toStdString();
    }

    std::string in_scratch(const char* name) const {
        return scratch_.filePath(text(name)).toStdString();
    }
};

} // namespace

TEST_F(PrintDestBrowse, theFileDialogIsToSaveTextOrPdf) {
    PrintDestDlg dialog;
    open(dialog, record(3, true));
    click(dialog.opToFile);
    const DialogAnswers answers{[&dialog](QDialog& shown) {
        auto& chooser = dynamic_cast<QFileDialog&>(shown);
        EXPECT_EQ(chooser.parentWidget(), &dialog);
        EXPECT_TRUE(chooser.isModal());
        EXPECT_EQ(chooser.windowTitle(), text("File Save"));
        EXPECT_EQ(chooser.fileMode(), QFileDialog::AnyFile);
        EXPECT_EQ(chooser.nameFilters(), QStringList({text(text_filter), text(pdf_filter)}));
        EXPECT_EQ(chooser.selectedNameFilter(), text(text_filter));
        EXPECT_TRUE(chooser.testOption(QFileDialog::DontUseNativeDialog));
        cancel(chooser);
    }};
    click(dialog.btnFileBrw);
    EXPECT_EQ(dialog.txtPathName->text(), text("/tmp/before.txt"));
}

TEST_F(PrintDestBrowse, theFilterGivesTheExtension) {
    EXPECT_EQ(browsed(scratch_.filePath(text("a.txt")), pdf_filter), in_scratch("a.pdf"));
    EXPECT_EQ(browsed(scratch_.filePath(text("a.pdf")), text_filter), in_scratch("a.txt"));
    EXPECT_EQ(browsed(scratch_.filePath(text("a")), text_filter), in_scratch("a.txt"));
    EXPECT_EQ(browsed(scratch_.filePath(text("report.old.txt")), pdf_filter),
              in_scratch("report.pdf"));
}

TEST_F(PrintDestBrowse, aFileThatIsThereIsTakenWithoutAQuestion) {
    for (const char* name : {"a.txt", "a.pdf"})
        testsupport::write_file(scratch_.filePath(text(name)), "kept");
    EXPECT_EQ(browsed(scratch_.filePath(text("a.txt")), pdf_filter), in_scratch("a.pdf"));
    EXPECT_EQ(browsed(scratch_.filePath(text("a.txt")), text_filter), in_scratch("a.txt"));
    EXPECT_EQ(testsupport::read_file(scratch_.filePath(text("a.pdf"))), "kept");
}

TEST_F(PrintDestBrowse, aPathThatDoesNotFitTheRecordIsRefused) {
    const QString deep = scratch_.filePath(QString(150, u'd'));
    ASSERT_TRUE(QDir().mkdir(deep));
    const QString just_fits = deep + u'/' + QString(268 - 4 - deep.size() - 1, u'f');
    EXPECT_EQ(browsed(just_fits, text_filter), just_fits.toStdString() + ".txt");
    EXPECT_EQ(browsed(just_fits + u'f', text_filter), "/tmp/before.txt");
}

TEST_F(PrintDestBrowse, aChosenFontIsShownAndKept) {
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    QFont chosen(text("Liberation Mono"), 17, QFont::Bold, true);
    const DialogAnswers answers{::choose(chosen)};
    click(dialog.btnFontBrw);
    EXPECT_EQ(dialog.txtFont->text(), text("Liberation Mono, Bold italic, size 17"));
    EXPECT_EQ(dialog.screen_font.family(), text("Liberation Mono"));
    EXPECT_EQ(dialog.screen_font.pointSize(), 17);
}

TEST_F(PrintDestBrowse, aCanceledFontDialogLeavesTheFieldAndTakesTheDefaultFont) {
    testhost::set("SCR_FACENAME", "Liberation Mono");
    testhost::set("SCR_POINTSIZE", "17");
    PrintDestDlg dialog;
    open(dialog, record(1, true));
    const QString shown = text("Liberation Mono, Normal regular, size 17");
    EXPECT_EQ(dialog.txtFont->text(), shown);
    const DialogAnswers answers{cancel};
    click(dialog.btnFontBrw);
    EXPECT_EQ(dialog.screen_font, QFont());
    EXPECT_EQ(dialog.txtFont->text(), shown);
}

TEST_F(PrintDestBrowse, mayBeClosedWithItsWindowWhileADialogIsOpen) {
    for (const auto button : {&printdestDlgBase::btnFileBrw, &printdestDlgBase::btnFontBrw,
                              &printdestDlgBase::btnPIDBrw}) {
        auto window = std::make_unique<QWidget>();
        window->show();
        const QPointer<PrintDestDlg> dialog = new PrintDestDlg(window.get());
        open(*dialog, record(1, true));
        dialog->enable_file(true);
        dialog->enable_print(true);
        const DialogAnswers answers{[&window](QDialog&) { window.reset(); }};
        click((*dialog).*button);
        EXPECT_EQ(dialog, nullptr);
    }
}
