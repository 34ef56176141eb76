#include "host/jobs/joberror.h"
#include "host/jobs/stderrcapture.h"

#include <gtest/gtest.h>

#include <cstdio>

using host::job_outcome;
using printman::Result;

namespace {

QString text(const char* words) {
    return QString::fromLatin1(words);
}

Result tool_failure(const char* tool, const char* end) {
    return Result::tool_failure(text(tool), text(end), text("a line with the whole command"));
}

} // namespace

TEST(JobError, aToolIsNamedWithItsEndAndItsFirstWords) {
    const Result failed = tool_failure("pdftk", "failed with status 1");
    EXPECT_EQ(job_outcome(failed).message, "pdftk failed with status 1");
    EXPECT_EQ(job_outcome(failed, "\nprintman: 'pdftk' failed\n  Error: x  \nmore\n").message,
              "pdftk failed with status 1: Error: x");
    EXPECT_EQ(job_outcome(failed, "Error: no PDF:\nform.pdf\nthe end\n").message,
              "pdftk failed with status 1: Error: no PDF: form.pdf");
    EXPECT_EQ(job_outcome(failed, QByteArray(1000, 'x')).message.size(), 26 + 2 + 200);
}

TEST(JobError, anyOtherFailureIsItsOwnErrorAlone) {
    const host::Outcome outcome =
        job_outcome(Result::failure(text("Can not find report printer 'a b'")), "noise\n");
    EXPECT_EQ(outcome.status, host::Outcome::failed);
    EXPECT_EQ(outcome.message, "Can not find report printer 'a b'");
}

TEST(JobError, aJobThatIsCanceledIsInterrupted) {
    EXPECT_EQ(job_outcome(Result::canceled(), "noise\n").message, "interrupted");
}

TEST(JobError, aJobThatIsDoneIsNoFailure) {
    EXPECT_TRUE(job_outcome(Result(), "noise\n").ok());
}

TEST(JobError, whatIsWrittenMeanwhileIsHeldAndThenShownAgain) {
    testing::internal::CaptureStderr();
    {
        const host::StderrCapture capture;
        std::fputs("held\n", stderr);
        std::fflush(stderr);
        EXPECT_EQ(capture.text(), "held\n");
    }
    std::fputs("shown\n", stderr);
    std::fflush(stderr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "shown\n");
}
