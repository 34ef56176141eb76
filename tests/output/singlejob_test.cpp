#include <printman/output/singlejob.h>

#include <gtest/gtest.h>

using namespace printman;

TEST(SingleJob, isTheFirstOnesAlone) {
    const SingleJob first;
    EXPECT_TRUE(first.check().ok());
    {
        const SingleJob second;
        EXPECT_FALSE(second.check().ok());
    }
    EXPECT_TRUE(first.check().ok());
}
