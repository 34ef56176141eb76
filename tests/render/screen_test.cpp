#include <printman/render/screen.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

TEST(Screen, theScreenTurnsMouseAndKeysIntoSignals) {
    CScreen screen(nullptr, nullptr, "name");
    screen.resize(100, 100);
    EXPECT_EQ(screen.objectName(), QStringLiteral("name"));
    QSignalSpy press(&screen, &CScreen::mouse_press);
    QSignalSpy release(&screen, &CScreen::mouse_release);
    QSignalSpy move(&screen, &CScreen::mouse_move);
    QTest::mousePress(&screen, Qt::LeftButton, {}, QPoint(7, 8));
    QTest::mouseMove(&screen, QPoint(9, 10));
    QTest::mouseRelease(&screen, Qt::LeftButton, {}, QPoint(11, 12));
    ASSERT_EQ(press.count(), 1);
    EXPECT_EQ(press[0][0].toPoint(), QPoint(7, 8));
    ASSERT_EQ(release.count(), 1);
    EXPECT_EQ(release[0][0].toPoint(), QPoint(11, 12));
    ASSERT_EQ(move.count(), 1);
    EXPECT_EQ(move[0][0].toPoint(), QPoint(9, 10));
}

TEST(Screen, keysCountOnlyWithControlAlone) {
    CScreen screen(nullptr, nullptr, nullptr);
    QSignalSpy search(&screen, &CScreen::search_text);
    QSignalSpy copy(&screen, &CScreen::copy_text);
    QSignalSpy paste(&screen, &CScreen::paste_text);
    const auto counts = [&] {
        return QList<qsizetype>{search.count(), copy.count(), paste.count()};
    };
    for (const int key : {Qt::Key_F, Qt::Key_C, Qt::Key_V}) {
        for (const Qt::KeyboardModifiers modifiers :
             {Qt::KeyboardModifiers(), Qt::ControlModifier | Qt::ShiftModifier,
              Qt::ControlModifier | Qt::AltModifier, Qt::KeyboardModifiers(Qt::AltModifier)})
            QTest::keyClick(&screen, static_cast<Qt::Key>(key), modifiers);
    }
    QTest::keyClick(&screen, Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(counts(), (QList<qsizetype>{0, 0, 0}));
    QTest::keyClick(&screen, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(counts(), (QList<qsizetype>{1, 0, 0}));
    QTest::keyClick(&screen, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(counts(), (QList<qsizetype>{1, 1, 0}));
    QTest::keyClick(&screen, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(counts(), (QList<qsizetype>{1, 1, 1}));
}

TEST(Screen, otherKeysAreDropped) {
    CScreen screen(nullptr, nullptr, nullptr);
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_PageDown, Qt::NoModifier}, {Qt::Key_C, Qt::AltModifier}}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&screen, &event);
        EXPECT_TRUE(event.isAccepted());
    }
}

TEST(ScreenSignals, andSlotsStandInTheirOrder) {
    const QMetaObject& screen = CScreen::staticMetaObject;
    QList<QByteArray> names;
    for (int i = screen.methodOffset(); i < screen.methodCount(); ++i)
        names << screen.method(i).methodSignature();
    EXPECT_EQ(names, (QList<QByteArray>{"mouse_press(QPoint)", "mouse_release(QPoint)",
                                        "mouse_move(QPoint)", "search_text()", "copy_text()",
                                        "paste_text()"}));
}

TEST(ScreenViewForm, isEmptyAndHasItsCaptionAndSize) {
    const ScreenViewBase form;
    EXPECT_EQ(form.objectName(), QStringLiteral("ScreenViewBase"));
    EXPECT_EQ(form.windowTitle(), QStringLiteral("ScreenViewBase"));
    EXPECT_EQ(form.size(), QSize(600, 480));
    EXPECT_TRUE(form.findChildren<QWidget*>().isEmpty());
    EXPECT_EQ(ScreenViewBase(nullptr, "own").objectName(), QStringLiteral("own"));
}
