#include "host/viewer/zoombox.h"
#include "tests/host/viewer/viewerfixture.h"
#include "tests/support/tools.h"

#include <printman/printman.h>

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QTest>

namespace {

class ViewerErrors : public ViewerTest {
protected:
    QImage shown() const { return screen().grab().toImage(); }

    QString zoom_box() const { return window_->findChild<host::ZoomBox*>()->currentText(); }

    /// That one box was opened since the last call, and what it said.
    QString told() {
        EXPECT_EQ(boxes_.texts.size(), 1);
        QString text = boxes_.texts.value(0);
        boxes_.texts.clear();
        return text;
    }

    QMenu& recent() const {
        QMenu* menu = action("reload").parent()->findChild<QMenu*>(QStringLiteral("recent"));
        emit menu->aboutToShow();
        return *menu;
    }
};

} // namespace

TEST_F(ViewerErrors, aFileThatIsNoReportIsToldAndTheShownOneStays) {
    open();
    action("next").trigger();
    const QImage before = shown();
    write("none.rpt", "just text\n");
    window_->open_or_report(path("none.rpt"));
    EXPECT_TRUE(told().startsWith(QStringLiteral("The report cannot be opened.\n\n")));
    window_->open_or_report(path("missing.rpt"));
    EXPECT_TRUE(told().endsWith(QStringLiteral("missing.rpt: No such file or directory")));
    window_->open_or_report("/");
    EXPECT_TRUE(told().endsWith(QStringLiteral("/: Is a directory")));
    window_->open_or_report(path(QByteArray(250, 'n')));
    EXPECT_TRUE(told().contains(QStringLiteral("longer than 255 bytes")));
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(QFile::decodeName(window_->view()->path()), QFile::decodeName(report_));
}

TEST_F(ViewerErrors, aRemovedReportIsToldOnceAndThePageStays) {
    open();
    action("next").trigger();
    const QImage before = shown();
    ASSERT_TRUE(QFile::remove(QFile::decodeName(report_)));
    action("next").trigger();
    EXPECT_EQ(told(), QStringLiteral("The page cannot be shown.\n\n%1: No such file or directory")
                          .arg(QFile::decodeName(report_)));
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
    EXPECT_EQ(status(), QStringLiteral("80 x 30, 3 pages | Page 2"));
    EXPECT_EQ(shown(), before);
    EXPECT_TRUE(action("next").isEnabled());
    EXPECT_TRUE(action("previous").isEnabled());
    action("zoom_in").trigger();
    action("zoom_out").trigger();
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerErrors, aTruncatedReportIsToldOnceAndThePageStays) {
    open();
    write("three.rpt", report(1));
    action("last").trigger();
    EXPECT_TRUE(told().contains(QStringLiteral("Page 3 cannot be read; the file has changed")));
    EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
    action("reload").trigger();
    EXPECT_EQ(page_box(), QStringLiteral("1 of 1"));
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(ViewerErrors, aReportIsReloadedAtItsPage) {
    open();
    action("last").trigger();
    write("three.rpt", report(5));
    action("reload").trigger();
    EXPECT_EQ(page_box(), QStringLiteral("3 of 5"));
    action("last").trigger();
    write("three.rpt", report(2));
    action("reload").trigger();
    EXPECT_EQ(page_box(), QStringLiteral("2 of 2"));
}

TEST_F(ViewerErrors, aZoomThatNeedsTooMuchMemoryIsLeftAgain) {
    write("wide.rpt", report(1, 1300, 3));
    open(path("wide.rpt"));
    EXPECT_EQ(zoom_box(), QStringLiteral("Fit page"));
    EXPECT_EQ(boxes_.texts, QStringList());
    const auto expect_refusal = [this](const QString& zoom) {
        const QSize before = screen().size();
        action("zoom_in").trigger();
        EXPECT_TRUE(
            told().endsWith(QStringLiteral("There is not enough memory for a page at 100%")));
        EXPECT_EQ(zoom_box(), zoom);
        EXPECT_EQ(screen().size(), before);
        const QPixmap* image = window_->view()->manager().page_image();
        ASSERT_TRUE(image);
        EXPECT_EQ(image->deviceIndependentSize().toSize(), before);
    };
    expect_refusal(QStringLiteral("Fit page"));
    emit window_->findChild<host::ZoomBox*>()->activated(0);
    EXPECT_EQ(zoom_box(), QStringLiteral("50%"));
    expect_refusal(QStringLiteral("50%"));
}

TEST_F(ViewerErrors, recentFilesCanBeOpenedAndGoneOnesAreForgotten) {
    open();
    write("t&wo.rpt", report(2));
    window_->open_or_report(path("t&wo.rpt"));
    ASSERT_EQ(recent().actions().size(), 4);
    EXPECT_EQ(recent().actions().at(0)->text(), QStringLiteral("&1  t&&wo.rpt"));
    recent().actions().at(1)->trigger();
    EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
    ASSERT_TRUE(QFile::remove(QFile::decodeName(path("t&wo.rpt"))));
    recent().actions().at(1)->trigger();
    EXPECT_TRUE(told().endsWith(QStringLiteral("t&wo.rpt: No such file or directory")));
    EXPECT_EQ(recent().actions().size(), 3);
    recent().actions().last()->trigger();
    EXPECT_EQ(recent().actions().size(), 1);
}

TEST_F(ViewerErrors, windowAndZoomAreKeptForTheNextRun) {
    open();
    action("zoom_in").trigger();
    window_->resize(640, 480);
    ASSERT_TRUE(window_->close());
    window_ = std::make_unique<host::ViewerWindow>(host::ViewerState(path("state")));
    ASSERT_TRUE(window_->open(report_).ok());
    EXPECT_EQ(window_->size(), QSize(640, 480));
    EXPECT_EQ(zoom_box(), QStringLiteral("150%"));
}

TEST_F(ViewerErrors, aHostileStateFileChangesNothing) {
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("state")));
    QByteArray geometry = QByteArray::fromHex("01d9d0cb00030000") + QByteArray(60, '\x7f');
    for (const QByteArray& code : {geometry.toBase64(), QByteArray("AAAA"), QByteArray("?")}) {
        write("state/viewer.ini", "[viewer]\nzoom=0%\ngeometry=" + code + "\nrecent=%%% \n");
        open();
        EXPECT_EQ(zoom_box(), QStringLiteral("100%"));
        const QSize room = window_->screen()->availableSize();
        EXPECT_LE(window_->width(), room.width());
        EXPECT_LE(window_->height(), room.height());
        window_.reset();
    }
}
