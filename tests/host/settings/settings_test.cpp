#include "host/settings/inifile.h"
#include "host/settings/settings.h"
#include "tests/support/tools.h"

#include <printman/printer/hostservices.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <sys/stat.h>

namespace {

using host::IniFile;
using testsupport::read_file;
using testsupport::write_file;

/// A settings directory of its own, that the host services answer from.
class SettingsFiles : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(directory_.isValid());
        host::host_settings() = host::Settings(QFile::encodeName(directory_.path()));
        for (const char* name : {"TMPDIR", "PRTINI", "NOPAGEMAP", "PRINTMAN_TEST_KEY"})
            qunsetenv(name);
    }

    QString path(const char* name) const { return directory_.filePath(QString::fromLatin1(name)); }

    QTemporaryDir directory_;
};

} // namespace

TEST(IniFile, findsValues) {
    const IniFile ini("; comment\nLOOSE=1\n[env]\n TMPDIR = /var/tmp \n# TMPDIR=/no\nEMPTY=\n"
                      "[Color]\r\nKRV_COLOR_SBG=1,2,3\r\n[ENV]\nTMPDIR=/second\nlate=yes\nA=B=C");
    EXPECT_EQ(ini.value("env", "TMPDIR"), QByteArray("/var/tmp"));
    EXPECT_EQ(ini.value("ENV", "tmpdir"), QByteArray("/var/tmp"));
    EXPECT_EQ(ini.value("env", "EMPTY"), QByteArray(""));
    EXPECT_EQ(ini.value("env", "LATE"), QByteArray("yes"));
    EXPECT_EQ(ini.value("env", "A"), QByteArray("B=C"));
    EXPECT_EQ(ini.value("color", "krv_color_sbg"), QByteArray("1,2,3"));
    EXPECT_EQ(ini.value("", "LOOSE"), QByteArray("1"));
    EXPECT_EQ(ini.value("env", "LOOSE"), std::nullopt);
    EXPECT_EQ(ini.value("none", "TMPDIR"), std::nullopt);
}

TEST(IniFile, hostileBytesDoNoHarm) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("["), QByteArray("[env"), QByteArray("="), QByteArray("\0", 1),
          QByteArray(100000, 'x'), QByteArray("[env]\n") + QByteArray(100000, '='),
          QByteArray("[]\nK=v"), QByteArray("\r\r\r\n\n"), QByteArray("[env]\rK=v")}) {
        const IniFile ini(bytes);
        EXPECT_EQ(ini.value("env", "K"), std::nullopt);
        EXPECT_EQ(ini.value("", "TMPDIR"), std::nullopt);
    }
    const IniFile zero(QByteArray("[env]\nK=a\0b\nL=\xe9\n", 16));
    EXPECT_EQ(zero.value("env", "K"), QByteArray("a"));
    EXPECT_EQ(zero.value("env", "L"), QByteArray("\xe9"));
}

TEST(IniFile, settingChangesOneLineAlone) {
    struct Case {
        QByteArray before;
        const char* section;
        const char* key;
        QByteArray after;
    };
    for (const Case& c : {
             Case{"", "env", "K", "[env]\nK=v\n"},
             Case{"[env]\n; c\nK = old \n\nX=1\n", "env", "K", "[env]\n; c\nK=v\n\nX=1\n"},
             Case{"[ENV]\nk=old\nk=second\n", "env", "K", "[ENV]\nK=v\nk=second\n"},
             Case{"[env]\nX=1\n\n\n[color]\nY=2\n", "env", "K",
                  "[env]\nX=1\nK=v\n\n\n[color]\nY=2\n"},
             Case{"[env]\n[color]\n", "env", "K", "[env]\nK=v\n[color]\n"},
             Case{"[color]\nK=1\n", "env", "K", "[color]\nK=1\n[env]\nK=v\n"},
             Case{"[env]\r\nX=1\r\n", "env", "K", "[env]\r\nX=1\r\nK=v\r\n"},
             Case{"[env]\r\nK=1\r\nX=1", "env", "K", "[env]\r\nK=v\r\nX=1"},
             Case{"[env]\nX=1", "env", "K", "[env]\nX=1\nK=v\n"},
             Case{"what is this\n[env\n[env]\n=\n", "env", "K",
                  "what is this\n[env\n[env]\n=\nK=v\n"},
             Case{"[a]\nX=1\n", "", "K", "K=v\n[a]\nX=1\n"},
         }) {
        IniFile ini(c.before);
        EXPECT_TRUE(ini.set(c.section, c.key, "v"));
        EXPECT_EQ(ini.bytes(), c.after);
        EXPECT_EQ(ini.value(c.section, c.key), QByteArray("v"));
    }
}

