#include "tests/host/viewer/viewerfixture.h"
#include "tests/output/printing/cups.h"
#include "tests/support/tools.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFontDialog>
#include <QLineEdit>
#include <QPrintDialog>
#include <QStatusBar>

#include <dlfcn.h>

using testsupport::DialogAnswers;

namespace {

/// The current directory for a while.
class DirectoryMeanwhile {
public:
    explicit DirectoryMeanwhile(const QString& name) { QDir::setCurrent(name); }
    ~DirectoryMeanwhile() { QDir::setCurrent(before_); }
    DirectoryMeanwhile(const DirectoryMeanwhile&) = delete;
    DirectoryMeanwhile& operator=(const DirectoryMeanwhile&) = delete;

private:
    const QString before_ = QDir::currentPath();
};

/// Counts how often a widget of a window is given another font.
class FontChanges : public QObject {
public:
    explicit FontChanges(const QWidget& window) : window_(window) {
        qApp->installEventFilter(this);
    }
    int count = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool changes =
            event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange;
        auto* widget = changes ? qobject_cast<QWidget*>(watched) : nullptr;
        if (widget && widget->window() == &window_)
            ++count;
        return false;
    }

private:
    const QWidget& window_;
};

class ViewerPrint : public ViewerTest {
protected:
    /// Answers the dialogs of a print: that file and the font that is proposed.
    void answer_print(const QString& file) {
        answers_
            .then_in<QPrintDialog>([file](QPrintDialog& dialog) {
                dialog.findChild<QLineEdit*>(QStringLiteral("filename"))->setText(file);
                DialogAnswers::ok(dialog);
            })
            .then_in<QFontDialog>([this](QFontDialog& dialog) {
                worked_in_ = QDir::currentPath();
                dialog.accept();
            });
    }

    /// Answers the first with that printer.
    void answer_printer(const QString& name) {
        answers_.then_in<QPrintDialog>([name](QPrintDialog& dialog) {
            auto* printers = dialog.findChild<QComboBox*>(QStringLiteral("printers"));
            const int index = printers->findText(name);
            EXPECT_GE(index, 0);
            printers->setCurrentIndex(index);
            index < 0 ? DialogAnswers::cancel(dialog) : DialogAnswers::ok(dialog);
        });
    }

    const testsupport::EnvironmentGuard no_server_{"CUPS_SERVER", "/nowhere/cups.sock"};
    QString worked_in_; ///< the current directory when the font was asked for
};

/// Makes the toolkit's print dialogs ask another print server: the client library of the process
/// keeps the first one that it was told.
void ask_server(const QByteArray& server) {
    void* const library = ::dlopen("libcups.so.2", RTLD_NOW);
    ASSERT_NE(library, nullptr);
    auto* const set_server =
        reinterpret_cast<void (*)(const char*)>(::dlsym(library, "cupsSetServer"));
    ASSERT_NE(set_server, nullptr);
    set_server(server.constData());
}

} // namespace

TEST_F(ViewerPrint, thePrintOfAReportThatIsCancelledIsNoError) {
    open();
    answers_.then_in<QPrintDialog>([](QPrintDialog& dialog) { DialogAnswers::cancel(dialog); });
    action("print_report").trigger();
    EXPECT_TRUE(answers_.all_given());
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(window_->statusBar()->currentMessage(), QString());
    EXPECT_EQ(window_->focusWidget(), &screen());
}

TEST_F(ViewerPrint, theWholeReportIsPrintedWhereTheUserChooses) {
    open();
    action("next").trigger();
    const QString out = QFile::decodeName(path("printed.pdf"));
    answer_print(out);
    action("print_report").trigger();
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(window_->statusBar()->currentMessage(), QStringLiteral("The report is printed"));
    EXPECT_EQ(testsupport::pdf_words(out).count(QStringLiteral("page")), 3);
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
}

TEST_F(ViewerPrint, aReportThatCannotBePrintedIsToldOnce) {
    open();
    answer_print(QStringLiteral("/dev/full"));
    boxes_.say_yes = true;
    action("print_report").trigger();
    // The dialog asks first whether the file may be overwritten.
    ASSERT_EQ(boxes_.texts.size(), 2);
    EXPECT_TRUE(boxes_.texts.last().startsWith(QStringLiteral("The report was not printed.\n\n")));
}

TEST_F(ViewerPrint, thePrintOfALongReportCanBeCanceled) {
    open();
    boxes_.cancel_jobs();
    answer_print(QFile::decodeName(path("printed.pdf")));
    action("print_report").trigger();
    EXPECT_EQ(boxes_.progress.size(), 1);
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_FALSE(QFile::exists(QFile::decodeName(path("printed.pdf"))));
}

TEST_F(ViewerPrint, aRelativeFileIsWhereTheDialogSaysAndTheJobInADirectoryOfItsOwn) {
    open();
    const testsupport::EnvironmentGuard home("HOME", path(""));
    const DirectoryMeanwhile here(directory_.path());
    answer_print(QStringLiteral("printed.pdf"));
    action("print_report").trigger();
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_TRUE(read("printed.pdf").startsWith("%PDF-"));
    EXPECT_TRUE(worked_in_.contains(QStringLiteral("/printman-"))) << worked_in_.toStdString();
    EXPECT_FALSE(QDir(worked_in_).exists());
    EXPECT_EQ(QDir::currentPath(), QDir(directory_.path()).canonicalPath());
}

TEST_F(ViewerPrint, aGenericPrinterLeavesTheFilesOfTheUserAndTheFontOfTheWindow) {
    const Cups cups;
    const QString queue = QStringLiteral("Generic");
    ASSERT_EQ(testsupport::run(QStringLiteral("/usr/sbin/lpadmin"),
                               {QStringLiteral("-p"), queue, QStringLiteral("-v"),
                                QStringLiteral("capture:/"), QStringLiteral("-E")})
                  .err,
              "");
    ask_server(qgetenv("CUPS_SERVER"));
    open();
    write("pgeneric.out", "the user's");
    const DirectoryMeanwhile here(directory_.path());
    const QFont font = QApplication::font();
    const FontChanges changes(*window_);
    answer_printer(queue);
    action("print_report").trigger();
    ask_server("/nowhere/cups.sock");
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(window_->statusBar()->currentMessage(), QStringLiteral("The report is printed"));
    const QList<QByteArray> jobs = cups.jobs(1);
    ASSERT_EQ(jobs.size(), 1);
    EXPECT_EQ(read("pgeneric.out"), "the user's");
    EXPECT_EQ(changes.count, 0);
    EXPECT_EQ(QApplication::font(), font);
    write("printed.ps", jobs.first());
    const QString pdf = testsupport::make_pdf(QFile::decodeName(path("printed.ps")));
    EXPECT_EQ(testsupport::pdf_words(pdf).count(QStringLiteral("page")), 3);
    EXPECT_TRUE(testsupport::run(QStringLiteral("pdffonts"), {pdf}).out.contains("Mono"));
}
