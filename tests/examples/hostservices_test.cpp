#include <printman/printer/hostservices.h>

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr const char* key = "REPORT_HOST_TEST_KEY";
constexpr const char* file = "dlwmenu.ini";
constexpr const char* section = "env";

/// The services with a settings directory of the test's own.
class ExampleServices : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(directory_.isValid());
        qputenv("REPORT_HOST_SETTINGS", QFile::encodeName(directory_.path()));
        qunsetenv(key);
    }

    void TearDown() override {
        qunsetenv("REPORT_HOST_SETTINGS");
        qunsetenv(key);
    }

    QString path(const char* name) const { return directory_.filePath(QString::fromLatin1(name)); }

    void write(const char* name, const QByteArray& bytes) const {
        QFile out(path(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        ASSERT_EQ(out.write(bytes), bytes.size());
    }

    QByteArray read(const char* name) const {
        QFile in(path(name));
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("(missing)");
    }

    QStringList names() const {
        return QDir(directory_.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }

    QTemporaryDir directory_;
};

/// The value of a key of section "env" in a file that holds @p bytes; "(null)" when it has none.
class ExampleSyntax : public ExampleServices {
protected:
    QByteArray value(const QByteArray& bytes, const char* wanted = key) const {
        write(file, bytes);
        const char* found = GetEnv(wanted, file, section);
        return found ? QByteArray(found) : QByteArray("(null)");
    }
};

QByteArray rgb(const char* name) {
    int red = -1;
    int green = -1;
    int blue = -1;
    GetRGB(name, &red, &green, &blue);
    return QByteArray::number(red) + ' ' + QByteArray::number(green) + ' ' +
           QByteArray::number(blue);
}

/// While it lives no file can be written.
class FullDisk {
public:
    FullDisk() {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit none{0, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, SIG_DFL);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
};

} // namespace

TEST_F(ExampleSyntax, aSettingStandsInItsSection) {
    EXPECT_EQ(value("[env]\nREPORT_HOST_TEST_KEY=1\n"), "1");
    EXPECT_EQ(value("[color]\nREPORT_HOST_TEST_KEY=1\n"), "(null)");
    EXPECT_EQ(value("REPORT_HOST_TEST_KEY=1\n[env]\n"), "(null)");
    EXPECT_EQ(value("[color]\n[env]\nX=0\nREPORT_HOST_TEST_KEY=1\n[screenfont]\n"), "1");
    EXPECT_EQ(value("[env]\n[color]\n[env]\nREPORT_HOST_TEST_KEY=1\n"), "1");
}

TEST_F(ExampleSyntax, caseAndBlanksDoNotCount) {
    EXPECT_EQ(value("[ Env ]\n\t report_host_Test_key = a value \n"), "a value");
    EXPECT_EQ(value("[env]\r\nREPORT_HOST_TEST_KEY=1\r\nX=2\r\n"), "1");
}

TEST_F(ExampleSyntax, commentsHoldNoSettings) {
    EXPECT_EQ(value("[env]\n;REPORT_HOST_TEST_KEY=1\n # REPORT_HOST_TEST_KEY=2\n"), "(null)");
    EXPECT_EQ(value(";[env]\nREPORT_HOST_TEST_KEY=1\n"), "(null)");
    EXPECT_EQ(value("[env]\n;[color]\nREPORT_HOST_TEST_KEY=1\n"), "1");
    EXPECT_EQ(value("[env]\n;X=1\n", ";X"), "(null)");
}

TEST_F(ExampleSyntax, theFirstOfEqualKeysCounts) {
    EXPECT_EQ(value("[env]\nREPORT_HOST_TEST_KEY=1\nREPORT_HOST_TEST_KEY=2\n"), "1");
}

TEST_F(ExampleSyntax, aValueIsEverythingAfterTheFirstEqualsSign) {
    EXPECT_EQ(value("[env]\nREPORT_HOST_TEST_KEY=a=b;c"), "a=b;c");
    EXPECT_EQ(value("[env]\nREPORT_HOST_TEST_KEY=\xe9\xff\n"), "\xe9\xff");
}

TEST_F(ExampleSyntax, anyBytesDoNoHarm) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("["), QByteArray("[env"), QByteArray("="), QByteArray("\0", 1),
          QByteArray("[env]\n") + QByteArray(100000, '='), QByteArray(100000, '\n'),
          QByteArray("[]\nREPORT_HOST_TEST_KEY=1"), QByteArray("[env]\rREPORT_HOST_TEST_KEY=1"),
          QByteArray("[env]\n=1\nREPORT_HOST_TEST_KEY\n")}) {
        EXPECT_EQ(value(bytes), "(null)");
        EXPECT_EQ(value(bytes, ""), "(null)");
    }
    EXPECT_EQ(value(QByteArray("[env]\nREPORT_HOST_TEST_KEY=a\0b\n", 31)), "a");
}

