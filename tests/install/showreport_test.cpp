#include "tests/support/desktop.h"
#include "tests/support/tools.h"

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QStringList>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using testsupport::ToolResult;

constexpr int poll_milliseconds = 50;

ToolResult xdotool(const QStringList& arguments) {
    return testsupport::run(QStringLiteral("xdotool"), arguments);
}

/// The middle of the window, which stands in the screen's corner: a part of the page alone.
QImage page_picture() {
    constexpr QRect page_area(50, 150, 800, 450);
    return QGuiApplication::primaryScreen()
        ->grabWindow(0)
        .toImage()
        .copy(page_area)
        .convertToFormat(QImage::Format_RGB32);
}

int count_pixels(const QImage& picture, QRgb colour) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixel(x, y) == colour;
    }
    return count;
}

/// The example host as a user runs it, on this program's display.
class ShowReport : public testing::Test {
protected:
    void SetUp() override {
        program_.start(QStringLiteral(SHOW_REPORT), {QStringLiteral(REPORT)});
        ASSERT_TRUE(program_.waitForStarted());
    }

    void TearDown() override {
        program_.kill();
        program_.waitForFinished();
    }

    /// Waits until @p holds: false when the program ends before that.
    template <class Condition>
    bool wait_until(Condition holds) {
        while (program_.state() == QProcess::Running) {
            if (holds())
                return true;
            QTest::qWait(poll_milliseconds);
        }
        return false;
    }

    /// Waits for a window of that title; its number, empty when the program ends before that.
    QString wait_for_window(const QString& title) {
        ToolResult found;
        const bool is_there = wait_until([&] {
            found = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                             QStringLiteral("--name"), u'^' + title + u'$'});
            return found.status == 0;
        });
        return is_there ? QString::fromLatin1(found.out).section(u'\n', 0, 0) : QString();
    }

    QProcess program_;
};

} // namespace

TEST_F(ShowReport, showsEveryPageAndEndsWhenItsWindowIsClosed) {
    const QString window = wait_for_window(QStringLiteral("Page 1 of 5"));
    ASSERT_FALSE(window.isEmpty()) << program_.readAllStandardError().constData();
    // Mostly sheet, with text on it.
    QImage first;
    ASSERT_TRUE(wait_until([&first] {
        first = page_picture();
        return count_pixels(first, qRgb(255, 255, 255)) > 100000 &&
               count_pixels(first, qRgb(0, 0, 0)) > 1000;
    }));

    // Without a window manager nobody gives it the keyboard.
    xdotool({QStringLiteral("windowfocus"), window});
    testsupport::input::key(QStringLiteral("Next"));
    EXPECT_FALSE(wait_for_window(QStringLiteral("Page 2 of 5")).isEmpty());
    EXPECT_TRUE(wait_until([&] { return page_picture() != first; }));
    testsupport::input::key(QStringLiteral("End"));
    EXPECT_FALSE(wait_for_window(QStringLiteral("Page 5 of 5")).isEmpty());
    testsupport::input::key(QStringLiteral("Home"));
    EXPECT_FALSE(wait_for_window(QStringLiteral("Page 1 of 5")).isEmpty());
    EXPECT_TRUE(wait_until([&] { return page_picture() == first; }));

    testsupport::input::key(QStringLiteral("ctrl+q"));
    EXPECT_FALSE(wait_until([] { return false; }));
    EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program_.exitCode(), 0);
}
