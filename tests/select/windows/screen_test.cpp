#include "tests/support/desktop.h"
#include "tests/support/reportonscreen.h"
#include "tests/support/waiting.h"

#include <QClipboard>
#include <QFontMetrics>
#include <QScreen>

// A report on a real display, with a mouse and a keyboard that are no objects of this program.

namespace {

namespace input = testsupport::input;
using testsupport::wait_for;

const QByteArray report = "#!?PAGETOP 60,20\n"
                          "#!?L1,8,8;Alpha    #!?R10,8,8;    1.25  #!?R20,8,8;   17.50\n"
                          "\n"
                          "#!?L1,8,8;Beta     #!?R10,8,8;    2.25  #!?R20,8,8;   27.50\n"
                          "#!?PAGEEND\n"
                          "#!?PAGETOP\nPage two\n#!?PAGEEND\n";

class ReportOnDisplay : public ReportOnScreen {
protected:
    void SetUp() override {
        show(report);
        ASSERT_TRUE(input::activate(window_));
        ASSERT_TRUE(screen()->hasFocus());
    }

    QPoint at(int column, int row) const {
        const QFontMetrics metrics(screen()->font(), screen());
        return {20 + column * metrics.maxWidth() + metrics.maxWidth() / 2,
                20 + row * metrics.height() + metrics.height() / 2};
    }

    void drag(QPoint from, QPoint to) {
        input::move(*screen(), from);
        input::press();
        input::move(*screen(), (from + to) / 2);
        input::move(*screen(), to);
        input::release();
    }

    /// What the display shows of the screen widget.
    QImage on_display(const QRect& place) const {
        const QPoint corner = screen()->mapToGlobal(place.topLeft());
        return QApplication::primaryScreen()
            ->grabWindow(0, corner.x(), corner.y(), place.width(), place.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }
};

} // namespace

TEST_F(ReportOnDisplay, aDragSelectsWhatIsUnderIt) {
    drag(at(0, 0), at(27, 0));
    ASSERT_TRUE(wait_for([this] { return manager_.hilights().size() == 3; }));
    EXPECT_EQ(manager_.hilights().back().text, QStringLiteral("17.50"));
    input::move(*screen(), at(40, 8));
    input::press();
    input::release();
    EXPECT_TRUE(wait_for([this] { return manager_.hilights().empty(); }));
}

TEST_F(ReportOnDisplay, whatIsSeenIsTheImage) {
    const QRect place(0, 0, 500, 200);
    EXPECT_TRUE(wait_for([&] {
        return on_display(place) == image().convertToFormat(QImage::Format_RGB32).copy(place);
    }));
    drag(at(0, 0), at(27, 2));
    input::move(*screen(), QPoint(600, 400));
    EXPECT_TRUE(wait_for([&] {
        return !manager_.hilights().empty() &&
               on_display(place) == image().convertToFormat(QImage::Format_RGB32).copy(place);
    }));
}

TEST_F(ReportOnDisplay, controlCCopiesTheSelection) {
    QApplication::clipboard()->clear();
    drag(at(0, 0), at(59, 3));
    ASSERT_TRUE(wait_for([this] { return manager_.hilights().size() == 6; }));
    input::key(QStringLiteral("ctrl+c"));
    const QString copied = QStringLiteral("<html><head><title></title></head><body><table>"
                                          "<tr><td>Alpha</td><td>1.25</td><td>17.50</td></tr>"
                                          "<tr><td>Beta</td><td>2.25</td><td>27.50</td></tr>"
                                          "</table></body></html>");
    EXPECT_TRUE(wait_for([&] { return QApplication::clipboard()->text() == copied; }))
        << QApplication::clipboard()->text().toStdString();
    input::key(QStringLiteral("ctrl+shift+c"));
    EXPECT_EQ(QApplication::clipboard()->text(), copied);
}

TEST_F(ReportOnDisplay, controlVHandsTheClipboardToTheBrowser) {
    const QString bin = scratch_.filePath(QStringLiteral("bin"));
    const QString heard = scratch_.filePath(QStringLiteral("heard"));
    ASSERT_TRUE(QDir().mkdir(bin));
    testsupport::write_script(bin + QStringLiteral("/dlwbrw"),
                              "cat \"$1\" > '" + heard.toLocal8Bit() + ".new' && mv '" +
                                  heard.toLocal8Bit() + ".new' '" + heard.toLocal8Bit() + "'\n");
    const testsupport::EnvironmentGuard path("PATH", bin.toLocal8Bit() + ':' + qgetenv("PATH"));
    const QString before = QDir::currentPath();
    QDir::setCurrent(scratch_.path());
    QApplication::clipboard()->setText(QStringLiteral("pasted text"));
    input::key(QStringLiteral("ctrl+v"));
    EXPECT_TRUE(wait_for([&] { return testsupport::read_file(heard) == "pasted text"; }));
    QDir::setCurrent(before);
}

TEST_F(ReportOnDisplay, theWheelScrolls) {
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    input::move(*screen(), QPoint(100, 100));
    input::wheel(2);
    EXPECT_TRUE(wait_for([this] { return view()->contentsY() > 0; }));
    const int down = view()->contentsY();
    input::wheel(-1);
    EXPECT_TRUE(wait_for([&] { return view()->contentsY() < down; }));
}

TEST_F(ReportOnDisplay, aDragOverTheEdgeScrolls) {
    manager_.zoom_rpt_page(QStringLiteral("300%"));
    input::move(*screen(), QPoint(100, 100));
    input::press();
    const QSize seen = view()->viewport()->size();
    input::move(*view(), QPoint(seen.width() + 20, seen.height() + 20));
    EXPECT_TRUE(wait_for([this] { return view()->contentsX() > 0 && view()->contentsY() > 0; }));
    input::release();
    EXPECT_FALSE(manager_.hilights().empty());
}

TEST_F(ReportOnDisplay, theMouseIsRightAtEveryZoomAndScrollPosition) {
    for (const char* zoom : {"50%", "150%", "300%"}) {
        manager_.zoom_rpt_page(QString::fromLatin1(zoom));
        view()->setContentsPos(40, 15);
        input::settle();
        drag(at(9, 2), at(28, 2));
        EXPECT_TRUE(wait_for([this] {
            return !manager_.hilights().empty() &&
                   manager_.hilights().front().text == QStringLiteral("2.25") &&
                   manager_.hilights().back().text == QStringLiteral("27.50");
        })) << zoom;
    }
}