TEST_F(ExampleServices, theEnvironmentWinsOverTheFile) {
    write(file, "[env]\nREPORT_HOST_TEST_KEY=file\n");
    EXPECT_STREQ(GetEnv(key, file, section), "file");
    qputenv(key, "");
    EXPECT_STREQ(GetEnv(key, file, section), "file");
    qputenv(key, "environment");
    EXPECT_STREQ(GetEnv(key, file, section), "environment");
}

TEST_F(ExampleServices, theEnvironmentChangesNoOtherService) {
    qputenv(key, "1,2,3");
    write(file, "[color]\nREPORT_HOST_TEST_KEY=4,5,6\n");
    std::array<char, 16> buffer{};
    EXPECT_EQ(GetPrivateProfileString("color", key, "", buffer.data(), 16, file), 5);
    EXPECT_STREQ(buffer.data(), "4,5,6");
    EXPECT_EQ(rgb(key), "4 5 6");
}

TEST_F(ExampleServices, anUnsetOrEmptySettingIsNull) {
    EXPECT_EQ(GetEnv(key, file, section), nullptr);
    write(file, "[env]\nREPORT_HOST_TEST_KEY=\n");
    EXPECT_EQ(GetEnv(key, file, section), nullptr);
    EXPECT_EQ(GetEnv("", "", ""), nullptr);
}

TEST_F(ExampleServices, anAnswerStaysWhileOtherServicesAreCalled) {
    write(file, "[env]\nREPORT_HOST_TEST_KEY=a value of some length\n[color]\nX=1,2,3\n");
    const char* answer = GetEnv(key, file, section);
    std::array<char, 64> buffer{};
    GetPrivateProfileString("color", "X", "", buffer.data(), 64, file);
    EXPECT_EQ(rgb("X"), "1 2 3");
    EXPECT_EQ(SetEnv("REPORT_HOST_TEST_KEY=another", file, section, 1), 1);
    EXPECT_STREQ(answer, "a value of some length");
}

TEST_F(ExampleServices, aChangedFileCountsAtOnce) {
    EXPECT_EQ(GetEnv(key, file, section), nullptr);
    write(file, "[env]\nREPORT_HOST_TEST_KEY=1\n");
    EXPECT_STREQ(GetEnv(key, file, section), "1");
    write(file, "[env]\nREPORT_HOST_TEST_KEY=2\n");
    EXPECT_STREQ(GetEnv(key, file, section), "2");
}