TEST(IniFile, whatNoLineCanHoldIsRefused) {
    const QByteArray before("[env]\nK=1\n");
    IniFile ini(before);
    EXPECT_FALSE(ini.set("env", "", "v"));
    EXPECT_FALSE(ini.set("env", "K", "a\nL=b"));
    EXPECT_FALSE(ini.set("env", "K", "a\rb"));
    EXPECT_FALSE(ini.set("env", "K", QByteArray("a\0b", 3)));
    EXPECT_FALSE(ini.set("env", "K\n", "v\nv"));
    EXPECT_FALSE(ini.set("env", ";K", "v"));
    EXPECT_FALSE(ini.set("env", "[K", "v"));
    EXPECT_FALSE(ini.set("env", "A=B", "v"));
    EXPECT_FALSE(ini.set("a]b", "K", "v"));
    EXPECT_FALSE(ini.set("a\nb", "K", "v"));
    EXPECT_EQ(ini.bytes(), before);
}

TEST_F(SettingsFiles, theEnvironmentWinsOverTheFile) {
    write_file(path("dlwmenu.ini"), "[env]\nPRINTMAN_TEST_KEY=file\n");
    EXPECT_STREQ(GetEnv("PRINTMAN_TEST_KEY", "dlwmenu.ini", "env"), "file");
    qputenv("PRINTMAN_TEST_KEY", "");
    EXPECT_STREQ(GetEnv("PRINTMAN_TEST_KEY", "dlwmenu.ini", "env"), "file");
    qputenv("PRINTMAN_TEST_KEY", "process");
    EXPECT_STREQ(GetEnv("PRINTMAN_TEST_KEY", "dlwmenu.ini", "env"), "process");
    qunsetenv("PRINTMAN_TEST_KEY");
}

TEST_F(SettingsFiles, whatIsSetNowhereIsNull) {
    EXPECT_EQ(GetEnv("PRINTMAN_TEST_KEY", "dlwmenu.ini", "env"), nullptr);
    EXPECT_EQ(GetEnv(nullptr, "dlwmenu.ini", "env"), nullptr);
    EXPECT_EQ(GetEnv("PRINTMAN_TEST_KEY", nullptr, nullptr), nullptr);
    EXPECT_EQ(GetEnv("", "", ""), nullptr);
}

TEST_F(SettingsFiles, prtiniIsTheSettingsDirectoryUnlessSet) {
    EXPECT_EQ(QFile::decodeName(GetEnv("PRTINI", "dlwmenu.ini", "env")), directory_.path());
    write_file(path("dlwmenu.ini"), "[env]\nPRTINI=/etc/printers\n");
    EXPECT_STREQ(GetEnv("PRTINI", "dlwmenu.ini", "env"), "/etc/printers");
}

TEST_F(SettingsFiles, setEnvMakesFileAndDirectory) {
    host::host_settings() =
        host::Settings(QFile::encodeName(directory_.filePath(QStringLiteral("new/deep"))));
    EXPECT_EQ(SetEnv("NOPAGEMAP=yes", "dlwmenu.ini", "env", 1), 1);
    EXPECT_EQ(read_file(path("new/deep/dlwmenu.ini")), "[env]\nNOPAGEMAP=yes\n");
    EXPECT_STREQ(GetEnv("NOPAGEMAP", "dlwmenu.ini", "env"), "yes");
}

