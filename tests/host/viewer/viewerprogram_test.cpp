#include "tests/host/program.h"
#include "tests/support/tools.h"

#include <QElapsedTimer>
#include <QThread>

#include <csignal>

namespace {

class ViewerProgram : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        write(QStringLiteral("in.rpt"), small_report);
        environment_.insert(QStringLiteral("XDG_STATE_HOME"), path(QStringLiteral("state")));
    }

    void use_display() {
        // One that cannot be started is not looked for: libdbus leaks when it does.
        environment_.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                            QStringLiteral("disabled:"));
        environment_.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(qgetenv("DISPLAY")));
    }

    static bool window_is_open() {
        return testsupport::run(QStringLiteral("xdotool"),
                                {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                 QStringLiteral("--name"), QStringLiteral("^in.rpt .* printman$")})
                   .status == 0;
    }

    Ended view(const char* file = "in.rpt") const {
        return run({QStringLiteral("view"), QString::fromLatin1(file)});
    }
};

} // namespace

TEST_F(ViewerProgram, withoutADisplayItEndsWithOneLine) {
    expect_failure(view(), "cannot open a window: there is no display; neither DISPLAY nor "
                           "WAYLAND_DISPLAY is set");
    environment_.insert(QStringLiteral("DISPLAY"), QStringLiteral(":4242"));
    expect_failure(view(), "cannot open a window: there is no display for DISPLAY=:4242");
    environment_.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("nonsense"));
    expect_failure(view(),
                   "cannot open a window: there is no display for QT_QPA_PLATFORM=nonsense");
    EXPECT_EQ(files(), QStringList{QStringLiteral("in.rpt")});
}

TEST_F(ViewerProgram, aFileThatIsNoReportEndsItWithOneLine) {
    use_display();
    write(QStringLiteral("none"), "text\n");
    expect_failure(view("missing"), "missing: No such file or directory");
    const Ended result = view("none");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.error.startsWith("printman: none: "));
    EXPECT_EQ(result.error.count('\n'), 1);
}

TEST_F(ViewerProgram, interruptsCloseTheWindow) {
    use_display();
    for (const int number : {SIGTERM, SIGINT}) {
        const Ended result =
            interrupt({QStringLiteral("view"), QStringLiteral("in.rpt")}, number, window_is_open);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
    }
    EXPECT_TRUE(read(QStringLiteral("state/printman/viewer.ini")).contains("zoom=100%"));
}

TEST_F(ViewerProgram, aDirectoryThatTakesNoStateIsNoError) {
    use_display();
    write(QStringLiteral("state"), "a file");
    const Ended result =
        interrupt({QStringLiteral("view"), QStringLiteral("in.rpt")}, SIGTERM, window_is_open);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(read(QStringLiteral("state")), "a file");
}
