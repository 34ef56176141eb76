#include "tests/host/viewer/viewerfixture.h"
#include "tests/support/tools.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QPrintDialog>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

namespace {

class ViewerJobs : public ViewerTest {
protected:
    /// Makes a script the only ps2pdf.
    testsupport::EnvironmentGuard stub_ps2pdf(const QByteArray& body) const {
        testsupport::write_script(QFile::decodeName(path("ps2pdf")), body);
        return {"PATH", path("") + ":/usr/bin:/bin"};
    }

    /// What a tool does that says that it works, and does not end: a job that waits for it hangs.
    const QByteArray endless_ = "touch " + path("started") + "; exec sleep 3600";
    bool tool_works() const { return files().contains(QStringLiteral("started")); }

    const testsupport::EnvironmentGuard no_server_{"CUPS_SERVER", "/nowhere/cups.sock"};
};

} // namespace

TEST_F(ViewerJobs, theReportIsSavedAsText) {
    open();
    action("next").trigger();
    window_->jobs().save_report(path("out.txt"));
    const QByteArray text = read("out.txt");
    EXPECT_TRUE(text.startsWith("page 1\n\nword 1\n"));
    EXPECT_EQ(text.count('\n'), 90);
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(boxes_.progress, QStringList());
}

TEST_F(ViewerJobs, thePageIsSavedAsText) {
    open();
    action("next").trigger();
    window_->jobs().save_page(path("out.txt"));
    EXPECT_TRUE(read("out.txt").startsWith("page 2"));
    EXPECT_EQ(boxes_.texts, QStringList());
    window_->jobs().save_page(path("no/out.txt"));
    ASSERT_EQ(boxes_.texts.size(), 1);
    EXPECT_TRUE(boxes_.texts.first().startsWith(QStringLiteral("Can not open file: ")));
}

TEST_F(ViewerJobs, theWholeReportIsCopiedAndThePageStays) {
    open();
    action("last").trigger();
    window_->jobs().copy_report();
    EXPECT_EQ(QApplication::clipboard()->text().count(QStringLiteral("<table")), 3);
    EXPECT_EQ(page_box(), QStringLiteral("3 of 3"));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerJobs, aCancelledCopyLeavesTheClipboard) {
    open();
    QApplication::clipboard()->setText(QStringLiteral("earlier"));
    boxes_.cancel_jobs();
    window_->jobs().copy_report();
    EXPECT_EQ(boxes_.progress.size(), 1);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("earlier"));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerJobs, aPrintThatIsCancelledIsNoError) {
    open();
    answers_.then_in<QPrintDialog>([](QPrintDialog& dialog) { dialog.reject(); });
    action("print_page").trigger();
    EXPECT_TRUE(answers_.all_given());
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(window_->focusWidget(), &screen());
}

TEST_F(ViewerJobs, aClipboardThatCannotBeShownIsTold) {
    open();
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("printman0001.html")));
    ASSERT_TRUE(QDir::setCurrent(directory_.path()));
    QApplication::clipboard()->setText(QStringLiteral("text"));
    QTest::keyClick(&screen(), Qt::Key_V, Qt::ControlModifier);
    QDir::setCurrent(before);
    ASSERT_EQ(boxes_.texts.size(), 1);
    EXPECT_TRUE(boxes_.texts.first().startsWith(
        QStringLiteral("The clipboard was not shown in the browser.\n\n")));
}

TEST_F(ViewerJobs, thePdfHoldsTheReport) {
    open();
    window_->jobs().export_pdf(path("out.pdf"));
    EXPECT_TRUE(testsupport::pdf_words(QFile::decodeName(path("out.pdf")))
                    .contains(QStringLiteral("page")));
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
}

TEST_F(ViewerJobs, aFullDiskIsToldOnce) {
    open();
    window_->jobs().save_report("/dev/full");
    window_->jobs().export_pdf("/dev/full");
    ASSERT_EQ(boxes_.texts.size(), 2);
    EXPECT_EQ(boxes_.texts.at(0), QStringLiteral("The report was not saved.\n\ncannot write "
                                                 "/dev/full: No space left on device"));
    EXPECT_EQ(boxes_.texts.at(1), QStringLiteral("The PDF was not made.\n\ncannot write "
                                                 "/dev/full: No space left on device"));
}

TEST_F(ViewerJobs, theReportItselfIsNeverWrittenOver) {
    open();
    const QByteArray before = read("three.rpt");
    window_->jobs().save_report(report_);
    window_->jobs().export_pdf(report_);
    window_->jobs().save_page(report_);
    EXPECT_EQ(boxes_.texts.size(), 3);
    for (const QString& text : boxes_.texts)
        EXPECT_TRUE(text.endsWith(QStringLiteral(" is both input and output")));
    EXPECT_EQ(read("three.rpt"), before);
}

TEST_F(ViewerJobs, aReportThatHasChangedIsToldAndNothingWritten) {
    open();
    write("three.rpt", report(2));
    window_->jobs().save_report(path("out.txt"));
    ASSERT_EQ(boxes_.texts.size(), 1);
    EXPECT_TRUE(boxes_.texts.first().contains(QStringLiteral("has changed since it was opened")));
    ASSERT_TRUE(QFile::remove(QFile::decodeName(report_)));
    window_->jobs().export_pdf(path("out.pdf"));
    ASSERT_EQ(boxes_.texts.size(), 2);
    EXPECT_TRUE(boxes_.texts.last().endsWith(QStringLiteral(": No such file or directory")));
    EXPECT_EQ(files(), QStringList());
}

TEST_F(ViewerJobs, aLongSaveShowsHowFarItIsAndCanBeCanceled) {
    open();
    write("out.txt", "earlier");
    boxes_.cancel_jobs();
    window_->jobs().save_report(path("out.txt"));
    EXPECT_EQ(boxes_.progress, QStringList{QStringLiteral("1 of 3")});
    EXPECT_EQ(read("out.txt"), "earlier");
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(files(), (QStringList{QStringLiteral("out.txt"), QStringLiteral("three.rpt")}));
    EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
    EXPECT_TRUE(window_->isEnabled());
}

TEST_F(ViewerJobs, aPdfCanBeCanceledWhilePs2pdfRuns) {
    const auto stub = stub_ps2pdf(endless_);
    open();
    write("out.pdf", "earlier");
    boxes_.cancel_jobs([this] { return tool_works(); });
    window_->jobs().export_pdf(path("out.pdf"));
    EXPECT_EQ(boxes_.progress.size(), 1);
    EXPECT_EQ(boxes_.texts, QStringList());
    EXPECT_EQ(read("out.pdf"), "earlier");
}

TEST_F(ViewerJobs, aFailedPs2pdfIsTold) {
    const auto stub = stub_ps2pdf("echo no memory; exit 3");
    open();
    write("out.pdf", "earlier");
    window_->jobs().export_pdf(path("out.pdf"));
    ASSERT_EQ(boxes_.texts.size(), 1);
    EXPECT_TRUE(
        boxes_.texts.first().endsWith(QStringLiteral("ps2pdf failed with status 3: no memory")));
    EXPECT_EQ(read("out.pdf"), "earlier");
}

TEST_F(ViewerJobs, theWindowIsNotClosedUnderAJob) {
    const auto stub = stub_ps2pdf(endless_);
    open();
    bool closed = true;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (!tool_works())
            return;
        look.stop();
        closed = window_->close();
        boxes_.cancel_jobs();
    });
    look.start(5);
    window_->jobs().export_pdf(path("out.pdf"));
    EXPECT_FALSE(closed);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(window_->close());
}
