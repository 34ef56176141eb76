#include "tests/output/printing/printing.h"
#include "tests/support/scratch.h"

#include <QColor>
#include <QFileInfo>
#include <QPainter>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using testsupport::text;
using testsupport::write_file;

namespace {

/// What becomes of a user's files when something goes wrong.
class Failures : public Printing {
protected:
    Failures() { stub_tools(); }

    /// A server job with a watermark behind a form into a file that is there.
    int serve() {
        manager_.pdf_mode = true;
        manager_.form_file = path(text("f.pdf"));
        manager_.set_watermark_info("DRAFT", "Liberation Sans", 40, 0, QColor(Qt::red), 0, 0, 0);
        write_file(manager_.form_file, "form");
        write_file(path(text("job.bin")),
                   QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
        return manager_.print_serverrpt_page("laser", 1, 1, 0, path(text("out.pdf")),
                                             path(text("job.bin")), {}, {});
    }

    void paint() {
        manager_.pdf_mode = true;
        const std::unique_ptr<QPainter> painter(
            manager_.create_printer("office", setup_record("x").devmode));
        ASSERT_TRUE(painter) << error().toStdString();
        painter->drawText(100, 100, text("x"));
    }

    void expect_earlier_file() {
        EXPECT_EQ(read(text("out.pdf")), "earlier");
        EXPECT_EQ(files(), (QStringList{text("f.pdf"), text("out.pdf")}));
        EXPECT_EQ(shared_scratch(), QStringList());
        QFile::remove(tools_.filePath(text("log")));
    }
};

} // namespace

TEST_F(Failures, ofAToolLeaveTheEarlierFileAndAreTold) {
    report(1);
    write_file(path(text("out.pdf")), "earlier");
    for (const char* tool : {"ps2pdf", "pdftk"})
        for (const char* end : {"exit 9\n", "kill -9 $$\n", "",
                                "for last; do :; done; echo half >\"$last\"; exit 1\n",
                                "for last; do :; done; echo %PDF-1.4 >\"$last\"\n"}) {
            stub_tools();
            stub(tool, end);
            const std::string told = said([this] { EXPECT_EQ(serve(), 0); });
            EXPECT_TRUE(error().startsWith(text("'%1 ").arg(text(tool)))) << error().toStdString();
            EXPECT_THAT(told, testing::StartsWith("printman: '" + std::string(tool)));
            expect_earlier_file();
        }
}

TEST_F(Failures, ofAToolThatIsMissingNameItsPackage) {
    report(1);
    write_file(path(text("out.pdf")), "earlier");
    for (const auto& [tool, package] :
         {std::pair{"ps2pdf", "ghostscript"}, {"pdftk", "pdftk-java"}}) {
        stub_tools();
        ASSERT_TRUE(QFile::remove(tools_.filePath(text(tool))));
        EXPECT_EQ(serve(), 0);
        EXPECT_EQ(error(), text("%1 is not installed; the Debian package %2 has it")
                               .arg(text(tool), text(package)));
        expect_earlier_file();
    }
    ASSERT_TRUE(QFile::remove(tools_.filePath(text("lpr"))));
    paint();
    EXPECT_EQ(manager_.print_pdf_file(), 0);
}

TEST_F(Failures, ofLprNameItsPackage) {
    report(1);
    ASSERT_TRUE(QFile::remove(tools_.filePath(text("lpr"))));
    paint();
    const std::string told = said([this] { EXPECT_EQ(manager_.print_pdf_file(), 0); });
    EXPECT_EQ(told, "printman: lpr is not installed; the Debian package cups-bsd or lpr has it\n");
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(Failures, ofAPdfThatHadNoEarlierFileLeaveThePostScript) {
    report(1);
    stub("pdftk", "exit 1\n");
    EXPECT_EQ(serve(), 0);
    EXPECT_TRUE(read(text("out.pdf")).startsWith("%!PS"));
}

TEST_F(Failures, areKnownWhereTheHostIgnoresItsChildren) {
    report(1);
    write_file(path(text("out.pdf")), "earlier");
    stub("pdftk", "exit 1\n");
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(serve(), 0);
    EXPECT_EQ(std::signal(SIGCHLD, before), SIG_IGN);
    expect_earlier_file();
}

TEST_F(Failures, ofAnUnwritableDirectoryRunNoCommandAndAreTold) {
    report(1);
    paint();
    ASSERT_TRUE(QDir(work_.path()).mkdir(text("shut")));
    ASSERT_EQ(::chmod(path(text("shut")).toLocal8Bit().constData(), 0555), 0);
    ASSERT_EQ(::chmod(work_.path().toLocal8Bit().constData(), 0755), 0);
    ASSERT_TRUE(QDir::setCurrent(path(text("shut"))));
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown("/tmp/korvo.ps", 65534, 65534), 0);
    }
    const WithoutPrivileges user;
    EXPECT_EQ(manager_.create_pdffile(), 0);
    EXPECT_EQ(error(), path(text("shut")) + text(": Permission denied"));
    EXPECT_EQ(log(), QStringList());
    EXPECT_EQ(manager_.result_pdf_file, QString());
}

