#include "host/cli/command.h"
#include "host/cli/pdfoptions.h"

#include <gtest/gtest.h>

namespace {

host::Outcome read(const QHash<QByteArray, QByteArray>& options, host::PageSetup& setup) {
    return host::read_page_options(host::Arguments({}, options), setup);
}

} // namespace

TEST(PageOptions, defaultsAndOptions) {
    host::PageSetup setup;
    ASSERT_TRUE(read({}, setup).ok());
    EXPECT_EQ(setup.font.family(), QStringLiteral("Courier New"));
    EXPECT_EQ(setup.font.pointSizeF(), 12);
    EXPECT_FALSE(setup.exact_size);
    EXPECT_EQ(setup.orientation, std::nullopt);
    EXPECT_EQ(setup.margins, std::nullopt);
    ASSERT_TRUE(
        read({{"size", "7.5"}, {"portrait", ""}, {"paper", "a3"}, {"title", "\xc3\xa4"}}, setup)
            .ok());
    EXPECT_EQ(setup.font.pointSizeF(), 7.5);
    EXPECT_TRUE(setup.exact_size);
    EXPECT_EQ(setup.orientation, QPageLayout::Portrait);
    EXPECT_EQ(setup.paper, 8);
    EXPECT_EQ(setup.title, QString(QChar(0xe4)));
}

TEST(PageOptions, whatMakesNoSenseIsWrongUsage) {
    for (const QHash<QByteArray, QByteArray>& options :
         {QHash<QByteArray, QByteArray>{{"size", "0"}},
          {{"size", "1001"}},
          {{"size", "-3"}},
          {{"size", "ten"}},
          {{"paper", "A11"}},
          {{"paper", ""}},
          {{"margins", "1,1"}},
          {{"font", " "}},
          {{"landscape", ""}, {"portrait", ""}}}) {
        host::PageSetup setup;
        EXPECT_EQ(read(options, setup).status, host::Outcome::usage);
    }
}
