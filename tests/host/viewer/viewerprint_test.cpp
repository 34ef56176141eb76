#include "tests/host/viewer/viewerfixture.h"
#include "tests/output/printing/cups.h"
#include "tests/support/tools.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFontDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

#include <dlfcn.h>

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
    /// A report that takes a job some seconds.
    void open_long() {
        write("long.rpt", report(60000, 80, 60));
        open(path("long.rpt"));
    }

    /// Answers the dialogs of a print: that file and the font that is proposed; or, without a file,
    /// cancels the first.
    void answer_print(const QString& file) {
        QObject::connect(&answers_, &QTimer::timeout, [file] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (auto* print = qobject_cast<QPrintDialog*>(dialog)) {
                print->findChild<QLineEdit*>(QStringLiteral("filename"))->setText(file);
                print->findChild<QDialogButtonBox*>()
                    ->button(file.isEmpty() ? QDialogButtonBox::Cancel : QDialogButtonBox::Ok)
                    ->click();
            } else if (auto* font = qobject_cast<QFontDialog*>(dialog)) {
                font->accept();
            } else if (auto* question = qobject_cast<QMessageBox*>(dialog)) {
                question->done(QMessageBox::Yes);
            }
        });
        answers_.start(20);
    }

    /// Answers them with that printer; cancels a dialog that does not know it.
    void answer_printer(const QString& name) {
        QObject::connect(&answers_, &QTimer::timeout, [name] {
            auto* print = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            if (!print)
                return;
            auto* printers = print->findChild<QComboBox*>(QStringLiteral("printers"));
            const int index = printers->findText(name);
            printers->setCurrentIndex(index);
            print->findChild<QDialogButtonBox*>()
                ->button(index < 0 ? QDialogButtonBox::Cancel : QDialogButtonBox::Ok)
                ->click();
        });
        answers_.start(20);
    }

    const testsupport::EnvironmentGuard no_server_{"CUPS_SERVER", "/nowhere/cups.sock"};
    QTimer answers_;
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

TEST_F(ViewerPrint, ThePrintOfAReportThatIsCancelledIsNoError) {
    open();
    answer_print(QString());
    action("print_report").trigger();
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(window_->statusBar()->currentMessage(), QString());
    EXPECT_EQ(window_->focusWidget(), &screen());
}

TEST_F(ViewerPrint, TheWholeReportIsPrintedWhereTheUserChooses) {
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

TEST_F(ViewerPrint, AReportThatCannotBePrintedIsToldOnce) {
    open();
    answer_print(QStringLiteral("/dev/full"));
    action("print_report").trigger();
    // The dialog asks first whether the file may be overwritten.
    ASSERT_EQ(boxes_.texts.size(), 2);
    EXPECT_TRUE(boxes_.texts.last().startsWith(QStringLiteral("The report was not printed.\n\n")));
}

TEST_F(ViewerPrint, ThePrintOfALongReportCanBeCanceled) {
    open_long();
    boxes_.cancel_jobs = true;
    answer_print(QFile::decodeName(path("printed.pdf")));
    action("print_report").trigger();
    EXPECT_EQ(boxes_.progress_dialogs, 1);
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_FALSE(QFile::exists(QFile::decodeName(path("printed.pdf"))));
}

TEST_F(ViewerPrint, ARelativeFileIsWhereTheDialogSaysAndTheJobInADirectoryOfItsOwn) {
    open();
    const testsupport::EnvironmentGuard home("HOME", path(""));
    const DirectoryMeanwhile here(directory_.path());
    QString worked_in;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&worked_in] {
        if (qobject_cast<QFontDialog*>(QApplication::activeModalWidget()))
            worked_in = QDir::currentPath();
    });
    look.start(5);
    answer_print(QStringLiteral("printed.pdf"));
    action("print_report").trigger();
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_TRUE(read("printed.pdf").startsWith("%PDF-"));
    EXPECT_TRUE(worked_in.contains(QStringLiteral("/printman-"))) << worked_in.toStdString();
    EXPECT_FALSE(QDir(worked_in).exists());
    EXPECT_EQ(QDir::currentPath(), QDir(directory_.path()).canonicalPath());
}

TEST_F(ViewerPrint, AGenericPrinterLeavesTheFilesOfTheUserAndTheFontOfTheWindow) {
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
