#include "tests/support/desktop.h"
#include "tests/support/ownhome.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <clocale>

// A main() for tests of real windows: they open on a display of the program's own.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    // Listing the tests needs no display.
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const testsupport::OwnHome home;
    const testsupport::Desktop desktop;
    QApplication application(argc, argv);
    // The system's messages are as the tests state them; all else is as in the caller's locale.
    std::setlocale(LC_MESSAGES, "C");
    return RUN_ALL_TESTS();
}