TEST_F(SettingsFiles, setEnvKeepsEverythingElse) {
    const QByteArray rest = "; my notes\n\n[color]\nKRV_COLOR_SBG=1,2,3\n???\n";
    write_file(path("dlwmenu.ini"), rest);
    QFile::setPermissions(path("dlwmenu.ini"), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                   QFileDevice::ReadGroup);
    EXPECT_EQ(SetEnv("NOPAGEMAP=no", "dlwmenu.ini", "env", 1), 1);
    EXPECT_EQ(read_file(path("dlwmenu.ini")), rest + "[env]\nNOPAGEMAP=no\n");
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(path("dlwmenu.ini")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(QDir(directory_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(SettingsFiles, setEnvFollowsALink) {
    write_file(path("real.ini"), "[env]\n");
    ASSERT_TRUE(QFile::link(QStringLiteral("real.ini"), path("dlwmenu.ini")));
    EXPECT_EQ(SetEnv("K=v", "dlwmenu.ini", "env", 1), 1);
    EXPECT_EQ(read_file(path("real.ini")), "[env]\nK=v\n");
    EXPECT_EQ(QFile::symLinkTarget(path("dlwmenu.ini")), path("real.ini"));
}

TEST_F(SettingsFiles, setEnvFailuresAnswerZero) {
    EXPECT_EQ(SetEnv(nullptr, "dlwmenu.ini", "env", 1), 0);
    EXPECT_EQ(SetEnv("no equals sign", "dlwmenu.ini", "env", 1), 0);
    EXPECT_EQ(SetEnv("=v", "dlwmenu.ini", "env", 1), 0);
    EXPECT_EQ(SetEnv("K=v", nullptr, "env", 1), 0);
    EXPECT_EQ(SetEnv("K=v\n[color]", "dlwmenu.ini", "env", 1), 0);
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("dlwprt.ini")));
    EXPECT_EQ(SetEnv("K=v", "dlwprt.ini", "env", 1), 0);
    host::host_settings() = host::Settings("/dev/null/none");
    EXPECT_EQ(SetEnv("K=v", "dlwmenu.ini", "env", 1), 0);
    EXPECT_FALSE(QFile::exists(path("dlwmenu.ini")));
}

TEST_F(SettingsFiles, profileStringsFitTheirBuffer) {
    write_file(path("dlwprt.ini"), "[printer]\nstation1=LASER-EAST\n");
    std::array<char, 16> buffer{};
    EXPECT_EQ(GetPrivateProfileString("printer", "station1", "", buffer.data(), 16, "dlwprt.ini"),
              10);
    EXPECT_STREQ(buffer.data(), "LASER-EAST");
    const QByteArray absolute = QFile::encodeName(path("dlwprt.ini"));
    buffer.fill('#');
    EXPECT_EQ(
        GetPrivateProfileString("PRINTER", "STATION1", "", buffer.data(), 6, absolute.constData()),
        5);
    EXPECT_STREQ(buffer.data(), "LASER");
    EXPECT_EQ(buffer[6], '#');
    EXPECT_EQ(GetPrivateProfileString("printer", "none", "default", buffer.data(), 16,
                                      absolute.constData()),
              7);
    EXPECT_STREQ(buffer.data(), "default");
    EXPECT_EQ(GetPrivateProfileString("printer", "none", "default", buffer.data(), 1, "missing"),
              0);
    EXPECT_STREQ(buffer.data(), "");
}

TEST_F(SettingsFiles, profileStringsOfNothing) {
    std::array<char, 4> buffer{'a', 'b', 'c', '\0'};
    EXPECT_EQ(GetPrivateProfileString("s", "k", "d", nullptr, 4, "f"), 0);
    EXPECT_EQ(GetPrivateProfileString("s", "k", "d", buffer.data(), 0, "f"), 0);
    EXPECT_EQ(
        GetPrivateProfileString("s", "k", "d", buffer.data(), std::numeric_limits<int>::min(), "f"),
        0);
    EXPECT_STREQ(buffer.data(), "abc");
    EXPECT_EQ(GetPrivateProfileString(nullptr, nullptr, nullptr, buffer.data(), 4, nullptr), 0);
    EXPECT_STREQ(buffer.data(), "");
}

TEST_F(SettingsFiles, colours) {
    const auto colour = [](const char* key) {
        host::Colour c;
        GetRGB(key, &c.red, &c.green, &c.blue);
        return c;
    };
    const host::Colour black{};
    const host::Colour white{255, 255, 255};
    EXPECT_EQ(colour("KRV_COLOR_SBG"), white);
    EXPECT_EQ(colour("KRV_COLOR_DBG"), black);
    EXPECT_EQ(colour(nullptr), black);
    write_file(path("dlwmenu.ini"), "[color]\nKRV_COLOR_SBG=10, 300 ,-5\nKRV_COLOR_DBG=1,2\n");
    EXPECT_EQ(colour("KRV_COLOR_SBG"), (host::Colour{10, 255, 0}));
    EXPECT_EQ(colour("KRV_COLOR_DBG"), black);
    GetRGB("KRV_COLOR_SBG", nullptr, nullptr, nullptr);
    EXPECT_EQ(SetEnv("KRV_COLOR_DBG=7,8,9", "dlwmenu.ini", "color", 1), 1);
    EXPECT_EQ(colour("KRV_COLOR_DBG"), (host::Colour{7, 8, 9}));
    for (const char* malformed : {"", "red", "1,2,3,4", "1,,3", "1,2,x", "99999999999,1,1"})
        EXPECT_EQ(host::parse_colour(malformed), std::nullopt) << malformed;
}

TEST_F(SettingsFiles, severalValuesAreKeptInOneStep) {
    write_file(path("dlwmenu.ini"), "[a]\nK=1\n");
    host::Settings& settings = host::host_settings();
    EXPECT_TRUE(settings.keep("dlwmenu.ini", "a", {{"K", "2"}, {"L", "3"}}));
    EXPECT_EQ(read_file(path("dlwmenu.ini")), "[a]\nK=2\nL=3\n");
    EXPECT_FALSE(settings.has_unstored());
    EXPECT_FALSE(settings.keep("dlwmenu.ini", "a", {{"K", "4"}, {"L", "5\n6"}}));
    EXPECT_EQ(read_file(path("dlwmenu.ini")), "[a]\nK=2\nL=3\n");
    EXPECT_FALSE(settings.has_unstored());
}

TEST_F(SettingsFiles, whatCannotBeStoredCountsUntilItIs) {
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("dlwmenu.ini")));
    EXPECT_EQ(SetEnv("PRINTMAN_TEST_KEY=mine", "dlwmenu.ini", "env", 1), 0);
    EXPECT_EQ(SetEnv("KRV_COLOR_SBG=1,2,3", "dlwmenu.ini", "color", 1), 0);
    EXPECT_TRUE(host::host_settings().has_unstored());
    EXPECT_STREQ(GetEnv("printman_test_KEY", "dlwmenu.ini", "Env"), "mine");
    EXPECT_EQ(GetEnv("PRINTMAN_TEST_KEY", "dlwmenu.ini", "color"), nullptr);
    EXPECT_EQ(GetEnv("PRINTMAN_TEST_KEY", "dlwprt.ini", "env"), nullptr);
    EXPECT_EQ(host::host_settings().colour("KRV_COLOR_SBG"), (host::Colour{1, 2, 3}));
    qputenv("PRINTMAN_TEST_KEY", "environment");
    EXPECT_STREQ(GetEnv("PRINTMAN_TEST_KEY", "dlwmenu.ini", "env"), "environment");
    qunsetenv("PRINTMAN_TEST_KEY");
    ASSERT_TRUE(QDir(directory_.path()).rmdir(QStringLiteral("dlwmenu.ini")));
    EXPECT_EQ(SetEnv("PRINTMAN_TEST_KEY=stored", "dlwmenu.ini", "env", 1), 1);
    EXPECT_EQ(SetEnv("KRV_COLOR_SBG=4,5,6", "dlwmenu.ini", "color", 1), 1);
    EXPECT_FALSE(host::host_settings().has_unstored());
    EXPECT_EQ(host::host_settings().colour("KRV_COLOR_SBG"), (host::Colour{4, 5, 6}));
}

