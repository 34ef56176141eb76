#include <printman/output/jobturn.h>

#include <gtest/gtest.h>

using namespace printman;

TEST(JobTurn, isTheFirstOnesAlone) {
    const JobTurn first;
    EXPECT_TRUE(first.check().ok());
    {
        const JobTurn second;
        EXPECT_FALSE(second.check().ok());
    }
    EXPECT_TRUE(first.check().ok());
}
