#include "host/joberror.h"

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
    EXPECT_EQ(host::plain_failure("'ps2pdf a b' failed with status 137", "Killed\n"),
              "ps2pdf was ended by signal 9");
    EXPECT_EQ(host::plain_failure("lp failed with status 1", "lp: no such printer\n"),
              "lp failed with status 1: lp: no such printer");
    EXPECT_EQ(host::plain_failure("'ps2pdf a' failed with status 1", QByteArray(1000, 'x')).size(),
              27 + 2 + 200);
}

TEST(JobError, AnythingElseStaysAsItIs) {
    for (const char* error : {"", "Can not find report printer 'a b'", "ps2pdf is not installed",
                              "'ps2pdf a b' does something else", "'"})
        EXPECT_EQ(host::plain_failure(error, "noise\n"), error);
}

TEST(JobError, WhatIsWrittenMeanwhileIsHeldAndThenShownAgain) {
    testing::internal::CaptureStderr();
    {
        const host::HeldErrors errors;
        std::fputs("held\n", stderr);
        std::fflush(stderr);
        EXPECT_EQ(errors.text(), "held\n");
    }
    std::fputs("shown\n", stderr);
    std::fflush(stderr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "shown\n");
}