TEST_F(Failures, ofADirectoryThatIsGoneAreTold) {
    report(1);
    ASSERT_TRUE(QDir(work_.path()).mkdir(text("gone")));
    ASSERT_TRUE(QDir::setCurrent(path(text("gone"))));
    ASSERT_TRUE(QDir(work_.path()).rmdir(text("gone")));
    EXPECT_EQ(serve(), 0);
    EXPECT_EQ(error(), text("the current directory is no longer there"));
    paint();
    EXPECT_EQ(manager_.create_pdffile(), 0);
    EXPECT_EQ(error(), text("the current directory is no longer there"));
    manager_.pdf_mode = false;
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "plain", 1, 1, 0, 0), 0);
    EXPECT_EQ(error(), text("the current directory is no longer there"));
}

TEST_F(Failures, ofAFullDiskLeaveTheEarlierFile) {
    report(200);
    write_file(path(text("out.pdf")), "earlier");
    rlimit old{};
    ::getrlimit(RLIMIT_FSIZE, &old);
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{9000, old.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const int result = serve();
    ::setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(error(), path(text("out.pdf")) + text(": File too large"));
    EXPECT_EQ(log(), QStringList());
    expect_earlier_file();
}

TEST_F(Failures, ofADeviceThatIsFullAreTold) {
    report(1);
    write_file(path(text("job.bin")),
               QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
    EXPECT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, text("/dev/full"),
                                            path(text("job.bin")), {}, {}),
              0);
    EXPECT_EQ(error(), text("/dev/full: No space left on device"));
}

TEST_F(Failures, aDeviceIsNeverReplacedByAPdf) {
    report(1);
    manager_.pdf_mode = true;
    for (const char* device : {"/dev/null", "/tmp"}) {
        write_file(path(text("job.bin")),
                   QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
        EXPECT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, text(device),
                                                path(text("job.bin")), {}, {}),
                  0);
        EXPECT_EQ(error(), text(device) + text(": is no file that can be replaced"));
        EXPECT_FALSE(QFileInfo(text(device)).isFile());
    }
    EXPECT_EQ(log(), QStringList());
}

TEST_F(Failures, aLinkToTheUsersFileStaysALink) {
    report(1);
    write_file(path(text("real.pdf")), "earlier");
    ASSERT_TRUE(QFile::link(text("real.pdf"), path(text("out.pdf"))));
    stub("pdftk", "exit 1\n");
    EXPECT_EQ(serve(), 0);
    EXPECT_EQ(read(text("real.pdf")), "earlier");
    stub_tools();
    EXPECT_EQ(serve(), 1) << error().toStdString();
    EXPECT_TRUE(QFileInfo(path(text("out.pdf"))).isSymLink());
    EXPECT_TRUE(read(text("real.pdf")).contains("background"));
}

TEST_F(Failures, nothingIsWrittenThroughALinkAtAFixedName) {
    report(1);
    for (const char* name : {"korvo.ps", "korvo.pdf", "korvoout.pdf", "korvoout2.pdf",
                             "watermark.ps", "watermark.pdf"}) {
        write_file(path(text("precious")), "precious");
        ASSERT_TRUE(QFile::link(path(text("precious")), text("/tmp/") + text(name)));
        manager_.set_watermark_info("X", "", 10, 0, QColor(), 0, 0, 0);
        manager_.form_file = path(text("f.pdf"));
        write_file(manager_.form_file, "form");
        paint();
        EXPECT_EQ(manager_.print_pdf_file(), 1) << name << ": " << error().toStdString();
        EXPECT_EQ(read(text("precious")), "precious") << name;
    }
}

TEST_F(Failures, whatIsInTheWayOfAJobIsFoundBeforeItIsPainted) {
    report(1);
    ASSERT_TRUE(QDir().mkdir(text("/tmp/watermark.pdf")));
    manager_.pdf_mode = true;
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 1) << error().toStdString();
    QFile::remove(tools_.filePath(text("log")));
    int painted = 0;
    manager_.set_progress([&painted](int, int) { return ++painted; });
    manager_.set_watermark_info("DRAFT", "Liberation Sans", 40, 0, QColor(Qt::red), 0, 0, 0);
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 0);
    EXPECT_EQ(error(), text("/tmp/watermark.pdf: is in the way and is no file"));
    EXPECT_TRUE(QDir().rmdir(text("/tmp/watermark.pdf")));
    EXPECT_EQ(painted, 0);
    EXPECT_EQ(log(), QStringList());
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(Failures, whatIsNotOnesOwnAtAFixedNameFailsTheJobAndStays) {
    report(1);
    paint();
    ASSERT_TRUE(QDir().mkdir(text("/tmp/korvo.pdf")));
    const std::string told = said([this] { EXPECT_EQ(manager_.print_pdf_file(), 0); });
    EXPECT_EQ(told, "printman: /tmp/korvo.pdf: is in the way and is no file\n");
    EXPECT_EQ(error(), text("/tmp/korvo.pdf: is in the way and is no file"));
    EXPECT_TRUE(QDir().rmdir(text("/tmp/korvo.pdf")));
    EXPECT_EQ(log(), QStringList());
    EXPECT_EQ(shared_scratch(), QStringList());
    ASSERT_TRUE(QDir().mkdir(text("/tmp/korvo.ps")));
    EXPECT_EQ(manager_.create_printer("office", DLWDEVMODE{}), nullptr);
    EXPECT_EQ(error(), text("/tmp/korvo.ps: is in the way and is no file"));
    EXPECT_TRUE(QDir().rmdir(text("/tmp/korvo.ps")));
}