TEST_F(SettingsFiles, anAssumedValueCountsUntilItIsForgotten) {
    write_file(path("dlwmenu.ini"), "[a]\nK=1\n");
    host::Settings& settings = host::host_settings();
    settings.assume("dlwmenu.ini", "a", {{"K", "2"}, {"L", ""}});
    EXPECT_EQ(settings.value("dlwmenu.ini", "a", "K"), QByteArray("2"));
    EXPECT_EQ(settings.value("dlwmenu.ini", "a", "L"), QByteArray(""));
    settings.forget("dlwmenu.ini", "a", {{"K", ""}, {"L", ""}});
    EXPECT_EQ(settings.value("dlwmenu.ini", "a", "K"), QByteArray("1"));
    EXPECT_EQ(settings.value("dlwmenu.ini", "a", "L"), std::nullopt);
}

TEST_F(SettingsFiles, whatIsNoSettingsFileIsMissing) {
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("dlwmenu.ini")));
    EXPECT_EQ(GetEnv("PRINTMAN_TEST_KEY", "dlwmenu.ini", "env"), nullptr);
    EXPECT_EQ(GetEnv("PRINTMAN_TEST_KEY", "/dev/zero", "env"), nullptr);
    const QByteArray pipe = QFile::encodeName(path("pipe"));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    EXPECT_EQ(GetEnv("PRINTMAN_TEST_KEY", "pipe", "env"), nullptr);
    EXPECT_EQ(SetEnv("K=v", "pipe", "env", 1), 0);
}

TEST(SettingsDirectory, followsTheEnvironment) {
    const QByteArray home = qgetenv("HOME");
    const QByteArray config = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", "/home/someone");
    qputenv("XDG_CONFIG_HOME", "/etc/config");
    EXPECT_EQ(host::default_settings_directory(), "/etc/config/printman");
    qputenv("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(host::default_settings_directory(), "/home/someone/.config/printman");
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(host::default_settings_directory(), "/home/someone/.config/printman");
    qputenv("HOME", home);
    if (!config.isNull())
        qputenv("XDG_CONFIG_HOME", config);
}
