#include "host/jobs/joberror.h"
#include "host/jobs/stderrcapture.h"

#include <gtest/gtest.h>

#include <cstdio>

TEST(JobError, ToolsAreToldByTheirNameAndTheirFirstWords) {
    EXPECT_EQ(host::plain_failure("'ps2pdf /a/b.ps /a/kv1.pdf' failed with status 3", ""),
              "ps2pdf failed with status 3");
    EXPECT_EQ(host::plain_failure("'pdftk '/a b' output /c' was ended by signal 9",
                                  "\nprintman: 'pdftk' was ended\n  Error: x  \nmore\n"),
              "pdftk was ended by signal 9: Error: x");
    EXPECT_EQ(host::plain_failure("'ps2pdf a b' made no whole file", ""),
              "ps2pdf made no whole file");
    EXPECT_EQ(host::plain_failure("'pdftk a b' failed with status 1",
                                  "Error: no PDF:\nform.pdf\nthe end\n"),
              "pdftk failed with status 1: Error: no PDF: form.pdf");
    EXPECT_EQ(host::plain_failure("lp failed with status 1", "lp: no such printer\n"),
              "lp failed with status 1: lp: no such printer");
    EXPECT_EQ(host::plain_failure("'ps2pdf a' failed with status 1", QByteArray(1000, 'x')).size(),
              27 + 2 + 200);
}

TEST(JobError, AShellsStatusIsASignalOnlyWhereThereIsOne) {
    const auto told = [](const char* status, const char* said) {
        return host::plain_failure(QByteArray("'ps2pdf a b' failed with status ") + status, said);
    };
    EXPECT_EQ(told("137", "Killed\n"), "ps2pdf was ended by signal 9: Killed");
    EXPECT_EQ(told("129", ""), "ps2pdf was ended by signal 1");
    EXPECT_EQ(told("159", ""), "ps2pdf was ended by signal 31");
    EXPECT_EQ(told("128", ""), "ps2pdf failed with status 128");
    EXPECT_EQ(told("160", ""), "ps2pdf failed with status 160");
    EXPECT_EQ(told("255", "Unrecoverable error\n"),
              "ps2pdf failed with status 255: Unrecoverable error");
}

TEST(JobError, AFailedWriteIsToldWithItsFile) {
    EXPECT_EQ(host::placed_failure("No space left on device", "/a/b"),
              "/a/b: No space left on device");
    EXPECT_EQ(host::placed_failure("File too large", ""), "File too large");
    EXPECT_EQ(host::placed_failure("/c: No space left on device", "/a/b"),
              "/c: No space left on device");
}

TEST(JobError, AnythingElseStaysAsItIs) {
    for (const char* error : {"", "Can not find report printer 'a b'", "ps2pdf is not installed",
                              "'ps2pdf a b' does something else", "'"})
        EXPECT_EQ(host::plain_failure(error, "noise\n"), error);
}

TEST(JobError, WhatIsWrittenMeanwhileIsHeldAndThenShownAgain) {
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
