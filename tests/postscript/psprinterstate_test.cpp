#include "tests/support/tools.h"

#include <printman/toolkit/psprinter.h>

#include <QDir>
#include <QFile>
#include <QPageLayout>
#include <QPainter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

using testsupport::EnvironmentGuard;
using testsupport::read_file;
using testsupport::write_file;
using testsupport::write_script;

namespace {

class PsPrinterState : public testing::Test {
protected:
    QString path(const char* name) const { return scratch_.filePath(QString::fromLatin1(name)); }
    QStringList left_over() const {
        return QDir(scratch_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    /// A directory to stand as PATH; scripts in it find the system's tools.
    QString bin() {
        QDir(scratch_.path()).mkdir(QStringLiteral("bin"));
        return path("bin");
    }

    QTemporaryDir scratch_;
    PsPrinter printer_;
};

} // namespace

TEST_F(PsPrinterState, startsAsOneCopyOnPortraitA4At600Dpi) {
    EXPECT_EQ(printer_.resolution(), 600);
    EXPECT_EQ(printer_.copyCount(), 1);
    EXPECT_EQ(printer_.pageLayout().pageSize().id(), QPageSize::A4);
    EXPECT_EQ(printer_.pageLayout().orientation(), QPageLayout::Portrait);
    EXPECT_EQ(printer_.pageLayout().margins(QPageLayout::Inch), QMarginsF(0.5, 0.33, 0.5, 0.33));
    EXPECT_EQ(printer_.printerState(), QPrinter::Idle);
}

TEST_F(PsPrinterState, measuresThePageLessItsMargins) {
    printer_.setPageSize(QPageSize(QPageSize::Letter));
    EXPECT_EQ(printer_.width(), 5100 - 2 * 300);
    EXPECT_EQ(printer_.height(), 6600 - 2 * 200);
    EXPECT_EQ(printer_.logicalDpiX(), 600);
    EXPECT_EQ(printer_.widthMM(), 191);
    EXPECT_EQ(printer_.heightMM(), 262);
    printer_.setMargins(600, 300, 1200, 900);
    EXPECT_EQ(printer_.width(), 5100 - 300 - 900);
    EXPECT_EQ(printer_.height(), 6600 - 600 - 1200);
}

TEST_F(PsPrinterState, defaultMarginsStayAtTheirSheetEdgesWhenThePageIsTurned) {
    printer_.setPageSize(QPageSize(QPageSize::Letter));
    printer_.setPageOrientation(QPageLayout::Landscape);
    EXPECT_EQ(printer_.width(), 6600 - 2 * 200);
    EXPECT_EQ(printer_.height(), 5100 - 2 * 300);
    printer_.setPageOrientation(QPageLayout::Portrait);
    EXPECT_EQ(printer_.width(), 5100 - 2 * 300);
}

TEST_F(PsPrinterState, marginsThatWereSetStayWhenThePageIsTurned) {
    printer_.setPageSize(QPageSize(QPageSize::Letter));
    printer_.setMargins(60, 120, 180, 240);
    printer_.setPageOrientation(QPageLayout::Landscape);
    EXPECT_EQ(printer_.width(), 6600 - 120 - 240);
    EXPECT_EQ(printer_.height(), 5100 - 60 - 180);
}

TEST_F(PsPrinterState, marginsThatLeaveNoRoomAreIgnored) {
    const int width = printer_.width();
    printer_.setMargins(0, 3000, 0, 3000);
    printer_.setMargins(0, 4294967295U, 0, 0);
    EXPECT_EQ(printer_.width(), width);
}

TEST_F(PsPrinterState, answersWhatWasSet) {
    printer_.setPrinterName(QStringLiteral("no such queue"));
    printer_.setOutputFileName(QStringLiteral("/nowhere/x.pdf"));
    printer_.setDocName(QStringLiteral("title"));
    printer_.setCreator(QStringLiteral("creator"));
    printer_.setPageOrientation(QPageLayout::Landscape);
    printer_.setPageSize(QPageSize(QPageSize::A5));
    printer_.setCopyCount(3);
    printer_.setCollateCopies(false);
    printer_.setFromTo(2, 5);
    printer_.setFullPage(true);
    EXPECT_EQ(printer_.printerName(), QStringLiteral("no such queue"));
    EXPECT_EQ(printer_.outputFileName(), QStringLiteral("/nowhere/x.pdf"));
    EXPECT_EQ(printer_.docName(), QStringLiteral("title"));
    EXPECT_EQ(printer_.creator(), QStringLiteral("creator"));
    EXPECT_EQ(printer_.pageLayout().orientation(), QPageLayout::Landscape);
    EXPECT_EQ(printer_.pageLayout().pageSize().id(), QPageSize::A5);
    EXPECT_EQ(printer_.copyCount(), 3);
    EXPECT_FALSE(printer_.collateCopies());
    EXPECT_EQ(printer_.fromPage(), 2);
    EXPECT_EQ(printer_.toPage(), 5);
    EXPECT_TRUE(printer_.fullPage());
    EXPECT_EQ(printer_.width(), 4958 /* the whole sheet, turned */);
}

TEST_F(PsPrinterState, isActiveWhileAPainterIsOpen) {
    printer_.setOutputFileName(path("a.ps"));
    EXPECT_FALSE(printer_.newPage());
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    EXPECT_EQ(printer_.printerState(), QPrinter::Active);
    EXPECT_TRUE(printer_.newPage());
    EXPECT_TRUE(p.end());
    EXPECT_EQ(printer_.printerState(), QPrinter::Idle);
    EXPECT_EQ(left_over(), QStringList{QStringLiteral("a.ps")});
}

TEST_F(PsPrinterState, anAbortedJobLeavesNothingAndLastsUntilItsPainterEnds) {
    write_file(path("a.ps"), "earlier");
    printer_.setOutputFileName(path("a.ps"));
    EXPECT_FALSE(printer_.abort());
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    EXPECT_TRUE(printer_.abort());
    EXPECT_EQ(printer_.printerState(), QPrinter::Aborted);
    p.drawText(100, 100, QStringLiteral("into the void"));
    EXPECT_FALSE(printer_.newPage());
    p.end();
    EXPECT_EQ(printer_.printerState(), QPrinter::Idle);
    EXPECT_EQ(read_file(path("a.ps")), "earlier");
    EXPECT_EQ(left_over(), QStringList{QStringLiteral("a.ps")});

    ASSERT_TRUE(p.begin(&printer_));
    EXPECT_TRUE(p.end());
    EXPECT_TRUE(read_file(path("a.ps")).startsWith("%!PS-Adobe-3.0\n"));
}

TEST_F(PsPrinterState, anEarlierFileStaysUntilTheJobIsComplete) {
    write_file(path("a.ps"), "earlier");
    printer_.setOutputFileName(path("a.ps"));
    QPainter p(&printer_);
    for (int page = 0; page < 3; ++page)
        printer_.newPage();
    EXPECT_EQ(read_file(path("a.ps")), "earlier");
    EXPECT_TRUE(p.end());
    EXPECT_TRUE(read_file(path("a.ps")).contains("%%Pages: 4\n"));
}

TEST_F(PsPrinterState, anOutputThatCannotBeOpenedIsAnError) {
    for (const QString& name : {path("no/such/directory.ps"), scratch_.path()}) {
        printer_.setOutputFileName(name);
        QPainter p;
        EXPECT_FALSE(p.begin(&printer_));
        EXPECT_EQ(printer_.printerState(), QPrinter::Error);
        EXPECT_FALSE(printer_.errorString().isEmpty());
        EXPECT_FALSE(printer_.newPage());
    }
    printer_.setOutputFileName(path("a.ps"));
    QPainter p;
    EXPECT_TRUE(p.begin(&printer_));
    EXPECT_TRUE(p.end());
    EXPECT_TRUE(printer_.errorString().isEmpty());
}

TEST_F(PsPrinterState, aDeviceThatIsFullIsAnError) {
    printer_.setOutputFileName(QStringLiteral("/dev/full"));
    QPainter p;
    const bool done = p.begin(&printer_) && p.end();
    EXPECT_FALSE(done);
    EXPECT_EQ(printer_.printerState(), QPrinter::Error);
    EXPECT_FALSE(printer_.errorString().isEmpty());
    EXPECT_FALSE(QFileInfo(QStringLiteral("/dev/full")).isFile());
}

TEST_F(PsPrinterState, aDiskThatFillsUpWhilePaintingIsAnError) {
    write_file(path("a.ps"), "earlier");
    printer_.setOutputFileName(path("a.ps"));
    // A limit on the size of files stands for the end of the disk.
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{512 * 1024, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    for (int i = 0; i < 2000; ++i)
        p.drawText(100, 100, QString(1000, u'x'));
    EXPECT_EQ(printer_.printerState(), QPrinter::Error);
    EXPECT_FALSE(printer_.errorString().isEmpty());
    EXPECT_FALSE(printer_.newPage());
    EXPECT_EQ(printer_.printerState(), QPrinter::Error);
    p.drawText(100, 100, QStringLiteral("no effect"));
    p.end();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, old_handler);
    EXPECT_FALSE(printer_.errorString().isEmpty());
    EXPECT_EQ(printer_.printerState(), QPrinter::Error);
    EXPECT_EQ(read_file(path("a.ps")), "earlier");
    EXPECT_EQ(left_over(), QStringList{QStringLiteral("a.ps")});
}

TEST_F(PsPrinterState, withoutAnOutputFileTheJobGoesToTheSpooler) {
    write_script(bin() + QStringLiteral("/lp"),
                 "printf '%s\\n' \"$@\" > " + path("args").toLocal8Bit() + "\n/bin/cat > " +
                     path("job").toLocal8Bit() + "\necho request id is x-1\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    printer_.setPrinterName(QStringLiteral("a $(touch x) 'queue'"));
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    p.drawText(100, 100, QStringLiteral("hello"));
    EXPECT_TRUE(p.end());
    EXPECT_EQ(printer_.printerState(), QPrinter::Idle);
    EXPECT_EQ(read_file(path("args")), "-d\na $(touch x) 'queue'\n");
    EXPECT_TRUE(read_file(path("job")).startsWith("%!PS-Adobe-3.0\n"));
    EXPECT_TRUE(read_file(path("job")).endsWith("%%EOF\n"));
}

TEST_F(PsPrinterState, withoutLpTheJobGoesToLpr) {
    write_script(bin() + QStringLiteral("/lpr"), "printf '%s\\n' \"$@\" > " +
                                                     path("args").toLocal8Bit() + "\n/bin/cat > " +
                                                     path("job").toLocal8Bit() + "\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    printer_.setPrinterName(QStringLiteral("laser"));
    printer_.setCopyCount(2);
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    EXPECT_TRUE(p.end());
    EXPECT_EQ(read_file(path("args")), "-P\nlaser\n-#2\n");
    // The spooler makes the copies; the document must not ask for them once more.
    EXPECT_FALSE(read_file(path("job")).contains("NumCopies"));
}

TEST_F(PsPrinterState, lpIsToldTheCopiesAndTheirOrder) {
    write_script(bin() + QStringLiteral("/lp"), "printf '%s\\n' \"$@\" > " +
                                                    path("args").toLocal8Bit() +
                                                    "\n/bin/cat > /dev/null\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    printer_.setPrinterName(QStringLiteral("laser"));
    printer_.setCopyCount(3);
    printer_.setCollateCopies(false);
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    EXPECT_TRUE(p.end());
    EXPECT_EQ(read_file(path("args")), "-d\nlaser\n-n\n3\n-o\ncollate=false\n");
}

TEST_F(PsPrinterState, aSpoolersStatusIsKnownThoughSigchldIsIgnored) {
    write_script(bin() + QStringLiteral("/lp"), "/bin/cat > /dev/null; exit 3\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    const auto old_handler = std::signal(SIGCHLD, SIG_IGN);
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    EXPECT_FALSE(p.end());
    EXPECT_EQ(std::signal(SIGCHLD, old_handler), SIG_IGN);
    EXPECT_EQ(printer_.printerState(), QPrinter::Error);
    EXPECT_EQ(printer_.errorString(), QStringLiteral("lp failed with status 3"));
}

TEST_F(PsPrinterState, aStatusIsKnownThoughTheHostIgnoresSigchldInTheMiddle) {
    write_script(bin() + QStringLiteral("/lp"), "/bin/cat > /dev/null; exit 3\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    PsPrinter other;
    QPainter p;
    QPainter q;
    const auto old_handler = std::signal(SIGCHLD, SIG_DFL);
    ASSERT_TRUE(p.begin(&printer_));
    ASSERT_TRUE(q.begin(&other));
    std::signal(SIGCHLD, SIG_IGN);
    EXPECT_FALSE(p.end());
    EXPECT_FALSE(q.end());
    EXPECT_EQ(std::signal(SIGCHLD, old_handler), SIG_IGN);
    EXPECT_EQ(printer_.printerState(), QPrinter::Error);
    EXPECT_EQ(other.printerState(), QPrinter::Error);
}

TEST_F(PsPrinterState, theSpoolersInputIsAPipe) {
    write_script(bin() + QStringLiteral("/lp"),
                 "/bin/cat /dev/stdin > " + path("job").toLocal8Bit() + "\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    EXPECT_TRUE(p.end()) << printer_.errorString().toStdString();
    EXPECT_TRUE(read_file(path("job")).endsWith("%%EOF\n"));
}

TEST_F(PsPrinterState, aLargeJobArrivesWhole) {
    write_script(bin() + QStringLiteral("/lp"),
                 "/bin/sleep 0.2; /bin/cat > " + path("job").toLocal8Bit() + "\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    for (int page = 0; page < 500; ++page) {
        p.drawText(100, 100, QString(1000, u'x'));
        ASSERT_TRUE(printer_.newPage());
    }
    EXPECT_TRUE(p.end());
    const QByteArray job = read_file(path("job"));
    EXPECT_GT(job.size(), 500 * 1000);
    EXPECT_EQ(job.count("\n%%Page: "), 501);
    EXPECT_TRUE(job.endsWith("%%EOF\n"));
}

TEST_F(PsPrinterState, noSpoolerIsAnError) {
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    QPainter p;
    EXPECT_FALSE(p.begin(&printer_));
    EXPECT_EQ(printer_.printerState(), QPrinter::Error);
    EXPECT_EQ(printer_.errorString(),
              QStringLiteral("lp is not installed; the Debian package cups-client has it"));
}

TEST_F(PsPrinterState, aSpoolerThatDiesIsAnError) {
    write_script(bin() + QStringLiteral("/lp"), "kill -9 $$\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    QPainter p;
    bool painting = p.begin(&printer_);
    for (int page = 0; page < 100000 && painting; ++page)
        painting = printer_.newPage();
    EXPECT_FALSE(painting);
    EXPECT_EQ(printer_.printerState(), QPrinter::Error);
    p.end();
    EXPECT_TRUE(printer_.errorString().startsWith(QStringLiteral("lp ")))
        << printer_.errorString().toStdString();
}

TEST_F(PsPrinterState, anAbortedJobNeverReachesTheQueue) {
    // A spooler queues what it has when its input ends, and refuses a job of nothing.
    write_script(bin() + QStringLiteral("/lp"),
                 "[ -z \"$(/bin/cat)\" ] && exit 1; : > " + path("queued").toLocal8Bit() + "\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    p.drawText(100, 100, QStringLiteral("hello"));
    printer_.abort();
    p.end();
    EXPECT_FALSE(QFile::exists(path("queued")));
}

TEST_F(PsPrinterState, anAbortedJobDoesNotWaitForASpoolerThatDoesNotEnd) {
    // A job that waits for its end hangs.
    write_script(bin() + QStringLiteral("/lp"), "exec /bin/sleep 3600\n");
    const EnvironmentGuard search("PATH", bin().toLocal8Bit());
    QPainter p;
    ASSERT_TRUE(p.begin(&printer_));
    printer_.abort();
    p.end();
    EXPECT_EQ(printer_.printerState(), QPrinter::Idle);
}

TEST_F(PsPrinterState, copiesOfAFileAreInTheDocument) {
    printer_.setOutputFileName(path("a.ps"));
    printer_.setCopyCount(4);
    QPainter p(&printer_);
    EXPECT_TRUE(p.end());
    EXPECT_TRUE(read_file(path("a.ps")).contains("/NumCopies 4"));
}
