#include "host/viewer/helpwindow.h"
#include "host/viewer/zoombox.h"
#include "tests/host/viewer/viewerfixture.h"
#include "tests/support/waiting.h"

#include <printman/printman.h>

#include <QApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QTextBrowser>
#include <QToolBar>
#include <QUrl>
#include <QWheelEvent>

namespace {

class Viewer : public ViewerTest {
protected:
    void wheel(int turn) const {
        const QPointF at(50, 50);
        QWheelEvent event(at, screen().mapToGlobal(at), {}, {0, turn}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&screen(), &event);
    }

    void type_page(const char* text) const {
        action("go_to").trigger();
        QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(text));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }

    QString zoom_box() const { return window_->findChild<host::ZoomBox*>()->currentText(); }

    void drag(QPoint from, QPoint to) const {
        QTest::mousePress(&screen(), Qt::LeftButton, {}, from);
        QTest::mouseMove(&screen(), to);
        QTest::mouseRelease(&screen(), Qt::LeftButton, {}, to);
    }
};

} // namespace

TEST_F(Viewer, showsTheFirstPageAndSaysWhichItIs) {
    open();
    EXPECT_EQ(window_->windowTitle(), QStringLiteral("three.rpt \u2013 printman"));
    EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
    EXPECT_EQ(status(), QStringLiteral("80 x 30, 3 pages | Page 1"));
    EXPECT_EQ(zoom_box(), QStringLiteral("100%"));
    EXPECT_EQ(QApplication::focusWidget(), &screen());
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(Viewer, keysTurnPages) {
    open();
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&screen(), key, modifiers);
        return page_box();
    };
    EXPECT_EQ(press(Qt::Key_PageDown), QStringLiteral("2 of 3"));
    EXPECT_EQ(window_->view()->manager().page_row(0).first().text, QStringLiteral("page 2"));
    EXPECT_EQ(press(Qt::Key_End, Qt::ControlModifier), QStringLiteral("3 of 3"));
    EXPECT_EQ(press(Qt::Key_PageDown), QStringLiteral("3 of 3"));
    EXPECT_EQ(press(Qt::Key_PageUp), QStringLiteral("2 of 3"));
    EXPECT_EQ(press(Qt::Key_Home, Qt::ControlModifier), QStringLiteral("1 of 3"));
    EXPECT_EQ(press(Qt::Key_PageUp), QStringLiteral("1 of 3"));
    EXPECT_EQ(status(), QStringLiteral("80 x 30, 3 pages | Page 1"));
}

TEST_F(Viewer, actionsTellTheTruth) {
    open();
    const auto enabled = [this] {
        QByteArray list;
        for (const char* name :
             {"first", "previous", "next", "last", "zoom_in", "zoom_out", "zoom_usual", "copy"})
            list += action(name).isEnabled() ? '1' : '0';
        return list;
    };
    EXPECT_EQ(enabled(), "00111100");
    action("next").trigger();
    EXPECT_EQ(enabled(), "11111100");
    action("last").trigger();
    EXPECT_EQ(enabled(), "11001100");
    action("fit").trigger();
    EXPECT_EQ(enabled(), "11001010");
    EXPECT_TRUE(action("fit").isChecked());
    action("fit").trigger();
    EXPECT_EQ(enabled(), "11001100");
    for (int i = 0; i < 9; ++i)
        action("zoom_in").trigger();
    EXPECT_EQ(enabled(), "11000110");
    for (int i = 0; i < 9; ++i)
        action("zoom_out").trigger();
    EXPECT_EQ(enabled(), "11001010");
}

TEST_F(Viewer, aTypedNumberTurnsToThatPage) {
    open();
    type_page("3");
    EXPECT_EQ(page_box(), QStringLiteral("3 of 3"));
    EXPECT_EQ(QApplication::focusWidget(), &screen());
    type_page("2 of 3");
    EXPECT_EQ(page_box(), QStringLiteral("2 of 3"));
}

TEST_F(Viewer, aNumberOfNoPageIsToldAndMayBeTypedAgain) {
    open();
    for (const char* wrong : {"4", "0", "x", "99999999999"}) {
        type_page(wrong);
        EXPECT_EQ(window_->view()->page(), 1);
        auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_TRUE(box);
        EXPECT_EQ(box->selectedText(), QString::fromLatin1(wrong));
        QTest::keyClick(box, Qt::Key_Escape);
        EXPECT_EQ(QApplication::focusWidget(), &screen());
        EXPECT_EQ(page_box(), QStringLiteral("1 of 3"));
    }
    EXPECT_EQ(boxes_.texts, QStringList());
}

TEST_F(Viewer, ctrlAndTheWheelZoomByWholeNotches) {
    open();
    const int width = screen().width();
    wheel(120);
    EXPECT_EQ(zoom_box(), QStringLiteral("150%"));
    EXPECT_GT(screen().width(), width);
    wheel(60);
    EXPECT_EQ(zoom_box(), QStringLiteral("150%"));
    wheel(60);
    EXPECT_EQ(zoom_box(), QStringLiteral("200%"));
    for (int i = 0; i < 9; ++i)
        wheel(-120);
    EXPECT_EQ(zoom_box(), QStringLiteral("50%"));
    EXPECT_LT(screen().width(), width);
}

