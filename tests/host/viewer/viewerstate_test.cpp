#include "host/viewer/viewerstate.h"
#include "tests/host/program.h"
#include "tests/support/tools.h"

#include <QDir>
#include <QFile>

using namespace host;
using testsupport::EnvironmentGuard;

namespace {

class ViewerStateTest : public testing::Test {
protected:
    QByteArray place() const { return QFile::encodeName(directory_.path()) + "/a/b"; }

    void write(const QByteArray& text) const {
        QDir().mkpath(QFile::decodeName(place()));
        testsupport::write_file(QFile::decodeName(place() + "/viewer.ini"), text);
    }

    QTemporaryDir directory_;
};

} // namespace

TEST_F(ViewerStateTest, isKeptInADirectoryThatIsMade) {
    const ViewerState state(place());
    EXPECT_TRUE(state.recent().isEmpty());
    EXPECT_EQ(state.geometry(), "");
    EXPECT_EQ(state.zoom(), QString());
    EXPECT_TRUE(state.shows("toolbar"));
    state.add_recent("/tmp/a \xff%\n.rpt");
    state.add_recent("/tmp/b.rpt");
    const QByteArray geometry("\0\n\xff=[]", 6);
    state.keep_geometry(geometry);
    state.keep_zoom(QStringLiteral("150%"));
    state.keep_shown("toolbar", false);
    const ViewerState other(place());
    EXPECT_EQ(other.recent(), (QList<QByteArray>{"/tmp/b.rpt", "/tmp/a \xff%\n.rpt"}));
    EXPECT_EQ(other.geometry(), geometry);
    EXPECT_EQ(other.zoom(), QStringLiteral("150%"));
    EXPECT_FALSE(other.shows("toolbar"));
    EXPECT_TRUE(other.shows("statusbar"));
}

TEST_F(ViewerStateTest, recentFilesStandOnceAndAreFew) {
    const ViewerState state(place());
    for (int i = 0; i < 14; ++i)
        state.add_recent("/f" + QByteArray::number(i));
    EXPECT_EQ(state.recent().size(), 10);
    EXPECT_EQ(state.recent().first(), "/f13");
    state.add_recent("/f9");
    EXPECT_EQ(state.recent().size(), 10);
    EXPECT_EQ(state.recent().first(), "/f9");
    EXPECT_EQ(state.recent().count("/f9"), 1);
    state.remove_recent("/f9");
    EXPECT_EQ(state.recent().first(), "/f13");
    state.clear_recent();
    EXPECT_TRUE(state.recent().isEmpty());
}

TEST_F(ViewerStateTest, hostileContentsAreIgnored) {
    const ViewerState state(place());
    write("[viewer]\nrecent=relative %00 /a%00b /good /good " + QByteArray("/x").repeated(9000) +
          " %\ngeometry=!!!\nzoom=\xff\xfe\ntoolbar=7\n");
    EXPECT_EQ(state.recent(), QList<QByteArray>{"/good"});
    EXPECT_TRUE(state.shows("toolbar"));
    write(QByteArray(1000000, '\0'));
    EXPECT_TRUE(state.recent().isEmpty());
    QByteArray many;
    for (int i = 0; i < 100000; ++i)
        many += " /f" + QByteArray::number(i);
    write("[viewer]\nrecent=" + many);
    EXPECT_EQ(state.recent().size(), 10);
}

TEST_F(ViewerStateTest, whereNothingCanBeWrittenNothingIsKept) {
    testsupport::write_file(directory_.filePath(QStringLiteral("a")), "a file");
    const ViewerState state(place());
    state.add_recent("/tmp/a");
    state.keep_zoom(QStringLiteral("50%"));
    EXPECT_TRUE(state.recent().isEmpty());
    EXPECT_EQ(testsupport::read_file(directory_.filePath(QStringLiteral("a"))), "a file");
}

TEST_F(ViewerStateTest, livesWhereTheEnvironmentSays) {
    const EnvironmentGuard home("HOME", "/home/me");
    const EnvironmentGuard state("XDG_STATE_HOME", "/state");
    EXPECT_EQ(default_state_directory(), "/state/printman");
    qputenv("XDG_STATE_HOME", "relative");
    EXPECT_EQ(default_state_directory(), "/home/me/.local/state/printman");
    qunsetenv("XDG_STATE_HOME");
    EXPECT_EQ(default_state_directory(), "/home/me/.local/state/printman");
}
