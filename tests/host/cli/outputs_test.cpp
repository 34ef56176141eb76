#include "host/files/pendingfile.h"
#include "tests/host/program.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <sys/stat.h>
#include <unistd.h>

namespace {

class Outputs : public ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        write(QStringLiteral("in"), small_report);
    }

    /// The commands that write a file; a report is a listing too.
    static QStringList writers() {
        return {QStringLiteral("text"), QStringLiteral("pdf"), QStringLiteral("png"),
                QStringLiteral("import")};
    }

    Ended write_to(const QString& command, const QString& out) const {
        return run({command, QStringLiteral("in"), out});
    }
};

} // namespace

TEST_F(Outputs, aFileInAMissingDirectoryIsRefused) {
    for (const QString& command : writers()) {
        SCOPED_TRACE(command.toStdString());
        expect_failure(write_to(command, QStringLiteral("no/out")),
                       "cannot write no/out: No such file or directory");
        EXPECT_EQ(files(), QStringList{QStringLiteral("in")});
    }
}

TEST_F(Outputs, aDirectoryIsRefused) {
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("folder")));
    for (const QString& command : writers()) {
        SCOPED_TRACE(command.toStdString());
        expect_failure(write_to(command, QStringLiteral("folder")),
                       "cannot write folder: Is a directory");
    }
    EXPECT_EQ(QDir(path(QStringLiteral("folder"))).count(), 2U);
}

TEST_F(Outputs, aFullDeviceIsAnError) {
    for (const QString& command : writers()) {
        SCOPED_TRACE(command.toStdString());
        expect_failure(write_to(command, QStringLiteral("/dev/full")),
                       "cannot write /dev/full: No space left on device");
    }
    struct stat status {};
    ASSERT_EQ(::stat("/dev/full", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST_F(Outputs, aDeviceIsWrittenDirectly) {
    for (const QString& command : writers())
        EXPECT_EQ(write_to(command, QStringLiteral("/dev/null")).status, 0);
    const Ended result = write_to(QStringLiteral("text"), QStringLiteral("/dev/stdout"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "first line\n\xe4\xf6\xfc and more\nlast\n");
}

TEST_F(Outputs, aPipeWithoutANameIsWrittenDirectly) {
    const QString out = QStringLiteral("/dev/stdout");
    for (const auto& [command, start] : std::initializer_list<std::pair<const char*, QByteArray>>{
             {"pdf", "%PDF-"}, {"png", "\x89PNG"}, {"import", "#!?PAGETOP"}}) {
        const Ended result = write_to(QString::fromLatin1(command), out);
        EXPECT_EQ(result.error, "");
        EXPECT_TRUE(result.out.startsWith(start)) << command;
    }
    EXPECT_EQ(files(), QStringList{QStringLiteral("in")});
}

TEST_F(Outputs, anEarlierFileIsReplacedAndKeepsItsPermissions) {
    for (const QString& command : writers()) {
        SCOPED_TRACE(command.toStdString());
        write(QStringLiteral("out"), "earlier");
        const QByteArray name = QFile::encodeName(path(QStringLiteral("out")));
        ASSERT_EQ(::chmod(name.constData(), 0640), 0);
        EXPECT_EQ(write_to(command, QStringLiteral("out")).status, 0);
        EXPECT_NE(read(QStringLiteral("out")), "earlier");
        struct stat status {};
        ASSERT_EQ(::stat(name.constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0640U);
        EXPECT_EQ(files(), (QStringList{QStringLiteral("in"), QStringLiteral("out")}));
    }
}

TEST_F(Outputs, aLinkIsFollowed) {
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("folder")));
    ASSERT_TRUE(QFile::link(QStringLiteral("folder/real"), path(QStringLiteral("link"))));
    for (const QString& command : writers()) {
        SCOPED_TRACE(command.toStdString());
        EXPECT_EQ(write_to(command, QStringLiteral("link")).status, 0);
        EXPECT_FALSE(QFile::symLinkTarget(path(QStringLiteral("link"))).isEmpty());
        EXPECT_TRUE(QFile::remove(path(QStringLiteral("folder/real"))));
    }
}

TEST_F(Outputs, aPageOutOfRangeIsToldAndNothingWritten) {
    write(QStringLiteral("out.png"), "earlier");
    expect_failure(run({QStringLiteral("png"), QStringLiteral("in"), QStringLiteral("out.png"),
                        QStringLiteral("--page"), QStringLiteral("2")}),
                   "in: There is no page 2; the report has 1 page");
    EXPECT_EQ(read(QStringLiteral("out.png")), "earlier");
}

TEST_F(Outputs, picturesGrowWithTheZoom) {
    QSize last(0, 0);
    for (int zoom = 50; zoom <= 300; zoom += 50) {
        const Ended result =
            run({QStringLiteral("png"), QStringLiteral("in"), QStringLiteral("o.png"),
                 QStringLiteral("--zoom"), QStringLiteral("%1%").arg(zoom)});
        ASSERT_EQ(result.status, 0);
        const QImage image(path(QStringLiteral("o.png")), "png");
        EXPECT_EQ((image.width() - 40) % 80, 0);
        EXPECT_EQ((image.height() - 40) % 3, 0);
        EXPECT_GT(image.width(), last.width());
        EXPECT_GT(image.height(), last.height());
        last = image.size();
        EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black));
        EXPECT_EQ(image.pixelColor(image.width() - 1, image.height() - 1), QColor(Qt::black));
        EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::white));
    }
}