TEST_F(ExampleServices, anAbsoluteFileNameStaysAsItIs) {
    const QTemporaryDir elsewhere;
    const QByteArray absolute = QFile::encodeName(elsewhere.filePath(QStringLiteral("other.ini")));
    EXPECT_EQ(SetEnv("REPORT_HOST_TEST_KEY=1", absolute.constData(), section, 1), 1);
    EXPECT_STREQ(GetEnv(key, absolute.constData(), section), "1");
    EXPECT_EQ(GetEnv(key, file, section), nullptr);
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(ExampleServices, withoutTheVariableSettingsAreInTheUsersConfiguration) {
    qunsetenv("REPORT_HOST_SETTINGS");
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(directory_.path()));
    EXPECT_EQ(SetEnv("REPORT_HOST_TEST_KEY=1", file, section, 1), 1);
    EXPECT_EQ(read("report-host/dlwmenu.ini"), "[env]\nREPORT_HOST_TEST_KEY=1\n");
    EXPECT_STREQ(GetEnv(key, file, section), "1");
    if (before.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", before);
}

TEST_F(ExampleServices, profileStringsAreCutAndTerminated) {
    write("dlwprt.ini", "[printer]\nstation1=LASER-EAST\n");
    const auto ask = [](const char* wanted, char* buffer, int size) {
        return GetPrivateProfileString("printer", wanted, "default", buffer, size, "dlwprt.ini");
    };
    std::array<char, 16> buffer{};
    buffer.fill('#');
    EXPECT_EQ(ask("station1", buffer.data(), 16), 10);
    EXPECT_STREQ(buffer.data(), "LASER-EAST");
    buffer.fill('#');
    EXPECT_EQ(ask("station1", buffer.data(), 11), 10);
    EXPECT_STREQ(buffer.data(), "LASER-EAST");
    EXPECT_EQ(buffer[11], '#');
    buffer.fill('#');
    EXPECT_EQ(ask("STATION1", buffer.data(), 10), 9);
    EXPECT_STREQ(buffer.data(), "LASER-EAS");
    EXPECT_EQ(buffer[10], '#');
    EXPECT_EQ(ask("station1", buffer.data(), 1), 0);
    EXPECT_STREQ(buffer.data(), "");
    EXPECT_EQ(ask("station2", buffer.data(), 16), 7);
    EXPECT_STREQ(buffer.data(), "default");
    EXPECT_EQ(ask("station2", buffer.data(), 4), 3);
    EXPECT_STREQ(buffer.data(), "def");
}

TEST_F(ExampleServices, profileStringsWithoutAFileAreTheDefault) {
    std::array<char, 16> buffer{};
    EXPECT_EQ(GetPrivateProfileString("printer", "station1", "default", buffer.data(), 16,
                                      "/nonexistent/dlwprt.ini"),
              7);
    EXPECT_STREQ(buffer.data(), "default");
}

TEST_F(ExampleServices, aProfileStringWithoutAKeyIsTheDefault) {
    write("dlwprt.ini", "[printer]\n=LASER-EAST\n");
    std::array<char, 16> buffer{};
    EXPECT_EQ(GetPrivateProfileString("printer", "", "default", buffer.data(), 16, "dlwprt.ini"),
              7);
    EXPECT_STREQ(buffer.data(), "default");
}

TEST_F(ExampleServices, anEmptyProfileStringIsNoDefault) {
    write("dlwprt.ini", "[printer]\nstation1=\n");
    std::array<char, 16> buffer{'#', '#', '\0'};
    EXPECT_EQ(
        GetPrivateProfileString("printer", "station1", "default", buffer.data(), 16, "dlwprt.ini"),
        0);
    EXPECT_STREQ(buffer.data(), "");
}

TEST_F(ExampleServices, aBufferOfNoBytesStays) {
    std::array<char, 4> buffer{'a', 'b', 'c', '\0'};
    EXPECT_EQ(GetPrivateProfileString("s", "k", "d", buffer.data(), 0, file), 0);
    EXPECT_EQ(GetPrivateProfileString("s", "k", "d", buffer.data(), -1, file), 0);
    EXPECT_EQ(GetPrivateProfileString("s", "k", "d", nullptr, 4, file), 0);
    EXPECT_STREQ(buffer.data(), "abc");
}

TEST_F(ExampleServices, storingChangesOneLineAlone) {
    struct Case {
        QByteArray before;
        QByteArray after;
    };
    for (const Case& c : {
             Case{"", "[env]\nK=v\n"},
             Case{"[env]\n; c\nK = old \n\nX=1\n", "[env]\n; c\nK=v\n\nX=1\n"},
             Case{"[ENV]\nk=old\nk=second\n", "[ENV]\nK=v\nk=second\n"},
             Case{"[env]\nX=1\n\n\n[color]\nY=2\n", "[env]\nX=1\nK=v\n\n\n[color]\nY=2\n"},
             Case{"[env]\n[color]\n", "[env]\nK=v\n[color]\n"},
             Case{"[env]\n; last\n[color]\n", "[env]\n; last\nK=v\n[color]\n"},
             Case{"[color]\nK=1\n", "[color]\nK=1\n[env]\nK=v\n"},
             Case{"[color]\nK=1\n; end\n\n", "[color]\nK=1\n; end\n\n[env]\nK=v\n"},
             Case{"[env]\r\nX=1\r\n", "[env]\r\nX=1\r\nK=v\r\n"},
             Case{"[env]\nX=1", "[env]\nX=1\nK=v\n"},
             Case{"what is this\n[env\n[env]\n=\n\xe9",
                  "what is this\n[env\n[env]\n=\n\xe9\nK=v\n"},
         }) {
        write(file, c.before);
        EXPECT_EQ(SetEnv("K=v", file, section, 1), 1);
        EXPECT_EQ(read(file), c.after);
        EXPECT_STREQ(GetEnv("K", file, section), "v");
    }
}

TEST_F(ExampleServices, settingsOfNoSectionStandBeforeAll) {
    write(file, "[env]\nK=1\n");
    EXPECT_EQ(SetEnv("K=v", file, "", 1), 1);
    EXPECT_EQ(read(file), "K=v\n[env]\nK=1\n");
    EXPECT_STREQ(GetEnv("K", file, ""), "v");
}

TEST_F(ExampleServices, blanksAroundWhatIsStoredAreDropped) {
    EXPECT_EQ(SetEnv(" K = a value ", file, " env ", 1), 1);
    EXPECT_EQ(read(file), "[env]\nK=a value\n");
}

TEST_F(ExampleServices, aValueMayHoldAnEqualsSignOrBeEmpty) {
    EXPECT_EQ(SetEnv("K=a=b", file, section, 1), 1);
    EXPECT_EQ(SetEnv("L=", file, section, 1), 1);
    EXPECT_EQ(read(file), "[env]\nK=a=b\nL=\n");
}

TEST_F(ExampleServices, whatNoLineCanHoldIsNotStored) {
    write(file, "[env]\nK=1\n");
    for (const char* entry : {"", "no equals sign", "=v", "K=v\nL=w", "K\nL=w", ";K=v", "#K=v",
                              "[K=v", "[K]=v", "[a]\nK=v"})
        EXPECT_EQ(SetEnv(entry, file, section, 1), 0) << entry;
    EXPECT_EQ(SetEnv("K=v", file, "a]b", 1), 0);
    EXPECT_EQ(SetEnv("K=v", file, "a\nb", 1), 0);
    EXPECT_EQ(read(file), "[env]\nK=1\n");
    EXPECT_EQ(names(), QStringList{QString::fromLatin1(file)});
}

TEST_F(ExampleServices, storingMakesFileAndDirectory) {
    qputenv("REPORT_HOST_SETTINGS", QFile::encodeName(path("new/deep")));
    EXPECT_EQ(SetEnv("K=v", file, section, 1), 1);
    EXPECT_EQ(read("new/deep/dlwmenu.ini"), "[env]\nK=v\n");
}

TEST_F(ExampleServices, aFileIsReplacedInOneStep) {
    write(file, "[env]\nK=1\n");
    const QByteArray name = QFile::encodeName(path(file));
    ASSERT_EQ(::link(name.constData(), QFile::encodeName(path("earlier")).constData()), 0);
    EXPECT_EQ(SetEnv("K=2", file, section, 1), 1);
    // Who had the earlier file open still reads all of it.
    EXPECT_EQ(read("earlier"), "[env]\nK=1\n");
    EXPECT_EQ(read(file), "[env]\nK=2\n");
    EXPECT_EQ(names(), (QStringList{QString::fromLatin1(file), QStringLiteral("earlier")}));
}

TEST_F(ExampleServices, aFileThatCannotBeWrittenStays) {
    write(file, "[env]\nK=1\n");
    {
        const FullDisk full;
        EXPECT_EQ(SetEnv("K=2", file, section, 1), 0);
        EXPECT_EQ(SetEnv("K=2", "new.ini", section, 1), 0);
    }
    EXPECT_EQ(read(file), "[env]\nK=1\n");
    EXPECT_EQ(names(), QStringList{QString::fromLatin1(file)});
    qputenv("REPORT_HOST_SETTINGS", QFile::encodeName(path("dlwmenu.ini/below")));
    EXPECT_EQ(SetEnv("K=2", file, section, 1), 0);
}

TEST_F(ExampleServices, permissionsAndLinksStay) {
    write("real.ini", "[env]\nK=1\n");
    ASSERT_EQ(::chmod(QFile::encodeName(path("real.ini")).constData(), 0640), 0);
    ASSERT_TRUE(QFile::link(path("real.ini"), path(file)));
    EXPECT_EQ(SetEnv("K=2", file, section, 1), 1);
    EXPECT_EQ(read("real.ini"), "[env]\nK=2\n");
    EXPECT_EQ(QFile::symLinkTarget(path(file)), path("real.ini"));
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(path("real.ini")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST_F(ExampleServices, whatIsNoFileIsNeitherReadNorReplaced) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("directory")));
    for (const char* name : {"pipe", "directory"}) {
        EXPECT_EQ(GetEnv(key, name, section), nullptr) << name;
        EXPECT_EQ(SetEnv("K=v", name, section, 1), 0) << name;
    }
    EXPECT_EQ(names(), (QStringList{QStringLiteral("directory"), QStringLiteral("pipe")}));
}

