#include <printman/output/jobturn.h>

#include <gtest/gtest.h>

using namespace printman;

TEST(JobTurn, isTheFirstOnesAlone) {
    const JobTurn first;
    EXPECT_TRUE(first.is_first());
    {
        const JobTurn second;
        EXPECT_FALSE(second.is_first());
    }
    EXPECT_TRUE(first.is_first());
}