TEST_F(Outputs, picturesHaveTheColoursOfTheSettings) {
    ASSERT_TRUE(QDir(directory_.path()).mkdir(QStringLiteral("set")));
    write(QStringLiteral("set/dlwmenu.ini"),
          "[color]\nKRV_COLOR_SBG=255,240,10\nKRV_COLOR_DBG=0,0,200\n");
    for (const QStringList& arguments :
         {QStringList{QStringLiteral("--settings"), QStringLiteral("set"), QStringLiteral("png"),
                      QStringLiteral("in"), QStringLiteral("o.png")},
          {QStringLiteral("png"), QStringLiteral("in"), QStringLiteral("o.png"),
           QStringLiteral("--settings=set")}}) {
        ASSERT_EQ(run(arguments).status, 0);
        const QImage image(path(QStringLiteral("o.png")), "png");
        EXPECT_EQ(image.pixelColor(5, 5), QColor(255, 240, 10));
        bool has_text = false;
        for (int y = 1; y < image.height() - 1; ++y) {
            for (int x = 1; x < image.width() - 1; ++x)
                has_text = has_text || image.pixelColor(x, y).blue() > 100;
        }
        EXPECT_TRUE(has_text);
    }
}

TEST_F(Outputs, everyPageOfAReportIsFound) {
    QByteArray report;
    for (int page = 1; page <= 5; ++page)
        report += "#!?PAGETOP 40,2\n" + QByteArray(page, '#') + "\n#!?PAGEEND\n";
    write(QStringLiteral("five"), report);
    const auto ink = [this](int page) {
        const Ended result =
            run({QStringLiteral("png"), QStringLiteral("five"), QStringLiteral("o.png"),
                 QStringLiteral("--page"), QString::number(page)});
        EXPECT_EQ(result.status, 0);
        const QImage image(path(QStringLiteral("o.png")), "png");
        int rightmost = 0;
        for (int y = 1; y < image.height() - 1; ++y) {
            for (int x = 1; x < image.width() - 1; ++x) {
                if (image.pixelColor(x, y).red() < 128)
                    rightmost = std::max(rightmost, x);
            }
        }
        return rightmost;
    };
    for (int page = 2; page <= 5; ++page)
        EXPECT_EQ(ink(page) - ink(page - 1), 8);
}

TEST_F(Outputs, absurdPicturesAreRefused) {
    write(QStringLiteral("wide"), "#!?PAGETOP 32767,2\na\n#!?PAGEEND\n");
    const Ended result =
        run({QStringLiteral("png"), QStringLiteral("wide"), QStringLiteral("o.png")});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.error.contains(" pixels is too large\n"));
    EXPECT_FALSE(exists(QStringLiteral("o.png")));
}

TEST_F(Outputs, aPendingFileThatIsDroppedLeavesNothing) {
    const QByteArray name = QFile::encodeName(path(QStringLiteral("new")));
    {
        host::PendingFile file;
        ASSERT_TRUE(file.open(name).ok());
        EXPECT_TRUE(file.write("half"));
        EXPECT_EQ(files().size(), 2);
        EXPECT_FALSE(exists(QStringLiteral("new")));
    }
    EXPECT_EQ(files(), QStringList{QStringLiteral("in")});
    host::PendingFile unopened;
    EXPECT_FALSE(unopened.commit().ok());
}

TEST_F(Outputs, aPendingFileOfALinkThatLoopsIsRefused) {
    ASSERT_TRUE(QFile::link(QStringLiteral("b"), path(QStringLiteral("a"))));
    ASSERT_TRUE(QFile::link(QStringLiteral("a"), path(QStringLiteral("b"))));
    host::PendingFile file;
    EXPECT_FALSE(file.open(QFile::encodeName(path(QStringLiteral("a")))).ok());
    EXPECT_TRUE(file.error().endsWith("Too many levels of symbolic links"));
}
