#include "tests/output/printing/printing.h"

#include <printman/system/filelock.h>

#include <QColor>
#include <QPainter>
#include <QProcess>

#include <array>
#include <sys/wait.h>
#include <unistd.h>

using testsupport::job_lock_file;
using testsupport::NameLock;
using testsupport::text;
using testsupport::write_file;

namespace {

/// Jobs that meet others: a lock of the test's own stands for that of another process.
class Turns : public Printing {
protected:
    Turns() : Printing(JobLock::free) {}

    /// How many jobs each process does; the full number is 50.
    static int jobs() {
        const int wanted = qEnvironmentVariableIntValue("PRINTMAN_JOBS");
        return wanted > 0 ? wanted : 5;
    }
};

} // namespace

TEST_F(Turns, processesThatMakeWatermarkedPdfsAtTheSameTimeGetTheirOwn) {
    std::vector<std::unique_ptr<QProcess>> workers;
    for (const char* name : {"ALPHA", "OMEGA"}) {
        workers.push_back(std::make_unique<QProcess>());
        workers.back()->setProcessChannelMode(QProcess::ForwardedChannels);
        workers.back()->start(text(PRINTMAN_PDFWORKER), {text(name), QString::number(jobs())});
    }
    for (const auto& worker : workers) {
        worker->waitForFinished(-1);
        EXPECT_EQ(worker->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(worker->exitCode(), 0);
    }
    EXPECT_EQ(files().filter(text(".pdf")).size(), 2 * jobs());
    EXPECT_EQ(files().size(), 2 * jobs());
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(Turns, aJobWaitsUntilAnotherProcessIsDone) {
    report(1);
    stub_tools();
    manager_.pdf_mode = true;
    NameLock other(job_lock_file);
    int asked = 0;
    manager_.set_progress([&](int, int) {
        if (++asked == 3) {
            EXPECT_EQ(testsupport::taken_scratch_names(), QStringList());
            other.release();
        }
        return true;
    });
    EXPECT_EQ(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0), 1) << error().toStdString();
    EXPECT_GE(asked, 3);
}

TEST_F(Turns, aJobThatWaitsForAnotherProcessCanBeStopped) {
    report(2);
    stub_tools();
    write_file(path(text("job.bin")),
               QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
    manager_.pdf_mode = true;
    manager_.set_watermark_info("DRAFT", "Liberation Sans", 40, 0, QColor(Qt::red), 0, 0, 0);
    NameLock other(job_lock_file);
    int last = 0;
    manager_.set_progress([&last](int done, int) { return done < last; });
    const auto stopped = [this](int result) {
        EXPECT_EQ(result, 0);
        EXPECT_EQ(error(), text("canceled"));
    };
    const std::string told = said([&] {
        stopped(manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0));
        stopped(manager_.generate_watermark());
        last = 2; // its pages are painted by then
        stopped(manager_.print_serverrpt_page("laser", 1, 1, 0, path(text("o.ps")),
                                              path(text("job.bin")), {}, {}));
    });
    EXPECT_EQ(told, "");
    EXPECT_EQ(log(), QStringList());
    other.release();
    manager_.set_progress({});
    EXPECT_EQ(manager_.generate_watermark(), 1) << error().toStdString();
}

TEST_F(Turns, theNamesAreFreeAgainAfterEveryJobWhateverItsEnd) {
    report(1);
    stub_tools();
    manager_.pdf_mode = true;
    const auto is_free = [] {
        printman::FileLock lock;
        printman::JobControl control;
        return lock.take_file(printman::tmp_lock_file, control, std::chrono::milliseconds(0)).ok();
    };
    EXPECT_TRUE(is_free());
    manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0);
    EXPECT_TRUE(is_free());
    delete manager_.create_printer("office", DLWDEVMODE{});
    EXPECT_FALSE(is_free());
    manager_.create_pdffile();
    EXPECT_TRUE(is_free());
    manager_.create_pdffile();
    EXPECT_TRUE(is_free());
    manager_.generate_watermark();
    EXPECT_TRUE(is_free());
    manager_.set_progress([](int, int) { return false; });
    manager_.print_rpt_page(nullptr, "laser", 1, 1, 0, 0);
    EXPECT_TRUE(is_free());
    {
        CPrintMan other;
        other.init_printman(reports_.filePath(text("r.rpt")).toLocal8Bit().constData());
        other.pdf_mode = true;
        delete other.create_generic_printer("office");
        EXPECT_FALSE(is_free());
    }
    EXPECT_TRUE(is_free());
}

TEST_F(Turns, aServerJobWithoutAWatermarkWaitsForNobody) {
    report(1);
    stub_tools();
    manager_.pdf_mode = true;
    // One that waited would do so in vain.
    const NameLock other(job_lock_file);
    write_file(path(text("job.bin")),
               QByteArray::fromStdString(setup_bytes({record("laser", "office")})));
    EXPECT_EQ(manager_.print_serverrpt_page("laser", 1, 1, 0, path(text("o.ps")),
                                            path(text("job.bin")), {}, {}),
              1)
        << error().toStdString();
}

TEST_F(Turns, jobsOfPlainTextInOneDirectoryTakeTurns) {
    report(1);
    stub_tools();
    NameLock turn(".");
    std::array<int, 2> asked{};
    std::array<int, 2> answer{};
    ASSERT_EQ(::pipe(asked.data()) + ::pipe(answer.data()), 0);
    const pid_t other = ::fork();
    if (other == 0) {
        // Its copy of the descriptor alone; the lock is the other process's still.
        turn.release();
        char byte = '?';
        manager_.set_progress([&](int, int) {
            // The first time it stops here.
            if (byte == '?')
                return ::write(asked[1], &byte, 1) == 1 && ::read(answer[0], &byte, 1) == 1;
            return true;
        });
        ::_exit(manager_.print_rpt_page(nullptr, "plain", 1, 1, 0, 0) == 1 ? 0 : 1);
    }
    ::close(asked[1]);
    char byte = 0;
    EXPECT_EQ(::read(asked[0], &byte, 1), 1);
    EXPECT_EQ(files(), QStringList());
    turn.release();
    EXPECT_EQ(::write(answer[1], "!", 1), 1);
    int status = -1;
    ::waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(files(), QStringList());
    ::close(asked[0]);
    ::close(answer[0]);
    ::close(answer[1]);
}
