#include "host/jobs/watermark.h"

#include <gtest/gtest.h>

TEST(Watermark, aTextThatIsTooWideForThePageIsMadeToFit) {
    const QSizeF a4(4960, 7016);
    host::Watermark mark;
    mark.text = "DRAFT";
    EXPECT_EQ(host::size_in(mark, a4), 60);
    mark.text = QByteArray(40, 'M');
    const int turned = host::size_in(mark, a4);
    EXPECT_LT(turned, 30);
    EXPECT_GT(turned, 10);
    mark.angle = 0;
    const int level = host::size_in(mark, a4);
    EXPECT_LT(level, turned);
    mark.angle = 90;
    EXPECT_GT(host::size_in(mark, a4), level);
    EXPECT_EQ(host::size_in(mark, QSizeF(10, 10)), 1);
    mark.size = 60;
    EXPECT_EQ(host::size_in(mark, a4), 60);
}