TEST_F(ExampleServices, coloursAreThreeNumbers) {
    write(file, "[color]\nKRV_COLOR_SBG=10, 300 ,-5\nKRV_COLOR_DBG=7,8,9\n");
    EXPECT_EQ(rgb("KRV_COLOR_SBG"), "10 255 0");
    EXPECT_EQ(rgb("KRV_COLOR_DBG"), "7 8 9");
    EXPECT_EQ(SetEnv("KRV_COLOR_DBG=1,2,3", file, "color", 1), 1);
    EXPECT_EQ(rgb("KRV_COLOR_DBG"), "1 2 3");
}

TEST_F(ExampleServices, withoutAColourTheSheetIsWhiteAndAllElseBlack) {
    EXPECT_EQ(rgb("KRV_COLOR_SBG"), "255 255 255");
    EXPECT_EQ(rgb("KRV_COLOR_DBG"), "0 0 0");
    EXPECT_EQ(rgb("OTHER"), "0 0 0");
    write(file, "[env]\nKRV_COLOR_SBG=1,2,3\n");
    EXPECT_EQ(rgb("KRV_COLOR_SBG"), "255 255 255");
    for (const char* malformed :
         {"", "red", "1,2", "1,2,3,4", "1,,3", "x,2,3", "1,x,3", "1,2,x", "99999999999,1,1"}) {
        write(file, QByteArray("[color]\nKRV_COLOR_SBG=") + malformed +
                        "\nKRV_COLOR_DBG=" + malformed + '\n');
        EXPECT_EQ(rgb("KRV_COLOR_SBG"), "255 255 255") << malformed;
        EXPECT_EQ(rgb("KRV_COLOR_DBG"), "0 0 0") << malformed;
    }
}