TEST_F(Viewer, keysZoom) {
    open();
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers more = {}) {
        QTest::keyClick(&screen(), key, Qt::ControlModifier | more);
        return zoom_box();
    };
    EXPECT_EQ(press(Qt::Key_Plus), QStringLiteral("150%"));
    EXPECT_EQ(press(Qt::Key_Equal), QStringLiteral("200%"));
    EXPECT_EQ(press(Qt::Key_Plus, Qt::KeypadModifier), QStringLiteral("250%"));
    EXPECT_EQ(press(Qt::Key_Minus), QStringLiteral("200%"));
    EXPECT_EQ(press(Qt::Key_Minus, Qt::KeypadModifier), QStringLiteral("150%"));
    EXPECT_EQ(press(Qt::Key_9), QStringLiteral("Fit page"));
    EXPECT_EQ(press(Qt::Key_Plus), QStringLiteral("150%"));
    EXPECT_EQ(press(Qt::Key_0), QStringLiteral("100%"));
}

TEST_F(Viewer, aFittedPageFollowsTheWindow) {
    open();
    auto* box = window_->findChild<host::ZoomBox*>();
    box->setFocus();
    emit box->activated(box->count() - 1);
    EXPECT_TRUE(window_->view()->fits());
    EXPECT_EQ(QApplication::focusWidget(), &screen());
    const QSize before = screen().size();
    EXPECT_LE(before.height(), window_->view()->height());
    window_->resize(1000, 900);
    QCoreApplication::processEvents();
    EXPECT_GT(screen().height(), before.height());
    EXPECT_LE(screen().height(), window_->view()->height());
}

TEST_F(Viewer, keysScroll) {
    open();
    action("zoom_in").trigger();
    vertical().setValue(0);
    QTest::keyClick(&screen(), Qt::Key_Down);
    const int line = vertical().value();
    EXPECT_GT(line, 0);
    QTest::keyClick(&screen(), Qt::Key_Space);
    EXPECT_GT(vertical().value(), line + 100);
    QTest::keyClick(&screen(), Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(vertical().value(), line);
    QTest::keyClick(&screen(), Qt::Key_Up);
    EXPECT_EQ(vertical().value(), 0);
    QTest::keyClick(&screen(), Qt::Key_Down);
    QTest::keyClick(&screen(), Qt::Key_PageDown);
    EXPECT_EQ(vertical().value(), 0);
}

TEST_F(Viewer, theStatusBarFollowsTheSelection) {
    open();
    const QFontMetrics metrics(screen().font());
    const int line = metrics.height();
    drag({22, 20 + 3}, {22 + metrics.maxWidth() * 3, 20 + 3});
    EXPECT_TRUE(status().contains(QStringLiteral(" | 1 piece, "))) << status().toStdString();
    EXPECT_TRUE(action("copy").isEnabled());
    drag({22, 20 + line / 2}, {300, 20 + line * 4 + line / 2});
    EXPECT_TRUE(status().contains(QStringLiteral("pieces"))) << status().toStdString();
    QTest::mouseClick(&screen(), Qt::LeftButton, {}, {60, 60});
    EXPECT_EQ(status(), QStringLiteral("80 x 30, 3 pages | Page 1"));
    EXPECT_FALSE(action("copy").isEnabled());
    drag({22, 20 + 3}, {300, 20 + 3});
    action("next").trigger();
    EXPECT_EQ(status(), QStringLiteral("80 x 30, 3 pages | Page 2"));
    EXPECT_FALSE(action("copy").isEnabled());
}

TEST_F(Viewer, aDroppedFileIsOpened) {
    open();
    write("two.rpt", report(2));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QFile::decodeName(path("two.rpt")))});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window_.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(window_.get(), &drop);
    EXPECT_TRUE(testsupport::wait_for([this] { return page_box() == QStringLiteral("1 of 2"); }));
    EXPECT_EQ(QApplication::focusWidget(), &screen());

    data.setUrls({QUrl(QStringLiteral("https://example.org/two.rpt"))});
    QDragEnterEvent foreign({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, {});
    foreign.ignore();
    QApplication::sendEvent(window_.get(), &foreign);
    EXPECT_FALSE(foreign.isAccepted());
}

TEST_F(Viewer, theHelpListsTheKeys) {
    open();
    QTest::keyClick(&screen(), Qt::Key_F1);
    auto* help = window_->findChild<host::HelpWindow*>();
    ASSERT_TRUE(help);
    EXPECT_TRUE(help->isVisible());
    const QString text = help->findChild<QTextBrowser*>()->toPlainText();
    int keys = 0;
    for (const QAction* entry : window_->actions()) {
        for (const QKeySequence& key : entry->shortcuts()) {
            EXPECT_TRUE(text.contains(key.toString(QKeySequence::NativeText)))
                << key.toString().toStdString();
            ++keys;
        }
    }
    EXPECT_GT(keys, 10);
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
}
