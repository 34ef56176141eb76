#include "tests/support/ownhome.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const testsupport::OwnHome home;
    QApplication application(argc, argv);
    // The system's messages are as the tests state them; all else is as in the caller's locale.
    std::setlocale(LC_MESSAGES, "C");
    return RUN_ALL_TESTS();
}
