#include "host/jobs/pagesetup.h"

#include <gtest/gtest.h>

TEST(PageSetup, defaultsFillTheUsualPaper) {
    const host::PageSetup setup;
    EXPECT_EQ(setup.font.family(), QStringLiteral("Courier New"));
    EXPECT_EQ(setup.font.pointSizeF(), 12);
    EXPECT_EQ(setup.font.styleHint(), QFont::TypeWriter);
    EXPECT_FALSE(setup.exact_size);
    EXPECT_EQ(setup.paper, host::usual_paper());
    EXPECT_EQ(setup.orientation, std::nullopt);
    EXPECT_EQ(setup.margins, std::nullopt);
    EXPECT_EQ(setup.title, QString());
}

TEST(PageSetup, orientationFollowsTheGrid) {
    EXPECT_EQ(host::orientation_of({10, 9}), QPageLayout::Landscape);
    EXPECT_EQ(host::orientation_of({9, 9}), QPageLayout::Portrait);
    EXPECT_EQ(host::orientation_of({8, 9}), QPageLayout::Portrait);
}
