#include "tests/output/printing/cups.h"
#include "tests/output/printing/printing.h"

#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using testsupport::pdf_words;
using testsupport::text;
using testsupport::write_file;

namespace {

/// Jobs to a real queue.
class RealQueue : public Printing {
protected:
    // Other processes print, too.
    RealQueue() : Printing(JobLock::free) {}

    int print(const char* id) { return manager_.print_rpt_page(nullptr, id, 1, 1, 0, 0); }

    QStringList words(const QByteArray& pdf) {
        write_file(path(text("job.pdf")), pdf);
        return pdf_words(path(text("job.pdf")));
    }

    Cups cups_;
};

} // namespace

TEST_F(RealQueue, getsTheWholePostScriptOfAJob) {
    report(2);
    ASSERT_EQ(print("laser"), 1) << error().toStdString();
    const QList<QByteArray> jobs = cups_.jobs(1);
    ASSERT_EQ(jobs.size(), 1);
    EXPECT_TRUE(jobs[0].startsWith("%!PS-Adobe-3.0\n"));
    EXPECT_TRUE(jobs[0].endsWith("%%Trailer\nend\n%%EOF\n"));
    write_file(path(text("job.ps")), jobs[0]);
    EXPECT_EQ(pdf_words(testsupport::make_pdf(path(text("job.ps")))).filter(text("page")),
              (QStringList{text("page1"), text("page2")}));
}

TEST_F(RealQueue, getsTheWholePdfInPdfModeByteForByte) {
    report(2);
    manager_.pdf_mode = true;
    // What lpr is given is kept on the way.
    const QString kept = tools_.filePath(text("kept"));
    stub("lpr", "/bin/cp \"$3\" " + kept.toLocal8Bit() + "\nexec /usr/bin/lpr \"$@\"\n");
    const testsupport::EnvironmentGuard path("PATH",
                                             tools_.path().toLocal8Bit() + ':' + qgetenv("PATH"));
    ASSERT_EQ(print("laser"), 1) << error().toStdString();
    const QList<QByteArray> jobs = cups_.jobs(1);
    ASSERT_EQ(jobs.size(), 1);
    EXPECT_EQ(jobs[0], testsupport::read_file(kept));
    EXPECT_TRUE(jobs[0].startsWith("%PDF-"));
    EXPECT_EQ(words(jobs[0]).filter(text("page")), (QStringList{text("page1"), text("page2")}));
}

TEST_F(RealQueue, thatDoesNotExistIsAnErrorThatTheUserSees) {
    report(1);
    write_setup({record("laser", "nowhere")});
    EXPECT_EQ(print("laser"), 0);
    EXPECT_TRUE(error().startsWith(text("lp failed with status 1"))) << error().toStdString();
    manager_.pdf_mode = true;
    const std::string told = said([this] { EXPECT_EQ(print("laser"), 0); });
    EXPECT_EQ(error(), text("'lpr -P nowhere /tmp/korvo.ps' failed with status 1"));
    EXPECT_THAT(told, testing::HasSubstr("printman: 'lpr -P nowhere /tmp/korvo.ps'"));
    EXPECT_EQ(cups_.jobs(0).size(), 0);
    EXPECT_EQ(shared_scratch(), QStringList());
}

TEST_F(RealQueue, keepsNothingOfAJobThatWasCanceled) {
    report(3);
    manager_.set_progress([](int done, int) { return done < 2; });
    EXPECT_EQ(print("laser"), 0);
    EXPECT_EQ(error(), text("canceled"));
    EXPECT_EQ(testsupport::run(text("lpstat"), {text("-o")}).out, "");
    EXPECT_EQ(cups_.jobs(0).size(), 0);
    manager_.set_progress({});
    EXPECT_EQ(print("laser"), 1) << error().toStdString();
    EXPECT_EQ(cups_.jobs(1).size(), 1);
}

TEST_F(RealQueue, aHostileNameIsAQueueThatDoesNotExist) {
    report(1);
    for (const bool pdf_mode : {false, true})
        for (const char* name : {"a b", "$(touch ran)", "'; touch ran; '", "-o", "a\ntouch ran"}) {
            write_setup({record("laser", name)});
            manager_.pdf_mode = pdf_mode;
            EXPECT_EQ(print("laser"), 0) << name;
            EXPECT_FALSE(error().isEmpty() || error().contains(u'\n'));
        }
    EXPECT_EQ(cups_.jobs(0).size(), 0);
    EXPECT_EQ(files(), QStringList());
}

TEST_F(RealQueue, getsAllOfManyJobsAtOnceWhole) {
    report(2);
    constexpr int jobs_at_once = 60;
    constexpr int pdf_jobs = 10;
    std::vector<pid_t> processes;
    for (int job = 0; job < jobs_at_once; ++job) {
        manager_.pdf_mode = job < pdf_jobs;
        processes.push_back(::fork());
        if (processes.back() == 0)
            ::_exit(print("laser") == 1 ? 0 : 1);
    }
    for (const pid_t process : processes) {
        int status = -1;
        ::waitpid(process, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const QList<QByteArray> arrived = cups_.jobs(jobs_at_once);
    ASSERT_EQ(arrived.size(), jobs_at_once);
    int pdfs = 0;
    for (const QByteArray& job : arrived) {
        const bool is_pdf = job.startsWith("%PDF-") && job.trimmed().endsWith("%%EOF");
        pdfs += is_pdf;
        EXPECT_TRUE(is_pdf || (job.startsWith("%!PS") && job.contains("%%Pages: 2\n") &&
                               job.endsWith("%%Trailer\nend\n%%EOF\n")));
    }
    EXPECT_EQ(pdfs, pdf_jobs);
}
